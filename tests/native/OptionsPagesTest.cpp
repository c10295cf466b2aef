#include "PageFixture.h"

namespace kiv {
namespace {

class OptionsPages : public PageTest {};

TEST_F(OptionsPages, HaveTheirCaptionsFromTheStringTable) {
    Open(PageId::SetDT_Options);
    EXPECT_EQ(At(u"fraOptions(1)").Text(), u"Date/Time Options");
    Select(set);
    EXPECT_EQ(At(u"fraOptions(0)").Text(), u"Mode");
    EXPECT_EQ(At(u"fraOptions(1)").Text(), u"Date / Time Options");
    EXPECT_EQ(At(u"optMode(2)").Text(), u"Set &Time Only");
    Open(PageId::ShowDT_Options);
    page->SetObjects({});
    EXPECT_EQ(At(u"fraOptions(3)").Text(), u"Time Options");
    EXPECT_EQ(At(u"optMode(1)").Text(), u"Show &Time Information");
}

TEST_F(OptionsPages, EnableWhatTheChosenModeShows) {
    Open(PageId::SetDT_Options);
    Select(set);
    const struct {
        const char16_t* button;
        bool date;
        bool time;
    } cases[] = {{u"optMode(2)", false, true},
                 {u"optMode(1)", true, false},
                 {u"optMode(0)", true, true},
                 {u"optMode(2)", false, true}};
    const auto expectEnabled = [&](bool date, bool time) {
        for (const auto* name : {u"fraOptions(2)", u"cboStartOfWeek", u"chkShowToday", u"lblStartOfWeek"})
            EXPECT_EQ(At(name).IsEnabled(), date);
        for (const auto* name : {u"fraOptions(3)", u"chkShowSeconds", u"chkShowDST"})
            EXPECT_EQ(At(name).IsEnabled(), time);
        for (const auto* name : {u"fraOptions(0)", u"fraOptions(1)", u"chkUsePCDateTime"})
            EXPECT_TRUE(At(name).IsEnabled());
    };
    for (const auto& c : cases) {
        Choose(c.button);
        expectEnabled(c.date, c.time);
    }
    // Filling chooses a button too, with the same effect, and is no edit.
    otherSet->SetMode(sdtSetDateOnly);
    Select(otherSet);
    expectEnabled(true, false);
    EXPECT_EQ(At(u"optMode(2)").Value(), 0);
    EXPECT_FALSE(page->IsDirty());
}

TEST_F(OptionsPages, OfTheSetControlWriteEveryFieldToAllControls) {
    Open(PageId::SetDT_Options);
    set->SetShowSeconds(true);
    Select(set, otherSet);
    EXPECT_EQ(At(u"cboStartOfWeek").ListIndex(), 0);
    EXPECT_EQ(At(u"chkShowSeconds").Value(), 1);
    EXPECT_EQ(At(u"chkUsePCDateTime").Value(), 1);
    Choose(u"optMode(2)");
    Check(u"chkUsePCDateTime", 0);
    Check(u"chkShowToday", 0);
    Pick(u"cboStartOfWeek", 6);
    Check(u"chkShowDST", 0);
    Check(u"chkShowSeconds", 2);  // grey is not checked
    page->Apply();
    for (DesignedSet* each : {&set, &otherSet}) {
        EXPECT_EQ((*each)->Mode(), sdtSetTimeOnly);
        EXPECT_FALSE((*each)->UsePCDateTime());
        EXPECT_FALSE((*each)->ShowToday());
        EXPECT_EQ((*each)->StartOfWeek(), 7);
        EXPECT_FALSE((*each)->ShowDST());  // written after the mode, which turns it on
        EXPECT_FALSE((*each)->ShowSeconds());
        EXPECT_EQ(each->object->TakePuts(),
                  Puts({"Mode", "UsePCDateTime", "ShowToday", "StartOfWeek", "ShowDST", "ShowSeconds"}));
    }
}

TEST_F(OptionsPages, OfTheSetControlGoOnPastAFailure) {
    Open(PageId::SetDT_Options);
    Select(set, otherSet);
    set.object->onCall = [](std::u16string_view) { throw HostError(ErrorNumber::ObjectNotSet); };
    Choose(u"optMode(1)");
    Pick(u"cboStartOfWeek", 3);
    EXPECT_EQ(ErrorOf([&] { page->Apply(); }), 0);
    EXPECT_EQ(set->Mode(), sdtSetDateTime);
    EXPECT_EQ(otherSet->Mode(), sdtSetDateOnly);
    EXPECT_EQ(otherSet->StartOfWeek(), 4);
}

TEST_F(OptionsPages, OfAModeThatWasNeverChosenWriteTheFirstOrTheLast) {
    // No control, no choice; the mark comes from a click on a button that another click took back.
    Open(PageId::SetDT_Options);
    page->SetObjects({});
    EXPECT_EQ(At(u"optMode(0)").Value(), 0);
    EXPECT_EQ(At(u"optMode(1)").Value(), 0);
    // Its controls come to stand behind a stranger, so that nothing is filled.
    set->SetMode(sdtSetTimeOnly);
    Select(show, set);
    Choose(u"optMode(1)");
    At(u"optMode(1)").SetValue(0);
    page->Apply();
    EXPECT_EQ(set->Mode(), sdtSetDateTime);

    Open(PageId::ShowDT_Options);
    Select(set, show);
    Choose(u"optMode(0)");
    At(u"optMode(0)").SetValue(0);
    page->Apply();
    EXPECT_EQ(show->Mode(), sdtShowTimeOnly);
}

TEST_F(OptionsPages, OfTheShowControlWriteEveryFieldToAllControls) {
    Open(PageId::ShowDT_Options);
    show->SetMode(sdtShowTimeOnly);
    Select(show, otherShow);
    EXPECT_EQ(At(u"optMode(1)").Value(), 1);
    EXPECT_EQ(At(u"txtAMPMFormat").Text(), u"AM,PM");
    Choose(u"optMode(0)");
    Check(u"chkShowLeadingZeros", 0);
    Check(u"chkUpperCase", 0);
    Type(u"txtDateDelimiter", u".");
    Check(u"chkShowCentury", 0);
    Type(u"txtTimeDelimiter", u"h");
    Type(u"txtAMPMFormat", u"a,p");
    Check(u"chkShowSeconds", 1);
    page->Apply();
    for (DesignedShow* each : {&show, &otherShow}) {
        EXPECT_EQ((*each)->Mode(), sdtShowDateOnly);
        EXPECT_FALSE((*each)->ShowLeadingZeros());
        EXPECT_FALSE((*each)->UpperCase());
        EXPECT_EQ((*each)->DateDelimiter(), u".");
        EXPECT_FALSE((*each)->ShowCentury());
        EXPECT_EQ((*each)->TimeDelimiter(), u"h");
        EXPECT_EQ((*each)->AMPMFormat(), u"a,p");
        EXPECT_TRUE((*each)->ShowSeconds());
    }
}

TEST_F(OptionsPages, OfTheShowControlStopAtARefusalAndLeaveWithTheMissingTitle) {
    Open(PageId::ShowDT_Options);
    Select(show, otherShow);
    Check(u"chkUpperCase", 0);
    Type(u"txtDateDelimiter", u"//");
    Check(u"chkShowSeconds", 1);
    view.TakeFlags();
    try {
        page->Apply();
        FAIL() << "the refusal went unnoticed";
    } catch (const HostError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::ResourceNotFound);
        EXPECT_EQ(error.Description(), u"Resource with identifier '1100' not found");
    }
    EXPECT_TRUE(view.warnings.empty());
    EXPECT_TRUE(view.focused.empty());
    EXPECT_FALSE(show->UpperCase());  // before the refusal
    EXPECT_EQ(show->DateDelimiter(), u"-");
    EXPECT_FALSE(show->ShowSeconds());  // behind it
    EXPECT_TRUE(otherShow->UpperCase());
    EXPECT_TRUE(page->IsDirty());
    EXPECT_EQ(view.TakeFlags(), std::vector<bool>());

    // Nothing is lost: put right, all of it is applied.
    Type(u"txtDateDelimiter", u"/");
    page->Apply();
    EXPECT_FALSE(page->IsDirty());
    for (DesignedShow* each : {&show, &otherShow}) {
        EXPECT_EQ((*each)->DateDelimiter(), u"/");
        EXPECT_FALSE((*each)->UpperCase());
        EXPECT_TRUE((*each)->ShowSeconds());
    }
}

}  // namespace
}  // namespace kiv
