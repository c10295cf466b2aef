// The binding records of a control's data element slots, and the four indexed properties over them.
//
// In run mode the framework's copy of a record is the one that counts: it is fetched before a property is read or
// compared, and given back when a property was set. Framework failures are swallowed; the records then stand for
// themselves. At design time they are plain stored values.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/FrameworkLink.h"
#include "platform/Framework.h"

namespace kiv {

/// What differs between the controls that have such slots.
class BindingRules {
public:
    virtual ~BindingRules() = default;
    /// Whether the framework may be used now.
    virtual bool IsUserMode() const = 0;
    /// Whether the slot is bound to its element now.
    virtual bool IsActive(std::int32_t slot) const = 0;
    virtual std::int16_t ElementIndexForSlot(std::int32_t slot) const = 0;
    /// A data type outside 0..3 was put. To return is to ignore it.
    virtual void OnBadDataType() = 0;
    /// key is composed: the persistence name and the slot's number.
    virtual void OnBindingChanged(std::u16string_view key) = 0;
};

namespace BindingKey {
inline constexpr std::u16string_view LMObject = u"DataLMObject";
inline constexpr std::u16string_view DataType = u"DataType";
inline constexpr std::u16string_view VariableName = u"DataVarName";
inline constexpr std::u16string_view ElementPath = u"DataElemPath";
}  // namespace BindingKey

/// "DataElemPath" and 13 make "DataElemPath13".
std::u16string ComposeKey(std::u16string_view name, std::int32_t slot);

class DataBindings {
public:
    static constexpr std::int32_t MinDataType = 0;
    static constexpr std::int32_t MaxDataType = 3;

    DataBindings(std::int32_t slotCount, FrameworkLink& framework, BindingRules& rules);

    // Slots outside the count raise error 9; a control with an error of its own for that checks first.

    std::int32_t LMObject(std::int32_t slot);
    void SetLMObject(std::int32_t slot, std::int32_t value);
    std::int32_t DataType(std::int32_t slot);
    void SetDataType(std::int32_t slot, std::int32_t value);
    std::u16string VariableName(std::int32_t slot);
    void SetVariableName(std::int32_t slot, std::u16string_view value);
    std::u16string ElementPath(std::int32_t slot);
    void SetElementPath(std::int32_t slot, std::u16string_view value);

    /// Fetches the framework's copy of the record, where the slot is active in run mode.
    void Pull(std::int32_t slot);
    /// Gives the record to the framework, under the same conditions.
    void Push(std::int32_t slot);

private:
    DataElementBinding& Record(std::int32_t slot);
    DataElementPtr ElementOfActiveSlot(std::int32_t slot);
    template <typename Field, typename NewValue>
    void Let(std::int32_t slot, Field DataElementBinding::*field, std::u16string_view keyName, const NewValue& value);

    std::vector<DataElementBinding> m_records;
    FrameworkLink& m_framework;
    BindingRules& m_rules;
};

}  // namespace kiv
