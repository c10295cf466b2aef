// A control's persistent state, described once: which keys there are, their defaults, how each is read and written, in
// order. Giving a new control its defaults, loading and saving all walk the same description.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/Attempt.h"
#include "common/ReadPropXxx.h"
#include "common/ValueConversion.h"
#include "platform/PropertyBag.h"

namespace kiv {

/// Control is whatever has the get and put operations. Entries stand in the order in which they are written.
template <typename Control>
struct PersistedProperty {
    std::u16string key;
    /// Its type decides how the key is read: as Boolean, text or number. Empty: a font, which has no default.
    Value defaultValue;
    Value (*get)(Control&, std::int32_t slot);
    /// Throws for a value that the property does not take; the default is put instead.
    void (*put)(Control&, std::int32_t slot, const Value& value);
    std::int32_t slot = 0;
    /// Entries of a lower turn are all dealt with before those of a higher one; within a turn, in the order of writing.
    int initTurn = 0;
    int readTurn = 0;

    bool HasDefault() const noexcept { return !std::holds_alternative<std::monostate>(defaultValue); }
};

template <typename Control>
class PersistenceDescription {
public:
    using Property = PersistedProperty<Control>;

    explicit PersistenceDescription(std::vector<Property> properties) : m_properties(std::move(properties)) {
        for (const Property& property : m_properties) {
            Insert(m_initOrder, property, &Property::initTurn);
            Insert(m_readOrder, property, &Property::readTurn);
        }
    }
    PersistenceDescription(const PersistenceDescription&) = delete;
    PersistenceDescription& operator=(const PersistenceDescription&) = delete;

    const std::vector<Property>& Properties() const noexcept { return m_properties; }

    /// Entries without a default are left to the caller.
    void PutDefaults(Control& control) const {
        for (const Property* property : m_initOrder) {
            if (property->HasDefault()) Attempt([&] { Put(control, *property, property->defaultValue); });
        }
    }

    /// Whatever the bag holds: a value that is missing or of no use ends as the default, or, for entries without one,
    /// as nothing put at all.
    void Load(Control& control, const PropertyBag& bag) const {
        for (const Property* property : m_readOrder) {
            if (Attempt([&] { LoadOne(control, bag, *property); })) continue;
            Attempt([&] { bag.ReportBadValue(property->key); });
            if (property->HasDefault()) Attempt([&] { Put(control, *property, property->defaultValue); });
        }
    }

    /// Throws what the bag throws.
    void Save(Control& control, PropertyBag& bag) const {
        for (const Property& property : m_properties) {
            const Value value = property.get(control, property.slot);
            bag.Write(property.key, value, property.HasDefault() ? &property.defaultValue : nullptr);
        }
    }

private:
    static void Insert(std::vector<const Property*>& order, const Property& property, int Property::*turn) {
        order.insert(std::ranges::upper_bound(order, property.*turn, {}, turn), &property);
    }

    static void Put(Control& control, const Property& property, const Value& value) {
        property.put(control, property.slot, value);
    }

    static void LoadOne(Control& control, const PropertyBag& bag, const Property& property) {
        if (const auto* flag = std::get_if<bool>(&property.defaultValue)) {
            Put(control, property, ReadPropBool(bag, property.key, *flag));
        } else if (const auto* text = std::get_if<std::u16string>(&property.defaultValue)) {
            Put(control, property, ReadPropString(bag, property.key, *text));
        } else if (property.HasDefault()) {
            Put(control, property, ReadPropLong(bag, property.key, ToLong(property.defaultValue)));
        } else {
            const Value value = bag.Read(property.key, Value{});
            if (!std::holds_alternative<std::monostate>(value)) Put(control, property, value);
        }
    }

    std::vector<Property> m_properties;
    std::vector<const Property*> m_initOrder;
    std::vector<const Property*> m_readOrder;
};

}  // namespace kiv
