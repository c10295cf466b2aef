#include "pages/PatternPage.h"

#include <limits>

#include "common/Attempt.h"
#include "common/NumericText.h"
#include "common/ResourceStrings.h"
#include "common/ValueConversion.h"
#include "platform/HostError.h"

namespace kiv {

std::int16_t ShortOf(std::u16string_view text) {
    const std::int32_t number = ParseDeviceNumber(text);
    using Limits = std::numeric_limits<std::int16_t>;
    if (number < Limits::min() || number > Limits::max()) throw HostError(ErrorNumber::Overflow);
    return static_cast<std::int16_t>(number);
}

void PatternPage::SelectionChanged() {
    Attempt([&] { LoadCaptions(); });
    Attempt([&] { Prepare(); });
    const auto first = FirstObject();
    if (first && IsOwn(*first)) {
        for (PageField& field : Fields()) {
            if (!field.Description().property.empty()) Attempt([&] { Fill(field, *first); });
        }
    }
    ClearMask();
    SetChanged(false);
}

void PatternPage::Fill(PageField& field, EditedObject& object) {
    const FieldDescription& description = field.Description();
    if (description.ofOneControl) {
        const bool alone = Objects().size() == 1;
        field.SetEnabled(alone);
        // The label goes right before its field.
        PageField* label = nullptr;
        for (PageField& other : Fields()) {
            if (&other == &field && label) label->SetEnabled(alone);
            label = &other;
        }
        field.SetText(alone ? ToString(object.Get(description.property)) : u"");
        return;
    }
    if (description.kind == FieldKind::OptionButton && !IsFirstOption(field)) return;
    const Value value = object.Get(description.property);
    switch (description.kind) {
        case FieldKind::TextBox:
        case FieldKind::NumericBox:
            field.SetText(ToString(value));
            break;
        case FieldKind::CheckBox:
            field.SetValue(ToBool(value) ? 1 : 0);
            break;
        case FieldKind::OptionButton:
            FillOptions(field, ToLong(value));
            break;
        case FieldKind::DropDown:
            // The entries count up from the first one's number.
            field.SetListIndex(ToLong(value) - description.entries.front().data);
            break;
        case FieldKind::Label:
        case FieldKind::Frame:
            break;
    }
}

void PatternPage::ApplyChanges() {
    for (const auto& object : OwnObjects()) {
        for (const PageField& field : Fields()) Attempt([&] { Write(field, *object); });
    }
    ClearMask();
}

void PatternPage::Write(const PageField& field, EditedObject& object) {
    const FieldDescription& description = field.Description();
    if (!IsChanged(description.bit)) return;
    switch (description.kind) {
        case FieldKind::TextBox:
            if (description.ofOneControl && Objects().size() != 1) return;
            object.Put(description.property, field.Text());
            break;
        case FieldKind::NumericBox:
            object.Put(description.property, ShortOf(field.Text()));
            break;
        case FieldKind::CheckBox:
            object.Put(description.property, field.Value() == 1);
            break;
        case FieldKind::OptionButton:
            if (IsFirstOption(field)) object.Put(description.property, ChosenValue(field));
            break;
        case FieldKind::DropDown:
            object.Put(description.property, field.ItemData());
            break;
        case FieldKind::Label:
        case FieldKind::Frame:
            break;
    }
}

bool PatternPage::IsFirstOption(const PageField& field) const {
    for (const FieldDescription& other : Description().fields) {
        if (other.kind == FieldKind::OptionButton && other.property == field.Description().property)
            return &other == &field.Description();
    }
    return false;
}

void PatternPage::ChooseValue(const PageField& first, std::int32_t value) {
    for (PageField& field : Fields()) {
        const FieldDescription& description = field.Description();
        if (description.kind == FieldKind::OptionButton && description.property == first.Description().property &&
            description.choice == value)
            ChooseOption(field);
    }
}

std::int32_t PatternPage::ChosenValue(const PageField& first) const {
    for (const PageField& field : Fields()) {
        const FieldDescription& description = field.Description();
        if (description.kind == FieldKind::OptionButton && description.property == first.Description().property &&
            field.Value() == 1)
            return description.choice;
    }
    return ValueOfNoOption();
}

}  // namespace kiv
