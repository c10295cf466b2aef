#include "PageFixture.h"

namespace kiv {
namespace {

class ValuePages : public PageTest {};

TEST_F(ValuePages, ShowWhatAllSelectedControlsHave) {
    show->SetDataDMYValue(11);
    show->SetDataMDYValue(12);
    set->SetData12HrValue(21);
    Open(PageId::DT_VexaValues);
    const auto expectDates = [&](bool enabled) {
        for (const auto* name : {u"txtValue(2)", u"txtValue(3)", u"lblValue(2)", u"lblValue(3)"})
            EXPECT_EQ(At(name).IsEnabled(), enabled);
        for (const auto* name : {u"txtValue(0)", u"txtValue(1)", u"lblValue(0)"}) EXPECT_TRUE(At(name).IsEnabled());
    };
    Select(show);
    EXPECT_EQ(At(u"txtValue(2)").Text(), u"11");
    EXPECT_EQ(At(u"txtValue(3)").Text(), u"12");
    expectDates(true);
    Select(show, set);
    EXPECT_EQ(At(u"txtValue(0)").Text(), u"0");
    expectDates(false);
    Select(set);
    EXPECT_EQ(At(u"txtValue(0)").Text(), u"21");
    expectDates(false);
    Type(u"txtValue(0)", u"5");
    EXPECT_TRUE(page->IsDirty());
    Select(otherShow);
    EXPECT_FALSE(page->IsDirty()) << "what was typed was for others";
    EXPECT_EQ(At(u"txtValue(2)").Text(), u"1");
    expectDates(true);
}

TEST_F(ValuePages, WriteToControlsOfBothKindsAndSkipWhatOneLacks) {
    Open(PageId::DT_VexaValues);
    Select(show, otherShow);
    Type(u"txtValue(0)", u"5");
    Type(u"txtValue(1)", u"6 and more");
    Type(u"txtValue(2)", u"");
    Type(u"txtValue(3)", u"-8");
    page->Apply();
    for (DesignedShow* each : {&show, &otherShow}) {
        EXPECT_EQ((*each)->Data12HrValue(), 5);
        EXPECT_EQ((*each)->Data24HrValue(), 6);
        EXPECT_EQ((*each)->DataDMYValue(), 0);
        EXPECT_EQ((*each)->DataMDYValue(), -8);
    }
    Select(set, show);
    Type(u"txtValue(1)", u"9");
    Type(u"txtValue(2)", u"10");  // as no user can
    set.object->onCall = [](std::u16string_view property) {
        if (property == u"Data24HrValue") throw HostError(ErrorNumber::ObjectNotSet);
    };
    EXPECT_EQ(ErrorOf([&] { page->Apply(); }), 0);
    EXPECT_EQ(set->Data24HrValue(), 1);
    EXPECT_EQ(show->Data24HrValue(), 9);
    EXPECT_EQ(show->DataDMYValue(), 10);
    EXPECT_FALSE(page->IsDirty());
}

TEST_F(ValuePages, StoreAFormatAsEachControlsOwnValueForIt) {
    show->SetDataMDYValue(30);
    show->SetDataDMYValue(31);
    show->SetData24HrValue(33);
    otherShow->SetDataMDYValue(40);
    otherShow->SetDataDMYValue(41);
    otherShow->SetData12HrValue(42);
    show->SetDateFormat(30);
    Open(PageId::ShowDT_ProtoValues);
    Select(show, otherShow);
    EXPECT_EQ(At(u"optDateFormat(0)").Value(), 1);
    EXPECT_EQ(At(u"optTimeFormat(0)").Value(), 1);
    EXPECT_EQ(At(u"optTimeFormat(0)").Text(), u"12-Hour Format");
    EXPECT_FALSE(page->IsDirty());
    Choose(u"optDateFormat(1)");
    page->Apply();
    EXPECT_EQ(show->DateFormat(), 31);
    EXPECT_EQ(otherShow->DateFormat(), 41);
    EXPECT_EQ(show.object->TakePuts(), Puts({"DateFormat"}));  // the time format was not touched
    Choose(u"optTimeFormat(1)");
    Choose(u"optDateFormat(0)");
    page->Apply();
    EXPECT_EQ(show->DateFormat(), 30);
    EXPECT_EQ(otherShow->DateFormat(), 40);
    EXPECT_EQ(show->TimeFormat(), 33);
    EXPECT_EQ(otherShow->TimeFormat(), 1);
    Choose(u"optTimeFormat(0)");
    page->Apply();
    EXPECT_EQ(otherShow->TimeFormat(), 42);

    // Any value but the one for month first counts as day first.
    show->SetDateFormat(99);
    Select(show);
    EXPECT_EQ(At(u"optDateFormat(0)").Value(), 0);
    EXPECT_EQ(At(u"optDateFormat(1)").Value(), 1);
}

TEST_F(ValuePages, TellOfAFormatThatCouldNotBeStoredOnceTheOthersAre) {
    Open(PageId::ShowDT_ProtoValues);
    Select(show, otherShow);
    show.object->onCall = [](std::u16string_view property) {
        if (property == u"DataDMYValue") throw HostError(ErrorNumber::ObjectNotSet);
    };
    Choose(u"optDateFormat(1)");
    Choose(u"optTimeFormat(1)");
    EXPECT_EQ(ErrorOf([&] { page->Apply(); }), ErrorNumber::ObjectNotSet);
    EXPECT_EQ(show->TimeFormat(), 1);
    EXPECT_EQ(otherShow->DateFormat(), 1);
    EXPECT_TRUE(page->IsDirty());
    show.object->onCall = nullptr;
    page->Apply();
    EXPECT_EQ(show->DateFormat(), 1);
    EXPECT_FALSE(page->IsDirty());
}

}  // namespace
}  // namespace kiv
