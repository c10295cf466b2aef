#include "pages/DataElementPage.h"

#include <algorithm>
#include <array>

#include "common/Attempt.h"
#include "common/NumericText.h"
#include "common/ResourceStrings.h"
#include "common/ValueConversion.h"

namespace kiv {

namespace {

using enum FieldKind;

constexpr std::int32_t LMObjectBit = 1;
constexpr std::int32_t VariableNameBit = 2;
constexpr std::int32_t ElementPathBit = 4;
constexpr std::int32_t DataTypeBit = 8;

constexpr std::int32_t SetSlots = 14;
constexpr std::int32_t ShowSlots = 7;

constexpr FieldEntry DataTypes[] = {
    {u"0 - nvi_NetworkVariableInput", 0},
    {u"1 - nvo_NetworkVariableOutput", 1},
    {u"2 - nci_NVConfigurationProperty", 2},
    {u"3 - nci_CPConfigurationProperty", 3},
};

/// The fields of both pages; they differ in the text of the help.
constexpr auto FieldsWithHelp(std::int16_t help) {
    return std::to_array<FieldDescription>({
        {.name = u"lblHeader(4)", .bounds = {7, 9, 126, 8}, .captionId = residSelectDataElement},
        {.name = u"cboDataObject", .kind = DropDown, .bounds = {136, 7, 137, 150}},
        {.name = u"lblHelp", .bounds = {7, 28, 266, 72}, .captionId = help},
        {.name = u"fraProperties", .kind = Frame, .bounds = {7, 106, 266, 91}},
        {.name = u"lblHeader(0)", .bounds = {15, 121, 102, 8}, .caption = u"Data&LMObject"},
        {.name = u"txtDataLMObject",
         .kind = NumericBox,
         .bounds = {119, 119, 60, 14},
         .bit = LMObjectBit,
         .property = u"DataLMObject"},
        {.name = u"lblHeader(1)", .bounds = {15, 139, 102, 8}, .caption = u"Data&VariableName"},
        {.name = u"txtDataVariableName",
         .kind = TextBox,
         .bounds = {119, 137, 146, 14},
         .bit = VariableNameBit,
         .property = u"DataVariableName"},
        {.name = u"lblHeader(2)", .bounds = {15, 157, 102, 8}, .caption = u"Data&Type"},
        {.name = u"cboDataType",
         .kind = DropDown,
         .bounds = {119, 155, 146, 80},
         .bit = DataTypeBit,
         .property = u"DataType",
         .entries = DataTypes},
        {.name = u"lblHeader(3)", .bounds = {15, 175, 102, 8}, .caption = u"Data&ElementPath"},
        {.name = u"txtDataElementPath",
         .kind = TextBox,
         .bounds = {119, 173, 146, 14},
         .bit = ElementPathBit,
         .property = u"DataElementPath"},
    });
}

constexpr auto SetFields = FieldsWithHelp(residSetVexaDataHelp);
constexpr auto ShowFields = FieldsWithHelp(residShowVexaDataHelp);

constexpr std::u16string_view Headings[] = {u"lblHeader(0)", u"lblHeader(1)", u"lblHeader(2)", u"lblHeader(3)"};

}  // namespace

const PageDescription SetDT_VexaData::Page{PageId::SetDT_VexaData, u"SetDT_VexaData", u"Vexa Data", ControlKind::Set,
                                           SetFields};

const PageDescription ShowDT_VexaData::Page{PageId::ShowDT_VexaData, u"ShowDT_VexaData", u"Vexa Data",
                                            ControlKind::Show, ShowFields};

SetDT_VexaData::SetDT_VexaData(const PageWorld& world)
    : DataElementPage(Page, {SetSlots, residSetSlotLabels, false}, world) {}

ShowDT_VexaData::ShowDT_VexaData(const PageWorld& world)
    : DataElementPage(Page, {ShowSlots, residShowSlotLabels, true}, world) {}

DataElementPage::DataElementPage(const PageDescription& description, const DataElementTraits& traits,
                                 const PageWorld& world)
    : PropertyPage(description, world), m_traits(traits), m_slots(static_cast<std::size_t>(traits.slotCount)) {}

void DataElementPage::SelectionChanged() {
    m_lShownSlot = PageField::None;
    LoadCaptions();
    std::ranges::fill(m_slots, Slot{});
    const auto first = FirstObject();
    if (first && IsOwn(*first)) ReadSlots(*first);
    PageField& list = Field(u"cboDataObject");
    list.SetEntries(SlotEntries());
    list.SetListIndex(0);
    ShowSlot();
    for (Slot& slot : m_slots) slot.changed = 0;
    SetChanged(false);
}

std::vector<PageEntry> DataElementPage::SlotEntries() const {
    std::vector<PageEntry> entries;
    for (std::int32_t slot = 0; slot < m_traits.slotCount; ++slot) {
        const auto name = static_cast<std::int16_t>(m_traits.firstSlotName + slot);
        entries.push_back({ToText(slot) + u" - " + LoadResString(name), slot});
    }
    return entries;
}

void DataElementPage::ReadSlots(EditedObject& object) {
    for (std::int32_t i = 0; i < m_traits.slotCount; ++i) {
        Slot& slot = At(i);
        Attempt([&] { slot.lmObject = ToString(object.GetAt(u"DataLMObject", i)); });
        Attempt([&] { slot.variableName = ToString(object.GetAt(u"DataVariableName", i)); });
        Attempt([&] { slot.elementPath = ToString(object.GetAt(u"DataElementPath", i)); });
        Attempt([&] { slot.dataType = ToLong(object.GetAt(u"DataType", i)); });
    }
}

void DataElementPage::OnEdited(PageField& field) {
    if (field.Is(u"cboDataObject")) {
        StoreSlot();
        ShowSlot();
    } else {
        MarkSlotChanged(field.Description().bit);
    }
}

void DataElementPage::MarkSlotChanged(std::int32_t bit) {
    if (m_lShownSlot == PageField::None) return;
    Slot& slot = At(m_lShownSlot);
    slot.changed = static_cast<std::uint8_t>(slot.changed | bit);
    SetChanged(true);
}

void DataElementPage::StoreSlot() {
    if (m_lShownSlot == PageField::None) return;
    Slot& slot = At(m_lShownSlot);
    slot.lmObject = Field(u"txtDataLMObject").Text();
    slot.variableName = Field(u"txtDataVariableName").Text();
    slot.elementPath = Field(u"txtDataElementPath").Text();
    // A type that is not in the list becomes the number that the list has for nothing.
    slot.dataType = Field(u"cboDataType").ItemData();
}

void DataElementPage::ShowSlot() {
    const PageField& list = Field(u"cboDataObject");
    m_lShownSlot = list.ListIndex();
    if (m_lShownSlot == PageField::None) return;
    for (const std::u16string_view name : Headings) {
        PageField& heading = Field(name);
        heading.SetText(std::u16string(heading.Description().caption) + u" ( " + ToText(m_lShownSlot) + u" ) :");
    }
    // Without "3 - "; a number of two digits leaves a blank in front.
    Field(u"fraProperties").SetText(list.Entries()[static_cast<std::size_t>(m_lShownSlot)].text.substr(4));
    const Slot& slot = At(m_lShownSlot);
    Field(u"txtDataLMObject").SetText(slot.lmObject);
    Field(u"txtDataVariableName").SetText(slot.variableName);
    Field(u"txtDataElementPath").SetText(slot.elementPath);
    PageField& types = Field(u"cboDataType");
    const auto found = std::ranges::find(types.Entries(), slot.dataType, &PageEntry::data);
    const bool known = found != types.Entries().end();
    types.SetListIndex(known ? static_cast<int>(found - types.Entries().begin()) : PageField::None);
}

void DataElementPage::ApplyChanges() {
    StoreSlot();
    for (const auto& object : OwnObjects()) {
        for (std::int32_t slot = 0; slot < m_traits.slotCount; ++slot) {
            if (!WriteSlot(slot, *object)) return;
            At(slot).changed = 0;
        }
    }
}

bool DataElementPage::WriteSlot(std::int32_t slot, EditedObject& object) {
    // A copy: the control may have the page filled anew meanwhile.
    const Slot record = At(slot);
    const auto isChanged = [&record](std::int32_t bit) { return IsSlotChanged(bit, record); };
    if (isChanged(LMObjectBit)) object.PutAt(u"DataLMObject", slot, ParseDeviceNumber(record.lmObject));
    if (isChanged(VariableNameBit)) {
        if (LacksVariableName(slot, record)) {
            ReportMissingName(slot);
            return false;
        }
        object.PutAt(u"DataVariableName", slot, record.variableName);
    }
    if (isChanged(ElementPathBit)) object.PutAt(u"DataElementPath", slot, record.elementPath);
    if (isChanged(DataTypeBit)) object.PutAt(u"DataType", slot, record.dataType);
    return true;
}

bool DataElementPage::LacksVariableName(std::int32_t slot, const Slot& record) const {
    return m_traits.needsVariableNames && slot != 0 && Trim(record.variableName).empty();
}

void DataElementPage::ReportMissingName(std::int32_t slot) {
    const std::u16string message = LoadResString(residMissingVariableName);
    // There is no such string: that failure leaves the page before the message is shown.
    const std::u16string title = LoadResString(residPageErrorTitle);
    World().view.ShowWarning(message, title);
    SetChanged(true);
    PageField& list = Field(u"cboDataObject");
    list.SetListIndex(slot);
    OnEdited(list);
    World().view.FocusField(Field(u"txtDataVariableName"));
}

}  // namespace kiv
