// Numbers as the decimal texts in which device values travel.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vexa {

std::u16string ToDecimal(std::int64_t value);

/// An optional sign and digits, nothing else; empty where the text is not that or does not fit 32 bits.
std::optional<std::int32_t> FromDecimal(std::u16string_view text) noexcept;

}  // namespace vexa
