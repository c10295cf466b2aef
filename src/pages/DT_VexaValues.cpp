#include "pages/DT_VexaValues.h"

#include <algorithm>

#include "common/Attempt.h"
#include "common/KivDateTimeResID.h"
#include "common/NumericText.h"
#include "common/ValueConversion.h"

namespace kiv {

namespace {

using enum FieldKind;

constexpr FieldDescription PageFields[] = {
    {.name = u"lblHelp", .bounds = {7, 7, 266, 36}, .captionId = residVexaValuesHelp},
    {.name = u"lblValue(0)", .bounds = {7, 51, 76, 8}, .caption = u"Data&12HrValue:"},
    {.name = u"txtValue(0)", .kind = NumericBox, .bounds = {86, 49, 60, 14}, .bit = 1, .property = u"Data12HrValue"},
    {.name = u"lblValue(1)", .bounds = {7, 71, 76, 8}, .caption = u"Data&24HrValue:"},
    {.name = u"txtValue(1)", .kind = NumericBox, .bounds = {86, 69, 60, 14}, .bit = 2, .property = u"Data24HrValue"},
    {.name = u"lblValue(2)", .bounds = {7, 91, 76, 8}, .caption = u"Data&DMYValue:"},
    {.name = u"txtValue(2)", .kind = NumericBox, .bounds = {86, 89, 60, 14}, .bit = 16, .property = u"DataDMYValue"},
    {.name = u"lblValue(3)", .bounds = {7, 111, 76, 8}, .caption = u"Data&MDYValue:"},
    {.name = u"txtValue(3)", .kind = NumericBox, .bounds = {86, 109, 60, 14}, .bit = 32, .property = u"DataMDYValue"},
};

/// The fields that the set control has no properties for, with their labels.
constexpr std::u16string_view DateFields[] = {u"lblValue(2)", u"txtValue(2)", u"lblValue(3)", u"txtValue(3)"};

}  // namespace

const PageDescription DT_VexaValues::Page{PageId::DT_VexaValues, u"DT_VexaValues", u"Vexa Values", std::nullopt,
                                          PageFields};

void DT_VexaValues::SelectionChanged() {
    LoadCaptions();
    const bool anySet =
        std::ranges::any_of(Objects(), [](const auto& object) { return object->Kind() == ControlKind::Set; });
    // The other way too: the same page may be shown for another selection.
    for (const std::u16string_view name : DateFields) Field(name).SetEnabled(!anySet);
    if (const auto first = FirstObject()) {
        for (PageField& field : Fields()) {
            if (field.IsTextBox() && field.IsEnabled())
                Attempt([&] { field.SetText(ToString(first->Get(field.Description().property))); });
        }
    }
    ClearMask();
    SetChanged(false);
}

void DT_VexaValues::ApplyChanges() {
    for (const auto& object : OwnObjects()) {
        for (const PageField& field : Fields()) {
            if (IsChanged(field.Description().bit))
                Attempt([&] { object->Put(field.Description().property, ParseDeviceNumber(field.Text())); });
        }
    }
    ClearMask();
}

}  // namespace kiv
