#include "simulator/DecimalText.h"

#include <limits>

namespace vexa {

std::u16string ToDecimal(std::int64_t value) {
    const std::string digits = std::to_string(value);
    return {digits.begin(), digits.end()};
}

std::optional<std::int32_t> FromDecimal(std::u16string_view text) noexcept {
    const bool negative = !text.empty() && text.front() == u'-';
    if (negative || (!text.empty() && text.front() == u'+')) text.remove_prefix(1);
    if (text.empty()) return std::nullopt;
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    std::int64_t value = 0;
    for (const char16_t digit : text) {
        if (digit < u'0' || digit > u'9') return std::nullopt;
        value = value * 10 + (digit - u'0');
        if (value > most + (negative ? 1 : 0)) return std::nullopt;
    }
    return static_cast<std::int32_t>(negative ? -value : value);
}

}  // namespace vexa
