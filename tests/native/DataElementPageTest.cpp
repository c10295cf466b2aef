#include "PageFixture.h"

namespace kiv {
namespace {

class DataElementPages : public PageTest {
protected:
    void ChooseSlot(int slot) { Pick(u"cboDataObject", slot); }
};

TEST_F(DataElementPages, ListTheSlotsAndHeadTheFieldsWithTheChosenOne) {
    Open(PageId::SetDT_VexaData);
    set->SetDataLMObject(13, 42);
    set->SetDataVariableName(13, u"nviYear");
    set->SetDataElementPath(13, u"year");
    set->SetDataType(13, 3);
    Select(set);
    ASSERT_EQ(At(u"cboDataObject").Entries().size(), 14u);
    EXPECT_EQ(At(u"cboDataObject").ListIndex(), 0);
    EXPECT_EQ(At(u"lblHeader(0)").Text(), u"Data&LMObject ( 0 ) :");
    EXPECT_EQ(At(u"fraProperties").Text(), u"12-Hour vs. 24-Hour");
    EXPECT_EQ(At(u"lblHeader(4)").Text(), u"Select Vexa Data Element Object:");
    ChooseSlot(13);
    EXPECT_EQ(At(u"cboDataObject").Entries()[13].text, u"13 - Set Current Year");
    EXPECT_EQ(At(u"lblHeader(3)").Text(), u"Data&ElementPath ( 13 ) :");
    EXPECT_EQ(At(u"fraProperties").Text(), u" Set Current Year");
    EXPECT_EQ(At(u"txtDataLMObject").Text(), u"42");
    EXPECT_EQ(At(u"txtDataVariableName").Text(), u"nviYear");
    EXPECT_EQ(At(u"txtDataElementPath").Text(), u"year");
    EXPECT_EQ(At(u"cboDataType").ListIndex(), 3);
    EXPECT_FALSE(page->IsDirty());
    // Filled again, the list is not longer.
    Select(set);
    EXPECT_EQ(At(u"cboDataObject").Entries().size(), 14u);
    EXPECT_EQ(At(u"lblHeader(3)").Text(), u"Data&ElementPath ( 0 ) :");

    Open(PageId::ShowDT_VexaData);
    Select(show);
    ASSERT_EQ(At(u"cboDataObject").Entries().size(), 7u);
    EXPECT_EQ(At(u"cboDataObject").Entries()[0].text, u"0 - DMY vs. MDY / 12-Hr vs. 24-Hr");
    EXPECT_NE(At(u"lblHelp").Text().find(u"KivShowDateTime control uses four"), std::u16string::npos);
}

TEST_F(DataElementPages, KeepTheEditsOfEverySlotAndWriteThoseOnly) {
    Open(PageId::SetDT_VexaData);
    Select(set);
    ChooseSlot(3);
    Type(u"txtDataLMObject", u"7x");
    Type(u"txtDataElementPath", u"minute");
    ChooseSlot(5);
    EXPECT_EQ(At(u"txtDataElementPath").Text(), u"");
    Pick(u"cboDataType", 2);
    Type(u"txtDataVariableName", u"nvoMonth");
    ChooseSlot(3);
    EXPECT_EQ(At(u"txtDataLMObject").Text(), u"7x");
    EXPECT_EQ(At(u"txtDataElementPath").Text(), u"minute");
    Type(u"txtDataLMObject", u"-8");  // the shown slot is stored by Apply itself
    page->Apply();
    EXPECT_EQ(set.object->TakePuts(),
              Puts({"DataLMObject 3", "DataElementPath 3", "DataVariableName 5", "DataType 5"}));
    EXPECT_EQ(set->DataLMObject(3), -8);
    EXPECT_EQ(set->DataElementPath(3), u"minute");
    EXPECT_EQ(set->DataVariableName(5), u"nvoMonth");
    EXPECT_EQ(set->DataType(5), 2);
    EXPECT_FALSE(page->IsDirty());
    page->Apply();
    EXPECT_EQ(set.object->TakePuts(), Puts());
}

TEST_F(DataElementPages, AreNotDirtiedByLookingAtOtherSlots) {
    Open(PageId::ShowDT_VexaData);
    Select(show);
    for (int slot = 6; slot >= 0; --slot) ChooseSlot(slot);
    EXPECT_FALSE(page->IsDirty());
    EXPECT_TRUE(view.TakeFlags().empty());
    Type(u"txtDataElementPath", u"x");
    ChooseSlot(4);
    EXPECT_TRUE(page->IsDirty());
}

TEST_F(DataElementPages, WriteToTheFirstSelectedControlOnly) {
    Open(PageId::SetDT_VexaData);
    Select(set, otherSet);
    Type(u"txtDataElementPath", u"format");
    page->Apply();
    EXPECT_EQ(set->DataElementPath(0), u"format");
    EXPECT_EQ(otherSet->DataElementPath(0), u"");
    EXPECT_EQ(otherSet.object->TakePuts(), Puts());
}

TEST_F(DataElementPages, LeaveWithTheErrorOfARefusedValueAndKeepWhatWasNotWritten) {
    Open(PageId::SetDT_VexaData);
    Select(set);
    Type(u"txtDataElementPath", u"a");
    ChooseSlot(2);
    Type(u"txtDataLMObject", u"99999999999");
    Type(u"txtDataElementPath", u"b");
    ChooseSlot(9);
    Type(u"txtDataVariableName", u"nviHour");
    EXPECT_EQ(ErrorOf([&] { page->Apply(); }), ErrorNumber::Overflow);
    EXPECT_TRUE(page->IsDirty());
    EXPECT_EQ(set.object->TakePuts(), Puts({"DataElementPath 0"}));
    ChooseSlot(2);
    Type(u"txtDataLMObject", u"");
    page->Apply();
    EXPECT_EQ(set.object->TakePuts(), Puts({"DataLMObject 2", "DataElementPath 2", "DataVariableName 9"}));
    EXPECT_EQ(set->DataLMObject(2), 0);

    otherSet.object->onCall = [](std::u16string_view) { throw HostError(ErrorNumber::InvalidPropertyValue); };
    Select(otherSet);
    EXPECT_EQ(At(u"txtDataElementPath").Text(), u"");
    Pick(u"cboDataType", 1);
    EXPECT_EQ(ErrorOf([&] { page->Apply(); }), ErrorNumber::InvalidPropertyValue);
}

TEST_F(DataElementPages, OfTheShowControlKeepAVariableNameInEverySlotButTheFirst) {
    for (std::int32_t slot = 0; slot < 7; ++slot) show->SetDataVariableName(slot, u"nv");
    Open(PageId::ShowDT_VexaData);
    Select(show);
    Type(u"txtDataVariableName", u"");
    page->Apply();
    EXPECT_EQ(show->DataVariableName(0), u"");

    for (const char16_t* blank : {u"", u"   "}) {
        ChooseSlot(2);
        Type(u"txtDataLMObject", u"5");
        Type(u"txtDataVariableName", blank);
        Type(u"txtDataElementPath", u"path");
        ChooseSlot(4);
        Type(u"txtDataElementPath", u"month");
        show.object->TakePuts();
        EXPECT_EQ(ErrorOf([&] { page->Apply(); }), ErrorNumber::ResourceNotFound);
        EXPECT_EQ(show.object->TakePuts(), Puts({"DataLMObject 2"}));
        EXPECT_TRUE(view.warnings.empty());
        EXPECT_EQ(At(u"cboDataObject").ListIndex(), 4);
        EXPECT_TRUE(page->IsDirty());
    }
    // A name that was empty all along is none of the page's business.
    ChooseSlot(2);
    Type(u"txtDataVariableName", u"nvoMinute");
    otherShow->SetDataVariableName(3, u"");
    page->Apply();
    EXPECT_EQ(show->DataElementPath(4), u"month");
    Select(otherShow);
    ChooseSlot(3);
    Type(u"txtDataElementPath", u"second");
    page->Apply();
    EXPECT_EQ(otherShow->DataElementPath(3), u"second");

    // The set control's page has no such check.
    set->SetDataVariableName(2, u"nv");
    Open(PageId::SetDT_VexaData);
    Select(set);
    ChooseSlot(2);
    Type(u"txtDataVariableName", u"");
    page->Apply();
    EXPECT_EQ(set->DataVariableName(2), u"");
}

TEST_F(DataElementPages, ShowNoTypeThatIsNotInTheListAndStoreThePlaceOfNone) {
    set->SetDataType(1, 3);
    set.object->onAnswer = [](std::u16string_view property, Value& answer) {
        if (property == u"DataType" && answer == Value(3)) answer = 7;
    };
    Open(PageId::SetDT_VexaData);
    Select(set);
    Pick(u"cboDataType", 1);
    ChooseSlot(1);
    EXPECT_EQ(At(u"cboDataType").ListIndex(), PageField::None);
    ChooseSlot(0);
    EXPECT_EQ(At(u"cboDataType").ListIndex(), 1);
    ChooseSlot(1);
    EXPECT_EQ(At(u"cboDataType").ListIndex(), PageField::None);
    Type(u"txtDataElementPath", u"dst");
    page->Apply();
    EXPECT_EQ(set.object->TakePuts(), Puts({"DataType 0", "DataElementPath 1"}));
    EXPECT_EQ(set->DataType(0), 1);

    // What is stored for no type is one that both controls refuse.
    Open(PageId::ShowDT_VexaData);
    Select(show);
    Pick(u"cboDataType", PageField::None);
    EXPECT_EQ(ErrorOf([&] { page->Apply(); }), ErrorNumber::InvalidPropertyValue);
}

TEST_F(DataElementPages, AreEmptyForAnotherControlAndForNone) {
    Open(PageId::ShowDT_VexaData);
    show->SetDataVariableName(0, u"nv");
    Select(show);
    Select(set, show);
    EXPECT_EQ(At(u"txtDataVariableName").Text(), u"");
    EXPECT_EQ(At(u"cboDataObject").Entries().size(), 7u);
    Type(u"txtDataElementPath", u"p");
    page->Apply();
    EXPECT_EQ(show->DataElementPath(0), u"p");
    EXPECT_EQ(set.object->TakePuts(), Puts());

    // Before anything is selected there is no slot to edit.
    Open(PageId::SetDT_VexaData);
    Type(u"txtDataElementPath", u"p");
    EXPECT_FALSE(page->IsDirty());
    page->Apply();
}

}  // namespace
}  // namespace kiv
