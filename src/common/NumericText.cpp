#include "common/NumericText.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "platform/HostError.h"

namespace kiv {

namespace {

bool IsDigit(char16_t c) noexcept {
    return c >= u'0' && c <= u'9';
}
bool IsBlank(char16_t c) noexcept {
    return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n';
}

/// Digits that fit 32 bits whatever they are.
constexpr std::size_t MostPlainDigits = 9;

/// A decimal number taken apart: digits without leading zeros, and how many of them stand before the point (which may
/// lie before the first digit or behind the last one).
struct Decimal {
    bool negative = false;
    std::u16string digits;
    std::int64_t point = 0;
};

/// Exponents and lengths are kept below this, so that sums of them cannot overflow; far beyond any 32-bit number.
constexpr std::int64_t FarAway = std::int64_t{1} << 40;

class DecimalReader {
public:
    explicit DecimalReader(std::u16string_view text) : m_text(text) {}

    /// Nothing where no digit is found. Pos() is then of no meaning.
    std::optional<Decimal> Read() {
        while (m_pos < m_text.size() && IsBlank(m_text[m_pos])) ++m_pos;
        Decimal number;
        number.negative = Peek() == u'-';
        if (Peek() == u'-' || Peek() == u'+') ++m_pos;
        ReadDigits(number, true);
        if (Peek() == u'.') {
            ++m_pos;
            ReadDigits(number, false);
        }
        if (!m_bAnyDigit) return std::nullopt;
        number.point += ReadExponent();
        return number;
    }

    std::size_t Pos() const noexcept { return m_pos; }

private:
    char16_t Peek() const noexcept { return m_pos < m_text.size() ? m_text[m_pos] : u'\0'; }

    void ReadDigits(Decimal& number, bool beforePoint) {
        for (; IsDigit(Peek()); ++m_pos) {
            m_bAnyDigit = true;
            if (number.digits.empty() && Peek() == u'0') {
                if (!beforePoint) --number.point;
                continue;
            }
            number.digits.push_back(Peek());
            if (beforePoint) ++number.point;
        }
    }

    /// An "e" without digits behind it is no exponent.
    std::int64_t ReadExponent() {
        if (Peek() != u'e' && Peek() != u'E') return 0;
        std::size_t pos = m_pos + 1;
        bool negative = false;
        if (pos < m_text.size() && (m_text[pos] == u'-' || m_text[pos] == u'+')) negative = m_text[pos++] == u'-';
        if (pos >= m_text.size() || !IsDigit(m_text[pos])) return 0;
        std::int64_t exponent = 0;
        for (; pos < m_text.size() && IsDigit(m_text[pos]); ++pos) {
            exponent = std::min(exponent * 10 + (m_text[pos] - u'0'), FarAway);
        }
        m_pos = pos;
        return negative ? -exponent : exponent;
    }

    std::u16string_view m_text;
    std::size_t m_pos = 0;
    bool m_bAnyDigit = false;
};

/// Nothing where the result does not fit 32 bits.
std::optional<std::int32_t> Round(const Decimal& number) {
    if (number.digits.empty() || number.point < 0) return 0;
    if (number.point > 10) return std::nullopt;

    const auto wholeDigits = static_cast<std::size_t>(number.point);
    std::int64_t magnitude = 0;
    for (std::size_t i = 0; i < wholeDigits; ++i) {
        magnitude = magnitude * 10 + (i < number.digits.size() ? number.digits[i] - u'0' : 0);
    }
    if (wholeDigits < number.digits.size()) {
        const std::u16string_view rest = std::u16string_view(number.digits).substr(wholeDigits);
        const bool beyondHalf =
            rest[0] > u'5' || (rest[0] == u'5' && rest.find_first_not_of(u'0', 1) != std::u16string_view::npos);
        const bool half = rest[0] == u'5' && !beyondHalf;
        if (beyondHalf || (half && magnitude % 2 != 0)) ++magnitude;
    }
    const std::int64_t value = number.negative ? -magnitude : magnitude;
    if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(value);
}

}  // namespace

std::int32_t RoundToInt32(double value) {
    constexpr std::int32_t Min = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t Max = std::numeric_limits<std::int32_t>::max();
    if (value >= Min && value <= Max) {
        const auto whole = static_cast<std::int32_t>(value);
        if (whole == value) return whole;  // remainder() takes its time
    }
    // remainder() rounds its quotient halves to even, whatever rounding mode the process is in.
    const double rounded = value - std::remainder(value, 1.0);
    if (!(rounded >= Min && rounded <= Max)) {
        throw HostError(ErrorNumber::Overflow);
    }
    return static_cast<std::int32_t>(rounded);
}

std::int32_t ParseDeviceNumber(std::u16string_view text) {
    // What a device sends, nearly always: a few digits.
    if (!text.empty() && text.size() <= MostPlainDigits && std::ranges::all_of(text, IsDigit)) {
        std::int32_t value = 0;
        for (const char16_t digit : text) value = 10 * value + (digit - u'0');
        return value;
    }
    const std::optional<Decimal> number = DecimalReader(text).Read();
    if (!number) return 0;
    const std::optional<std::int32_t> value = Round(*number);
    if (!value) throw HostError(ErrorNumber::Overflow);
    return *value;
}

std::optional<std::int32_t> ParseWholeText(std::u16string_view text) {
    const std::u16string_view trimmed = Trim(text);
    DecimalReader reader(trimmed);
    const std::optional<Decimal> number = reader.Read();
    if (!number || reader.Pos() != trimmed.size()) return std::nullopt;
    return Round(*number);
}

std::u16string ToText(std::int32_t value) {
    const std::string text = std::to_string(value);
    return {text.begin(), text.end()};
}

std::u16string_view Trim(std::u16string_view text) noexcept {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

}  // namespace kiv
