#include "common/DataBindings.h"

#include "common/Attempt.h"
#include "common/NumericText.h"
#include "platform/HostError.h"

namespace kiv {

std::u16string ComposeKey(std::u16string_view name, std::int32_t slot) {
    return std::u16string(name) + ToText(slot);
}

DataBindings::DataBindings(std::int32_t slotCount, FrameworkLink& framework, BindingRules& rules)
    : m_records(static_cast<std::size_t>(slotCount)), m_framework(framework), m_rules(rules) {}

DataElementBinding& DataBindings::Record(std::int32_t slot) {
    if (slot < 0 || static_cast<std::size_t>(slot) >= m_records.size()) {
        throw HostError(ErrorNumber::SubscriptOutOfRange);
    }
    return m_records[static_cast<std::size_t>(slot)];
}

std::int32_t DataBindings::LMObject(std::int32_t slot) {
    Pull(slot);
    return Record(slot).lmObject;
}

void DataBindings::SetLMObject(std::int32_t slot, std::int32_t value) {
    Let(slot, &DataElementBinding::lmObject, BindingKey::LMObject, value);
}

std::int32_t DataBindings::DataType(std::int32_t slot) {
    Pull(slot);
    return Record(slot).dataType;
}

void DataBindings::SetDataType(std::int32_t slot, std::int32_t value) {
    Let(slot, &DataElementBinding::dataType, BindingKey::DataType, value);
}

std::u16string DataBindings::VariableName(std::int32_t slot) {
    Pull(slot);
    return Record(slot).variableName;
}

void DataBindings::SetVariableName(std::int32_t slot, std::u16string_view value) {
    Let(slot, &DataElementBinding::variableName, BindingKey::VariableName, value);
}

std::u16string DataBindings::ElementPath(std::int32_t slot) {
    Pull(slot);
    return Record(slot).elementPath;
}

void DataBindings::SetElementPath(std::int32_t slot, std::u16string_view value) {
    Let(slot, &DataElementBinding::elementPath, BindingKey::ElementPath, value);
}

template <typename Field, typename NewValue>
void DataBindings::Let(std::int32_t slot, Field DataElementBinding::*field, std::u16string_view keyName,
                       const NewValue& value) {
    Pull(slot);
    if (Record(slot).*field == value) return;
    if constexpr (std::is_same_v<Field, std::int32_t>) {
        if (field == &DataElementBinding::dataType && (value < MinDataType || value > MaxDataType)) {
            m_rules.OnBadDataType();
            return;
        }
    }
    Record(slot).*field = Field(value);
    Push(slot);
    m_rules.OnBindingChanged(ComposeKey(keyName, slot));
}

DataElementPtr DataBindings::ElementOfActiveSlot(std::int32_t slot) {
    DataElementPtr element;
    // Looked at before it is asked: a screen without the framework would otherwise pay for one exception per property.
    if (!m_framework.MayAnswer() || !m_rules.IsUserMode() || !m_rules.IsActive(slot)) return element;
    Attempt([&] {
        if (m_framework.Answers()) element = m_framework.Element(m_rules.ElementIndexForSlot(slot));
    });
    return element;
}

void DataBindings::Pull(std::int32_t slot) {
    DataElementBinding& record = Record(slot);
    const DataElementPtr element = ElementOfActiveSlot(slot);
    if (!element) return;
    Attempt([&] { record = m_framework.Read(element); });
}

void DataBindings::Push(std::int32_t slot) {
    // A copy: the framework may call back and change the record while it still reads this one.
    const DataElementBinding record = Record(slot);
    const DataElementPtr element = ElementOfActiveSlot(slot);
    if (!element) return;
    Attempt([&] { m_framework.Write(element, record); });
}

}  // namespace kiv
