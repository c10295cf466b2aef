#include "common/NumericText.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

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

/// Whether what follows the first count digits makes the last of them one more: halves go to the even digit.
bool RoundsUp(std::u16string_view digits, std::size_t count) noexcept {
    const std::u16string_view rest = digits.substr(count);
    if (rest.empty() || rest[0] != u'5') return !rest.empty() && rest[0] > u'5';
    if (rest.find_first_not_of(u'0', 1) != std::u16string_view::npos) return true;
    return count > 0 && (digits[count - 1] - u'0') % 2 != 0;
}

/// Nothing where the result does not fit 32 bits.
std::optional<std::int32_t> Round(const Decimal& number) {
    if (number.digits.empty() || number.point < 0) return 0;
    if (number.point > 10) return std::nullopt;

    const auto wholeDigits = static_cast<std::size_t>(number.point);
    std::int64_t magnitude = 0;
    for (std::size_t i = 0; i < wholeDigits; ++i) {
        magnitude = magnitude * 10 + (i < number.digits.size() ? number.digits[i] - u'0' : 0);
    }
    if (RoundsUp(number.digits, std::min(wholeDigits, number.digits.size()))) ++magnitude;
    const std::int64_t value = number.negative ? -magnitude : magnitude;
    if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(value);
}

/// A whole number of any length.
class LongNumber {
public:
    explicit LongNumber(std::uint64_t value) {
        for (; value != 0; value /= Base) m_parts.push_back(static_cast<std::uint32_t>(value % Base));
    }

    /// base to the power of exponent, which must be below 2^30.
    void MultiplyByPower(std::uint32_t base, int exponent) {
        while (exponent > 0) {
            std::uint32_t factor = 1;
            for (; exponent > 0 && factor < (std::uint32_t{1} << 29); --exponent) factor *= base;
            Multiply(factor);
        }
    }

    /// Empty for 0.
    std::u16string Digits() const {
        std::u16string digits;
        for (std::uint32_t part : m_parts) {
            for (int i = 0; i < DigitsOfPart; ++i, part /= 10)
                digits.push_back(static_cast<char16_t>(u'0' + part % 10));
        }
        while (!digits.empty() && digits.back() == u'0') digits.pop_back();
        std::ranges::reverse(digits);
        return digits;
    }

private:
    static constexpr int DigitsOfPart = 9;
    static constexpr std::uint32_t Base = 1'000'000'000;

    void Multiply(std::uint32_t factor) {
        std::uint64_t carry = 0;
        for (std::uint32_t& part : m_parts) {
            carry += std::uint64_t{part} * factor;
            part = static_cast<std::uint32_t>(carry % Base);
            carry /= Base;
        }
        for (; carry != 0; carry /= Base) m_parts.push_back(static_cast<std::uint32_t>(carry % Base));
    }

    std::vector<std::uint32_t> m_parts;  ///< the lowest digits first
};

/// A finite number to its last digit: there are up to 767 of them.
Decimal ExactDecimal(double value) {
    constexpr int MantissaBits = std::numeric_limits<double>::digits;
    int exponent = 0;
    const double fraction = std::frexp(std::fabs(value), &exponent);
    auto mantissa = static_cast<std::uint64_t>(std::ldexp(fraction, MantissaBits));
    exponent -= MantissaBits;
    for (; exponent < 0 && mantissa != 0 && mantissa % 2 == 0; ++exponent) mantissa /= 2;

    // m / 2^n is m * 5^n / 10^n.
    LongNumber number(mantissa);
    number.MultiplyByPower(exponent < 0 ? 5 : 2, std::abs(exponent));
    Decimal result{std::signbit(value), number.Digits(), 0};
    result.point = static_cast<std::int64_t>(result.digits.size()) + std::min(exponent, 0);
    return result;
}

/// Rounds to count digits and drops the zeros at the end.
void Shorten(Decimal& number, std::size_t count) {
    if (number.digits.size() > count) {
        const bool up = RoundsUp(number.digits, count);
        number.digits.resize(count);
        if (up) {
            while (!number.digits.empty() && number.digits.back() == u'9') number.digits.pop_back();
            if (number.digits.empty()) {
                number.digits = u"0";
                ++number.point;
            }
            ++number.digits.back();
        }
    }
    while (!number.digits.empty() && number.digits.back() == u'0') number.digits.pop_back();
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

std::u16string ToText(double value) {
    constexpr std::size_t MostDigits = 15;
    Decimal number = ExactDecimal(value);
    Shorten(number, MostDigits);
    std::u16string& text = number.digits;
    if (text.empty()) {
        text = u"0";
    } else if (number.point < -3 || number.point > static_cast<std::int64_t>(MostDigits)) {
        const std::int64_t exponent = number.point - 1;
        if (text.size() > 1) text.insert(1, 1, u'.');
        text += exponent < 0 ? u"e-" : u"e+";
        if (std::abs(exponent) < 10) text += u'0';
        text += ToText(static_cast<std::int32_t>(std::abs(exponent)));
    } else if (number.point <= 0) {
        text.insert(0, static_cast<std::size_t>(2 - number.point), u'0');
        text[1] = u'.';
    } else if (const auto whole = static_cast<std::size_t>(number.point); whole < text.size()) {
        text.insert(whole, 1, u'.');
    } else {
        text.resize(whole, u'0');
    }
    if (number.negative) text.insert(0, 1, u'-');
    return std::move(text);
}

std::u16string_view Trim(std::u16string_view text) noexcept {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

}  // namespace kiv
