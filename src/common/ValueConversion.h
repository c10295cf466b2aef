// Values as a property bag or an event handler hands them over, turned into the type that is wanted. Anything may come:
// what cannot be converted is reported, never guessed.
#pragma once

#include <cstdint>
#include <string>

#include "platform/DateTime.h"
#include "platform/Value.h"

namespace kiv {

// All throw HostError 13 (no such conversion) or 6 (does not fit). Empty converts to 0, False, "" and the zero date.

std::int32_t ToLong(const Value& value);
bool ToBool(const Value& value);
/// Dates are refused: their text would depend on the machine's regional settings.
std::u16string ToString(const Value& value);
DateTime ToDateTime(const Value& value);

/// Whether a bag may leave value out because it is the default: numbers are compared by amount, whatever their width.
bool IsSameValue(const Value& value, const Value& defaultValue);

}  // namespace kiv
