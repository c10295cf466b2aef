// Numbers as the device and a property bag send them in text.
//
// Works in decimal digits throughout: no rounding but the one asked for, and no dependence on the process's locale.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kiv {

/// Rounds to a whole number, halves to even. Throws HostError 6 where the result does not fit 32 bits, NaN included.
std::int32_t RoundToInt32(double value);

/// The leading numeric part of a text: leading blanks, sign, digits, fraction, exponent; the rest is ignored, and a
/// text without such a part is 0. Rounded as above. Throws HostError 6 where the result does not fit 32 bits.
std::int32_t ParseDeviceNumber(std::u16string_view text);

/// The same for a text that must be a number from end to end, blanks aside; nothing where it is none.
std::optional<std::int32_t> ParseWholeText(std::u16string_view text);

/// Decimal, without a leading blank.
std::u16string ToText(std::int32_t value);

/// The 15 leading digits, rounded halves to even, without zeros behind the last: "0.1", "-1234.5", and "1e-05", "1e+15"
/// where the point would lie more than three zeros before the digits or behind all fifteen. The value must be finite.
std::u16string ToText(double value);

/// Without the blanks at both ends.
std::u16string_view Trim(std::u16string_view text) noexcept;

}  // namespace kiv
