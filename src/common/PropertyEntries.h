// Entries of a persistence description, made from the get and set operations of a control's properties.
//
// Control is the class that has these operations; those of the data element slots are reached through its Slot(index).
#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "common/DataBindings.h"
#include "common/Persistence.h"
#include "common/ValueConversion.h"
#include "platform/Color.h"
#include "platform/HostError.h"

namespace kiv {

template <typename Control>
class PropertyEntries {
public:
    using Property = PersistedProperty<Control>;

    /// A signed 32-bit number. The default may be of another width; it is compared by amount.
    template <auto Get, auto Set>
    static Property Long(std::u16string key, Value defaultValue) {
        return {std::move(key), std::move(defaultValue),
                [](Control& c, std::int32_t) { return Value{std::int32_t{(c.*Get)()}}; },
                [](Control& c, std::int32_t, const Value& v) { (c.*Set)(ToLong(v)); }};
    }

    template <auto Get, auto Set>
    static Property Short(std::u16string key, std::int16_t defaultValue) {
        return {std::move(key), defaultValue, [](Control& c, std::int32_t) { return Value{(c.*Get)()}; },
                [](Control& c, std::int32_t, const Value& v) { (c.*Set)(ToShort(v)); }};
    }

    template <auto Get, auto Set>
    static Property Bool(std::u16string key, bool defaultValue) {
        return {std::move(key), defaultValue, [](Control& c, std::int32_t) { return Value{(c.*Get)()}; },
                [](Control& c, std::int32_t, const Value& v) { (c.*Set)(ToBool(v)); }};
    }

    template <auto Get, auto Set>
    static Property Text(std::u16string key, std::u16string defaultValue) {
        return {std::move(key), std::move(defaultValue), [](Control& c, std::int32_t) { return Value{(c.*Get)()}; },
                [](Control& c, std::int32_t, const Value& v) { (c.*Set)(ToString(v)); }};
    }

    template <auto Get, auto Set>
    static Property Color(std::u16string key, OleColor defaultValue) {
        return {std::move(key), ColorValue(defaultValue),
                [](Control& c, std::int32_t) { return ColorValue((c.*Get)()); },
                [](Control& c, std::int32_t, const Value& v) { (c.*Set)(ToColor(v)); }};
    }

    static Property Font() {
        return {u"Font", Value{}, [](Control& c, std::int32_t) { return Value{c.GetFont()}; },
                [](Control& c, std::int32_t, const Value& v) {
                    const auto* font = std::get_if<FontPtr>(&v);
                    if (!font) throw HostError(ErrorNumber::TypeMismatch);
                    // A control that never had a font of its own was saved without one.
                    if (*font) c.SetFont(*font);
                }};
    }

    /// The four entries of a data element slot.
    static void AddSlot(std::vector<Property>& all, std::int32_t slot, std::int32_t defaultDataType) {
        all.push_back({ComposeKey(BindingKey::LMObject, slot), std::int32_t{0},
                       [](Control& c, std::int32_t i) { return Value{c.Slot(i).LMObject(i)}; },
                       [](Control& c, std::int32_t i, const Value& v) { c.Slot(i).SetLMObject(i, ToLong(v)); }, slot});
        all.push_back({ComposeKey(BindingKey::DataType, slot), defaultDataType,
                       [](Control& c, std::int32_t i) { return Value{c.Slot(i).DataType(i)}; }, PutDataType, slot});
        all.push_back({ComposeKey(BindingKey::VariableName, slot), std::u16string(),
                       [](Control& c, std::int32_t i) { return Value{c.Slot(i).VariableName(i)}; },
                       [](Control& c, std::int32_t i, const Value& v) { c.Slot(i).SetVariableName(i, ToString(v)); },
                       slot});
        all.push_back({ComposeKey(BindingKey::ElementPath, slot), std::u16string(),
                       [](Control& c, std::int32_t i) { return Value{c.Slot(i).ElementPath(i)}; },
                       [](Control& c, std::int32_t i, const Value& v) { c.Slot(i).SetElementPath(i, ToString(v)); },
                       slot});
    }

    static Property InTurn(Property property, int initTurn, int readTurn) {
        property.initTurn = initTurn;
        property.readTurn = readTurn;
        return property;
    }

    static Value ColorValue(OleColor color) { return Value{static_cast<std::int32_t>(color)}; }
    static OleColor ToColor(const Value& value) { return static_cast<OleColor>(ToLong(value)); }

private:
    static std::int16_t ToShort(const Value& value) {
        const std::int32_t number = ToLong(value);
        if (number < std::numeric_limits<std::int16_t>::min() || number > std::numeric_limits<std::int16_t>::max()) {
            throw HostError(ErrorNumber::Overflow);
        }
        return static_cast<std::int16_t>(number);
    }

    /// Whatever a control does with a bad type otherwise: a load must end with a type that there is.
    static void PutDataType(Control& control, std::int32_t slot, const Value& value) {
        const std::int32_t type = ToLong(value);
        if (type < DataBindings::MinDataType || type > DataBindings::MaxDataType) {
            throw HostError(ErrorNumber::InvalidPropertyValue);
        }
        control.Slot(slot).SetDataType(slot, type);
    }
};

}  // namespace kiv
