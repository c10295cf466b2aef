#include "common/ValueConversion.h"

#include <cmath>
#include <optional>
#include <type_traits>

#include "common/NumericText.h"
#include "platform/HostError.h"

namespace kiv {

namespace {

[[noreturn]] void ThrowTypeMismatch() {
    throw HostError(ErrorNumber::TypeMismatch);
}

template <typename T, typename... Types>
inline constexpr bool IsOneOf = (std::is_same_v<T, Types> || ...);

/// The amount of anything that is a number; nothing for texts, objects and the rest.
std::optional<double> Amount(const Value& value) {
    return std::visit(
        [](const auto& held) -> std::optional<double> {
            using T = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<T, std::monostate>) {
                return 0.0;
            } else if constexpr (std::is_same_v<T, bool>) {
                return held ? -1.0 : 0.0;
            } else if constexpr (IsOneOf<T, std::int16_t, std::int32_t, double>) {
                return static_cast<double>(held);
            } else if constexpr (std::is_same_v<T, OleDate>) {
                return held.days;
            } else {
                return std::nullopt;
            }
        },
        value);
}

bool EqualsIgnoringCase(std::u16string_view text, std::u16string_view lowerCase) noexcept {
    if (text.size() != lowerCase.size()) return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i] >= u'A' && text[i] <= u'Z' ? static_cast<char16_t>(text[i] + 32) : text[i];
        if (c != lowerCase[i]) return false;
    }
    return true;
}

std::u16string DoubleText(double number) {
    if (!std::isfinite(number)) ThrowTypeMismatch();
    return ToText(number);
}

}  // namespace

std::int32_t ToLong(const Value& value) {
    if (const auto* number = std::get_if<std::int32_t>(&value)) return *number;  // nearly always
    if (const auto* text = std::get_if<std::u16string>(&value)) {
        const std::optional<std::int32_t> number = ParseWholeText(*text);
        if (!number) ThrowTypeMismatch();
        return *number;
    }
    const std::optional<double> amount = Amount(value);
    if (!amount) ThrowTypeMismatch();
    return RoundToInt32(*amount);
}

bool ToBool(const Value& value) {
    if (const auto* text = std::get_if<std::u16string>(&value)) {
        const std::u16string_view word = Trim(*text);
        if (EqualsIgnoringCase(word, u"true")) return true;
        if (EqualsIgnoringCase(word, u"false")) return false;
        return ToLong(value) != 0;
    }
    const std::optional<double> amount = Amount(value);
    if (!amount || std::isnan(*amount)) ThrowTypeMismatch();
    return *amount != 0.0;
}

std::u16string ToString(const Value& value) {
    if (const auto* text = std::get_if<std::u16string>(&value)) return *text;
    if (std::holds_alternative<std::monostate>(value)) return {};
    if (const auto* flag = std::get_if<bool>(&value)) return *flag ? u"True" : u"False";
    if (const auto* number = std::get_if<double>(&value)) return DoubleText(*number);
    if (std::holds_alternative<OleDate>(value)) ThrowTypeMismatch();
    return ToText(ToLong(value));
}

DateTime ToDateTime(const Value& value) {
    const std::optional<double> amount = Amount(value);
    if (!amount) ThrowTypeMismatch();
    return FromOleDate(*amount);
}

bool IsSameValue(const Value& value, const Value& defaultValue) {
    const std::optional<double> amount = Amount(value);
    const std::optional<double> defaultAmount = Amount(defaultValue);
    if (amount && defaultAmount) return *amount == *defaultAmount;
    return value == defaultValue;
}

}  // namespace kiv
