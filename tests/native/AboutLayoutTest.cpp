#include <gtest/gtest.h>

#include "pages/AboutBox.h"
#include "pages/BuiltInServices.h"

namespace kiv {
namespace {

/// Letters of a fixed size.
class Letters final : public TextMeasure {
public:
    explicit Letters(int size) : m_size(size) {}
    Extent Measure(std::u16string_view text) override { return {static_cast<int>(text.size()) * m_size, 2 * m_size}; }

private:
    int m_size;
};

int Bottom(const DialogRect& rect) {
    return rect.y + rect.height;
}

TEST(AboutLayout, StandsInGroupsBetweenItsLinesAtEveryResolution) {
    BuiltInServices services;
    const AboutTexts texts = LoadAboutTexts(ControlKind::Set, {1, 2, 3}, services);
    for (const std::u16string& text : {texts.caption, texts.ok, texts.labels[lblLegal]}) EXPECT_FALSE(text.empty());
    for (const int resolution : {96, 144, 192}) {
        SCOPED_TRACE(resolution);
        Letters letters(resolution / 16);
        const AboutLayout box = LayOutAboutBox(texts, letters, resolution);
        const auto& labels = box.labels;
        EXPECT_GT(labels[lblVersion].y, Bottom(labels[lblProductName]));
        EXPECT_GT(box.lines[0].y, Bottom(labels[lblVersion]));
        EXPECT_GT(labels[lblDescription].y, Bottom(box.lines[0]));
        EXPECT_GT(box.lines[1].y, Bottom(labels[lblDescription]));
        EXPECT_GT(labels[lblLegal].y, Bottom(box.lines[1]));
        EXPECT_GT(labels[lblCompany0].y, Bottom(labels[lblLegal]));
        EXPECT_EQ(labels[lblCompany1].x, labels[lblCompany0].x + labels[lblCompany0].width);
        EXPECT_EQ(labels[lblCompany2].y, labels[lblCompany0].y);
        EXPECT_GT(box.ok.y, Bottom(labels[lblCompany0]));
        EXPECT_GT(box.height, Bottom(box.ok));
        EXPECT_GT(box.icon.x, 0);
        EXPECT_EQ(box.icon.width, 32 * resolution / 96);
        EXPECT_EQ(box.icon.height, box.icon.width);
        EXPECT_GE(labels[lblProductName].x, box.icon.x + box.icon.width);
        for (const DialogRect& label : labels) EXPECT_LT(label.x + label.width, box.width);
        for (const DialogRect& line : box.lines) EXPECT_EQ(line.x + line.width, box.ok.x + box.ok.width);
    }
}

}  // namespace
}  // namespace kiv
