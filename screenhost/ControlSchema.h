// What is known of the device's own controls without making one: the keys that they load, which values they take, and
// what their slots are for. The screen checker judges by it.
//
// It repeats what the controls themselves decide, because a container knows them only through their type library, which
// knows neither persisted keys nor ranges. tests/native/screen_schema_test.cpp holds it against the controls.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "screenhost/ScreenValue.h"

namespace screenhost {

enum class ValueKind { Number, Measure, Boolean, Text, Font };  // a measure may have a fraction

struct KeyRule {
    std::string_view key;
    ValueKind kind;
    /// Whether a value of the right kind is taken as it is. Null: every one is.
    bool (*fits)(const ScreenValue& value);
    std::string_view wanted;    ///< what fits, in words
    std::string_view property;  ///< the property's name where the key is called otherwise
};

enum class SlotPart { Format, DaylightSaving, Hour, Minute, Second, Month, Day, Year };
enum class SlotUse { Read, Write, Both };

struct SlotRule {
    SlotPart part;
    SlotUse use;
    std::int32_t dataType;   ///< the default
    std::string_view title;  ///< what the slot is for
};

/// The settings on which it depends which slots are used; the control's defaults where a section says nothing.
struct SlotSettings {
    std::int32_t mode;
    bool showSeconds;
    bool showDst;
    bool showLongDay;
};

struct ControlSchema {
    std::string_view progId;
    std::span<const KeyRule> keys;
    std::span<const SlotRule> slots;
    SlotSettings defaults;
    /// Why nothing that is bound to the slot counts; empty where it does.
    std::string_view (*unused)(const SlotSettings& settings, const SlotRule& slot);

    const KeyRule* FindKey(std::string_view key) const noexcept;
};

/// A control's schema by its ProgID, with or without a version; null for a stranger.
const ControlSchema* FindSchema(std::string_view progId) noexcept;
/// Whether the ProgID claims to be of the server whose controls are known here.
bool IsOfKnownServer(std::string_view progId) noexcept;

/// The keys that stand once for each slot, without the slot's number.
std::span<const KeyRule> SlotKeys() noexcept;
/// The keys of every control that are the container's own, and those before the first control.
std::span<const KeyRule> PlaceKeys() noexcept;
std::span<const KeyRule> ScreenKeys() noexcept;

struct SlotKey {
    const KeyRule* rule;
    std::string_view number;  ///< as written
};
/// Takes "DataType13" apart; nothing where the key is not one of a slot.
std::optional<SlotKey> SplitSlotKey(std::string_view key) noexcept;

}  // namespace screenhost
