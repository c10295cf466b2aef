// The general pages, and what all pages have in common.
#include "PageFixture.h"

namespace kiv {
namespace {

class GeneralPages : public PageTest {};

TEST_F(GeneralPages, WriteEveryEditedFieldToEverySelectedControl) {
    Open(PageId::ShowDT_General);
    Select(show, otherShow);
    Type(u"txtNumeric(0)", u"300");  // the value's height, below, becomes the caption's too
    Type(u"txtNumeric(1)", u"4000");
    Check(u"chkLockCaptionWidth", 1);
    Pick(u"cboBorderStyle", 1);
    Type(u"txtNumeric(2)", u"310");
    Type(u"txtNumeric(3)", u"4100");
    Check(u"chkLockValueWidth", 1);
    page->Apply();
    for (DesignedShow* each : {&show, &otherShow}) {
        EXPECT_EQ((*each)->CaptionHeight(), 310);
        EXPECT_EQ((*each)->CaptionWidth(), 4000);
        EXPECT_TRUE((*each)->LockCaptionWidth());
        EXPECT_EQ((*each)->BorderStyle(), 1);
        EXPECT_EQ((*each)->ValueHeight(), 310);
        EXPECT_EQ((*each)->ValueWidth(), 4100);
        EXPECT_TRUE((*each)->LockValueWidth());
    }
    // In the order of the fields, and each once.
    EXPECT_EQ(show.object->TakePuts(), Puts({"CaptionHeight", "CaptionWidth", "LockCaptionWidth", "BorderStyle",
                                             "ValueHeight", "ValueWidth", "LockValueWidth"}));
    page->Apply();
    EXPECT_EQ(show.object->TakePuts(), Puts());
}

TEST_F(GeneralPages, ShowTheFirstControlAndWriteWhatWasEditedOnly) {
    show->SetCaption(u"Clock");
    show->SetValueHeight(444);
    show->SetLockValueWidth(true);
    show->SetBorderStyle(1);
    otherShow->SetLockCaptionWidth(true);
    Open(PageId::ShowDT_General);
    Select(show);
    EXPECT_EQ(At(u"txtCaption").Text(), u"Clock");
    EXPECT_EQ(At(u"txtNumeric(2)").Text(), u"444");
    EXPECT_EQ(At(u"chkLockCaptionWidth").Value(), 0);
    EXPECT_EQ(At(u"chkLockValueWidth").Value(), 1);
    EXPECT_EQ(At(u"cboBorderStyle").ListIndex(), 1);
    Type(u"txtCaption", u"Device");
    page->Apply();
    EXPECT_EQ(show.object->TakePuts(), Puts({"Caption"}));
    EXPECT_EQ(show->Caption(), u"Device");
}

TEST_F(GeneralPages, EditACaptionOfASingleControlOnly) {
    set->SetCaption(u"First");
    Open(PageId::SetDT_General);
    Select(set);
    EXPECT_EQ(At(u"txtCaption").Text(), u"First");
    EXPECT_TRUE(At(u"txtCaption").IsEnabled());

    Select(set, otherSet);
    EXPECT_EQ(At(u"txtCaption").Text(), u"");
    EXPECT_FALSE(At(u"txtCaption").IsEnabled());
    EXPECT_FALSE(At(u"lblCaption").IsEnabled());
    EXPECT_TRUE(At(u"lblTimeHeight").IsEnabled());
    Type(u"txtCaption", u"Both");
    Type(u"txtNumeric(0)", u"600");
    page->Apply();
    EXPECT_EQ(set->Caption(), u"First");
    EXPECT_EQ(set->TimeHeight(), 600);
    EXPECT_EQ(otherSet->TimeHeight(), 600);

    Select(otherSet);
    EXPECT_TRUE(At(u"txtCaption").IsEnabled());
    EXPECT_TRUE(At(u"lblCaption").IsEnabled());
    EXPECT_EQ(At(u"txtCaption").Text(), u"Set Date/Time");
}

TEST_F(GeneralPages, TakeTheLeadingNumberOfAText) {
    Open(PageId::SetDT_General);
    Select(set);
    const struct {
        const char16_t* text;
        std::int32_t height;
    } cases[] = {
        {u"700abc", 700},
        {u" 702 3", 702},
        {u"703.6", 704},
        {u"704.5", 704},
        {u"7e2", 700},
        {u"", 315},
        {u"x", 315},
        {u"-5", 315},
        // A number that does not fit is skipped like any other failure.
        {u"40000", 600},
        {u"-32769", 600},
        {u"99999999999", 600},
    };
    for (const auto& c : cases) {
        set->SetTimeHeight(600);
        Type(u"txtNumeric(0)", c.text);
        EXPECT_EQ(ErrorOf([&] { page->Apply(); }), 0);
        EXPECT_EQ(set->TimeHeight(), c.height) << std::string(c.text, c.text + std::u16string_view(c.text).size());
    }
}

TEST_F(GeneralPages, AddToTheBordersLabelEachTimeTheyAreFilled) {
    Open(PageId::ShowDT_General);
    EXPECT_EQ(At(u"lblBorderStyle").Text(), u"&BorderStyle:");
    Select(show);
    EXPECT_EQ(At(u"lblBorderStyle").Text(), u"&BorderStyle:  (Value Field Only)");
    page->ForgetObjects();
    Select(set);
    EXPECT_EQ(At(u"lblBorderStyle").Text(), u"&BorderStyle:  (Value Field Only)  (Value Field Only)");
}

TEST_F(GeneralPages, SkipWhatAControlRefusesAndGoOn) {
    Open(PageId::ShowDT_General);
    Select(show, otherShow);
    show.object->onCall = [](std::u16string_view property) {
        if (property != u"ValueWidth") throw HostError(ErrorNumber::InvalidPropertyValue);
    };
    Type(u"txtNumeric(0)", u"301");
    Type(u"txtNumeric(3)", u"4001");
    EXPECT_EQ(ErrorOf([&] { page->Apply(); }), 0);
    EXPECT_NE(show->CaptionHeight(), 301);
    EXPECT_EQ(show->ValueWidth(), 4001);
    EXPECT_EQ(otherShow->CaptionHeight(), 301);
    EXPECT_EQ(otherShow->ValueWidth(), 4001);
    EXPECT_FALSE(page->IsDirty());

    // A property that cannot be read leaves its field as it is; the others are filled.
    show->SetCaptionHeight(555);
    show->SetValueWidth(5001);
    show.object->onCall = [](std::u16string_view property) {
        if (property == u"CaptionHeight") throw HostError(ErrorNumber::ObjectNotSet);
    };
    Select(show);
    EXPECT_EQ(At(u"txtNumeric(0)").Text(), u"301");
    EXPECT_EQ(At(u"txtNumeric(3)").Text(), u"5001");
}

TEST_F(GeneralPages, FillNothingFromAnotherControlsPropertiesAndForgetEdits) {
    Open(PageId::SetDT_General);
    Select(set);
    Type(u"txtNumeric(0)", u"777");
    EXPECT_TRUE(page->IsDirty());
    Select(show, set);
    EXPECT_FALSE(page->IsDirty());
    EXPECT_EQ(At(u"txtNumeric(0)").Text(), u"777");
    page->Apply();
    EXPECT_EQ(set.object->TakePuts(), Puts());
    // What is edited then reaches the page's own controls, wherever they stand.
    Type(u"txtNumeric(0)", u"778");
    page->Apply();
    EXPECT_EQ(set->TimeHeight(), 778);
    EXPECT_EQ(show.object->TakePuts(), Puts());
    page->SetObjects({});
    Type(u"txtNumeric(0)", u"779");
    EXPECT_EQ(ErrorOf([&] { page->Apply(); }), 0);
}

TEST_F(GeneralPages, TellTheFrameWhenTheyBecomeDirtyAndWhenTheyAreCleanAgain) {
    Open(PageId::SetDT_General);
    page->SetObjects({set.object});
    EXPECT_EQ(view.TakeFlags(), std::vector<bool>());
    Type(u"txtCaption", u"a");
    Type(u"txtCaption", u"ab");
    EXPECT_EQ(view.TakeFlags(), std::vector<bool>({true}));
    page->Apply();
    EXPECT_EQ(view.TakeFlags(), std::vector<bool>({false}));
    Type(u"txtCaption", u"abc");
    page->SetObjects({set.object});
    EXPECT_EQ(view.TakeFlags(), std::vector<bool>({true, false}));
    EXPECT_EQ(At(u"txtCaption").Text(), u"ab");
}

TEST_F(GeneralPages, LiveThroughAControlThatSelectsOthersWhileTheyApply) {
    Open(PageId::SetDT_General);
    Select(set, otherSet);
    set.object->onCall = [&](std::u16string_view) {
        set.object->onCall = nullptr;
        page->SetObjects({});
    };
    Type(u"txtNumeric(0)", u"640");
    Type(u"txtNumeric(1)", u"1640");
    page->Apply();
    EXPECT_FALSE(page->IsDirty());
    EXPECT_EQ(otherSet.object->TakePuts(), Puts());  // the edits were forgotten with their selection
}

TEST_F(GeneralPages, SelectATextThatIsEnteredAndKeepLettersOutOfNumbers) {
    Open(PageId::SetDT_General);
    headless::HeadlessText text(u"1095");
    text.start = 2;
    page->GotFocus(text);
    EXPECT_EQ(text.start, 0u);
    EXPECT_EQ(text.length, 4u);
    for (const std::int16_t passes : {std::int16_t{'0'}, std::int16_t{'9'}, std::int16_t{'-'}, std::int16_t{8}}) {
        std::int16_t key = passes;
        page->KeyPress(At(u"txtNumeric(1)"), key);
        EXPECT_EQ(key, passes);
    }
    for (const std::int16_t stopped : {std::int16_t{'a'}, std::int16_t{'.'}, std::int16_t{' '}, std::int16_t{-4}}) {
        std::int16_t key = stopped;
        page->KeyPress(At(u"txtNumeric(0)"), key);
        EXPECT_EQ(key, 0) << stopped;
        key = stopped;
        page->KeyPress(At(u"txtCaption"), key);
        EXPECT_EQ(key, stopped);
    }
}

}  // namespace
}  // namespace kiv
