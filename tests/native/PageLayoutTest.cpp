// The pages' descriptions and the about boxes, as a user looks at them.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "PageFixture.h"
#include "pages/AboutBox.h"
#include "pages/BuiltInServices.h"
#include "pages/SharedServices.h"
#include "platform/HostError.h"

namespace kiv {
namespace {

constexpr PageId AllPages[] = {PageId::SetDT_General,   PageId::SetDT_Options,     PageId::SetDT_VexaData,
                               PageId::DT_VexaValues,   PageId::ShowDT_General,    PageId::ShowDT_Options,
                               PageId::ShowDT_VexaData, PageId::ShowDT_ProtoValues};

std::string NameOf(const FieldDescription& field) {
    return {field.name.begin(), field.name.end()};
}

/// A list drops down over what is below it.
int HeightOf(const FieldDescription& field) {
    return field.kind == FieldKind::DropDown ? 14 : field.bounds.height;
}

bool Contains(const DialogRect& outer, const FieldDescription& field) {
    const DialogRect& inner = field.bounds;
    return inner.x > outer.x && inner.y > outer.y && inner.x + inner.width < outer.x + outer.width &&
           inner.y + HeightOf(field) < outer.y + outer.height;
}

bool Overlap(const FieldDescription& a, const FieldDescription& b) {
    return a.bounds.x < b.bounds.x + b.bounds.width && b.bounds.x < a.bounds.x + a.bounds.width &&
           a.bounds.y < b.bounds.y + HeightOf(b) && b.bounds.y < a.bounds.y + HeightOf(a);
}

class PageLayout : public PageTest {};

TEST_F(PageLayout, KeepsEveryFieldOnThePageAndApartFromTheOthers) {
    for (const PageId id : AllPages) {
        const auto fields = DescriptionOf(id).fields;
        for (const FieldDescription& field : fields) {
            EXPECT_TRUE(Contains({0, 0, PageWidth, PageHeight}, field)) << NameOf(field);
            for (const FieldDescription& other : fields) {
                if (&other == &field) continue;
                const bool inFrame = (field.kind == FieldKind::Frame && Contains(field.bounds, other)) ||
                                     (other.kind == FieldKind::Frame && Contains(other.bounds, field));
                EXPECT_TRUE(inFrame || !Overlap(field, other)) << NameOf(field) << " " << NameOf(other);
            }
        }
    }
}

TEST_F(PageLayout, LabelsEveryFieldRightBeforeItInTheTabOrder) {
    for (const PageId id : AllPages) {
        const auto fields = DescriptionOf(id).fields;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (!fields[i].caption.empty() || fields[i].captionId != 0 || fields[i].kind == FieldKind::Frame) continue;
            ASSERT_GT(i, 0u);
            EXPECT_EQ(fields[i - 1].kind, FieldKind::Label) << NameOf(fields[i]);
        }
    }
}

TEST_F(PageLayout, HasNoMarkTwiceOnAPage) {
    for (const PageId id : AllPages) {
        std::map<std::int32_t, std::u16string_view> properties;
        for (const FieldDescription& field : DescriptionOf(id).fields) {
            if (field.bit == 0) continue;
            EXPECT_EQ(field.bit & (field.bit - 1), 0);
            EXPECT_EQ(properties.emplace(field.bit, field.property).first->second, field.property) << NameOf(field);
        }
    }
}

TEST_F(PageLayout, HasEveryAccessKeyOncePerPageButForThePairThatTheTextsShare) {
    for (const PageId id : AllPages) {
        Open(id);
        page->SetObjects({});
        std::multiset<char16_t> keys;
        for (const PageField& field : page->Fields()) {
            if (field.IsTextBox()) continue;
            const auto mark = field.Text().find(u'&');
            if (mark == std::u16string::npos) continue;
            const char16_t key = field.Text()[mark + 1];
            keys.insert(key >= u'a' ? static_cast<char16_t>(key - 32) : key);
        }
        for (const char16_t key : keys) {
            const bool shared = id == PageId::SetDT_Options && key == u'S';  // "&Set Date and Time", "Show&Seconds"
            EXPECT_EQ(keys.count(key), shared ? 2u : 1u) << static_cast<char>(key);
        }
    }
}

TEST(PageOfProperty, IsThePageThatEditsIt) {
    const struct {
        ControlKind control;
        const char16_t* property;
        std::optional<PageId> page;
    } cases[] = {
        {ControlKind::Set, u"Caption", PageId::SetDT_General},
        {ControlKind::Show, u"Caption", PageId::ShowDT_General},
        {ControlKind::Set, u"DataType", PageId::SetDT_VexaData},
        {ControlKind::Show, u"DataMDYValue", PageId::DT_VexaValues},
        {ControlKind::Show, u"TimeFormat", PageId::ShowDT_ProtoValues},
        {ControlKind::Set, u"TimeFormat", std::nullopt},
        {ControlKind::Show, u"ShowLongDay", std::nullopt},
        {ControlKind::Set, u"", std::nullopt},
        {ControlKind::Other, u"Caption", std::nullopt},
    };
    for (const auto& c : cases) EXPECT_EQ(PageOfProperty(c.control, c.property), c.page);
}

class TenPixels final : public TextMeasure {
public:
    Extent Measure(std::u16string_view text) override { return {static_cast<int>(text.size()) * 10, 20}; }
};

TEST(AboutBox, ReadsTheOwnershipAsOneSentenceAndIsAsWideAsItsTexts) {
    BuiltInServices services;
    const AboutTexts texts = LoadAboutTexts(ControlKind::Set, {3, 14, 2}, services);
    EXPECT_EQ(texts.caption, u"About KivSetDateTime");
    EXPECT_EQ(texts.labels[lblVersion], u"Version: 3.14.2");
    EXPECT_EQ(texts.labels[lblProductName], LoadAboutTexts(ControlKind::Show, {}, services).labels[lblProductName]);
    EXPECT_EQ(texts.labels[lblCompany0] + texts.labels[lblCompany1] + texts.labels[lblCompany2], u"An Arden Company");
    TenPixels measure;
    for (const int resolution : {96, 144, 192}) {
        const AboutLayout layout = LayOutAboutBox(texts, measure, resolution);
        for (std::size_t i = lblCompany0; i < lblCompany2; ++i) {
            EXPECT_EQ(layout.labels[i + 1].x, layout.labels[i].x + layout.labels[i].width);
            EXPECT_EQ(layout.labels[i + 1].y, layout.labels[i].y);
        }
        for (std::size_t i = 0; i < texts.labels.size(); ++i) {
            const DialogRect& label = layout.labels[i];
            EXPECT_EQ(label.width, static_cast<int>(texts.labels[i].size()) * 10);
            EXPECT_GE(label.x, layout.icon.x + layout.icon.width);
            EXPECT_LE(label.x + label.width, layout.width);
            EXPECT_LE(label.y + label.height, layout.ok.y);
        }
        EXPECT_LE(layout.ok.y + layout.ok.height, layout.height);
    }
}

class FailingServices final : public UserServices {
public:
    explicit FailingServices(bool& fails) : m_fails(fails) {}
    void SelectAllText(TextSelection& box) override {
        box.SetSelStart(1);
        Check();
    }
    void FilterNumericKey(std::int16_t& keyCode) override {
        keyCode = u'7';
        Check();
    }
    std::u16string FormatVersion(std::int32_t, std::int32_t, std::int32_t) override {
        Check();
        return u"theirs";
    }

private:
    void Check() const {
        if (m_fails) throw HostError(ErrorNumber::ObjectNotSet);
    }
    bool& m_fails;
};

TEST(SharedServices, AreTheFrameworksUnlessTheyFailOrAreMissing) {
    bool fails = false;
    int searches = 0;
    SharedServices services([&]() -> std::unique_ptr<UserServices> {
        ++searches;
        return std::make_unique<FailingServices>(fails);
    });
    EXPECT_EQ(services.FormatVersion(1, 2, 3), u"theirs");
    std::int16_t key = u'a';
    services.FilterNumericKey(key);
    EXPECT_EQ(key, u'7');
    headless::HeadlessText text(u"abc");
    services.SelectAllText(text);
    EXPECT_EQ(text.start, 1u);
    fails = true;
    EXPECT_EQ(services.FormatVersion(1, 2, 3), u"1.2.3");
    key = u'a';
    services.FilterNumericKey(key);
    EXPECT_EQ(key, 0);
    services.SelectAllText(text);
    EXPECT_EQ(text.start, 0u);
    EXPECT_EQ(text.length, 3u);
    EXPECT_EQ(searches, 1);

    SharedServices none([&]() -> std::unique_ptr<UserServices> {
        ++searches;
        throw HostError(ErrorNumber::ObjectNotSet);
    });
    EXPECT_EQ(none.FormatVersion(0, 0, 1), u"0.0.1");
    EXPECT_EQ(none.FormatVersion(0, 0, 2), u"0.0.2");
    EXPECT_EQ(searches, 2);
}

}  // namespace
}  // namespace kiv
