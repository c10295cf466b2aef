#include "pages/AboutBox.h"

#include <algorithm>

#include "common/ResourceStrings.h"

namespace kiv {

namespace {

// Pixels at 96 to the inch.
constexpr int NormalResolution = 96;
constexpr int Margin = 14;
constexpr int IconSize = 32;
constexpr int IconGap = 14;
constexpr int LineGap = 6;
constexpr int SectionGap = 10;
constexpr int OkWidth = 80;
constexpr int OkHeight = 24;
constexpr int SeparatorHeight = 2;

/// Fills a box from top to bottom.
class Stack {
public:
    Stack(AboutLayout& layout, const AboutTexts& texts, TextMeasure& measure, int resolution)
        : m_layout(layout),
          m_texts(texts),
          m_measure(measure),
          m_resolution(resolution),
          m_left(Scaled(Margin + IconSize + IconGap)),
          m_top(Scaled(Margin)) {}

    int Scaled(int pixels) const noexcept { return (pixels * m_resolution + NormalResolution / 2) / NormalResolution; }

    /// A line of labels, each right behind the one before it.
    void AddLine(std::initializer_list<AboutLabelIndex> labels) {
        int x = m_left;
        int height = 0;
        for (const AboutLabelIndex label : labels) {
            const TextMeasure::Extent size = m_measure.Measure(m_texts.labels[label]);
            m_layout.labels[label] = {x, m_top, size.width, size.height};
            x += size.width;
            height = std::max(height, size.height);
        }
        m_right = std::max(m_right, x);
        m_top += height + Scaled(LineGap);
    }
    void AddSeparator(std::size_t index) {
        m_top += Scaled(SectionGap - LineGap);
        m_layout.lines[index] = {m_left, m_top, 0, SeparatorHeight};
        m_top += SeparatorHeight + Scaled(SectionGap);
    }
    /// The button goes to the lower right corner, and the lines to the right margin.
    void Finish() {
        m_right = std::max(m_right, m_left + Scaled(OkWidth));
        const int buttonHeight = std::max(Scaled(OkHeight), m_measure.Measure(m_texts.ok).height + Scaled(8));
        m_layout.ok = {m_right - Scaled(OkWidth), m_top, Scaled(OkWidth), buttonHeight};
        for (DialogRect& line : m_layout.lines) line.width = m_right - line.x;
        m_layout.icon = {Scaled(Margin), Scaled(Margin), Scaled(IconSize), Scaled(IconSize)};
        m_layout.width = m_right + Scaled(Margin);
        m_layout.height = m_top + buttonHeight + Scaled(Margin);
    }

private:
    AboutLayout& m_layout;
    const AboutTexts& m_texts;
    TextMeasure& m_measure;
    int m_resolution;
    int m_left;
    int m_top;
    int m_right = 0;
};

}  // namespace

AboutTexts LoadAboutTexts(ControlKind control, const VersionNumbers& version, UserServices& services) {
    const bool isSet = control == ControlKind::Set;
    AboutTexts texts;
    texts.caption = LoadResString(isSet ? residSetAboutTitle : residShowAboutTitle);
    // The same in both, although it ends with the name of one.
    texts.labels[lblProductName] = LoadResString(residProductTitle);
    texts.labels[lblDescription] = LoadResString(isSet ? residSetPurpose : residShowPurpose);
    texts.labels[lblVersion] =
        LoadResString(residVersion) + services.FormatVersion(version.major, version.minor, version.revision);
    texts.labels[lblLegal] = LoadResString(residLegalNotice);
    texts.labels[lblCompany0] = LoadResString(residOwnershipAn);
    texts.labels[lblCompany1] = LoadResString(residParentCompany);
    texts.labels[lblCompany2] = LoadResString(residOwnershipCompany);
    texts.ok = LoadResString(residOK);
    return texts;
}

AboutLayout LayOutAboutBox(const AboutTexts& texts, TextMeasure& measure, int resolution) {
    AboutLayout layout;
    Stack stack(layout, texts, measure, resolution);
    stack.AddLine({lblProductName});
    stack.AddLine({lblVersion});
    stack.AddSeparator(0);
    stack.AddLine({lblDescription});
    stack.AddSeparator(1);
    stack.AddLine({lblLegal});
    stack.AddLine({lblCompany0, lblCompany1, lblCompany2});
    stack.Finish();
    return layout;
}

}  // namespace kiv
