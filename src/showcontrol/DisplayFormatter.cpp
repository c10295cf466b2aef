#include "showcontrol/DisplayFormatter.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

namespace kiv {

namespace {

constexpr std::int32_t YearForOutOfRange = 1980;
constexpr std::int32_t MaxYear = 2999;

// Room for the digits and delimiters of the longest date or time, what follows the weekday, and the blanks of a sunken
// border.
constexpr std::size_t FixedRoom = 32;

char16_t* WriteTwoDigits(char16_t* at, std::int32_t value) noexcept {
    at[0] = static_cast<char16_t>(u'0' + value / 10);
    at[1] = static_cast<char16_t>(u'0' + value % 10);
    return at + 2;
}

char16_t* WriteOneOrTwoDigits(char16_t* at, std::int32_t value, bool leadingZero) noexcept {
    if (leadingZero || value >= 10) return WriteTwoDigits(at, value);
    *at = static_cast<char16_t>(u'0' + value);
    return at + 1;
}

char16_t* WriteYear(char16_t* at, std::int32_t year) noexcept {
    if (year >= 1000) return WriteTwoDigits(WriteTwoDigits(at, year / 100), year % 100);
    if (year >= 100) {
        *at = static_cast<char16_t>(u'0' + year / 100);
        return WriteTwoDigits(at + 1, year % 100);
    }
    return WriteTwoDigits(at, year);
}

char16_t* WriteText(char16_t* at, std::u16string_view text) noexcept {
    return std::copy(text.begin(), text.end(), at);
}

/// Years of two digits: 0..29 is 2000..2029, 30..99 is 1930..1999.
std::int32_t FullYear(std::int32_t year) noexcept {
    if (year >= 100) return year;
    return year < 30 ? year + 2000 : year + 1900;
}

/// 0 Sunday .. 6 Saturday. A day past the end of the month runs on into the next one.
std::size_t WeekdayOf(std::int32_t year, std::int32_t month, std::int32_t day) noexcept {
    static constexpr std::array<std::int32_t, 12> MonthOffsets{0, 3, 2, 5, 0, 3, 5, 1, 4, 6, 2, 4};
    if (month < 3) --year;
    return static_cast<std::size_t>(
        (year + year / 4 - year / 100 + year / 400 + MonthOffsets[static_cast<std::size_t>(month - 1)] + day) % 7);
}

std::size_t Longest(std::span<const std::u16string> texts) noexcept {
    std::size_t longest = 0;
    for (const std::u16string& text : texts) longest = std::max(longest, text.size());
    return longest;
}

}  // namespace

void ClampDateTime(DateTimeNumbers& numbers, bool showSeconds) noexcept {
    numbers.hour = std::clamp(numbers.hour, 0, 23);
    numbers.minute = std::clamp(numbers.minute, 0, 59);
    if (showSeconds) numbers.second = std::clamp(numbers.second, 0, 59);
    numbers.month = std::clamp(numbers.month, 1, 12);
    numbers.day = std::clamp(numbers.day, 1, 31);
    if (numbers.year < 0 || numbers.year > MaxYear) numbers.year = YearForOutOfRange;
}

void DisplayFormatter::Configure(const DisplaySettings& settings, const RegionalNames& names) {
    const auto cased = [&](const std::u16string& text) { return settings.upperCase ? names.ToUpper(text) : text; };
    m_bDayFirst = settings.dayFirst;
    m_bTwelveHourClock = settings.twelveHourClock;
    m_bShowCentury = settings.showCentury;
    m_bShowLeadingZeros = settings.showLeadingZeros;
    m_bShowLongDay = settings.showLongDay;
    m_bShowSeconds = settings.showSeconds;
    m_dateDelimiter = cased(std::u16string(1, settings.dateDelimiter)).front();
    m_timeDelimiter = cased(std::u16string(1, settings.timeDelimiter)).front();
    m_pNames = names.Table(settings.upperCase);
    const std::u16string_view amPm = settings.amPmFormat;
    m_morning = cased(u' ' + std::u16string(amPm.substr(0, amPm.find(u','))));
    m_afternoon = cased(u' ' + std::u16string(amPm.substr(amPm.rfind(u',') + 1)));
    m_buffer.resize(Longest(m_pNames->weekdays) + Longest(m_pNames->months) +
                    std::max(m_morning.size(), m_afternoon.size()) + FixedRoom);
}

std::u16string_view DisplayFormatter::FormatDateText(const DateTimeNumbers& numbers) noexcept {
    return Written(WriteDate(m_buffer.data() + 1, numbers));
}

std::u16string_view DisplayFormatter::FormatTimeText(const DateTimeNumbers& numbers) noexcept {
    return Written(WriteTime(m_buffer.data() + 1, numbers));
}

std::u16string_view DisplayFormatter::FormatCaption(std::int32_t mode, bool sunken,
                                                    const DateTimeNumbers& numbers) noexcept {
    static constexpr std::u16string_view UnknownMode = u"?????";
    char16_t* end = m_buffer.data() + 1;
    switch (mode) {
        case sdtShowDateOnly:
            end = WriteDate(end, numbers);
            break;
        case sdtShowTimeOnly:
            end = WriteTime(end, numbers);
            break;
        default:
            end = WriteText(end, UnknownMode);
            break;
    }
    if (!sunken) return Written(end);
    m_buffer.front() = u' ';
    *end++ = u' ';
    return {m_buffer.data(), static_cast<std::size_t>(end - m_buffer.data())};
}

char16_t* DisplayFormatter::WriteWeekday(char16_t* at, const DateTimeNumbers& numbers) const noexcept {
    at = WriteText(at, m_pNames->weekdays[WeekdayOf(FullYear(numbers.year), numbers.month, numbers.day)]);
    *at++ = u',';
    *at++ = u' ';
    return at;
}

char16_t* DisplayFormatter::WriteDate(char16_t* at, const DateTimeNumbers& numbers) const noexcept {
    if (m_bShowLongDay) at = WriteWeekday(at, numbers);
    const std::u16string& month = m_pNames->months[static_cast<std::size_t>(numbers.month - 1)];
    if (m_bDayFirst) {
        at = WriteOneOrTwoDigits(at, numbers.day, m_bShowLeadingZeros);
        *at++ = m_dateDelimiter;
        at = WriteText(at, month);
    } else {
        at = WriteText(at, month);
        *at++ = m_dateDelimiter;
        at = WriteOneOrTwoDigits(at, numbers.day, m_bShowLeadingZeros);
    }
    *at++ = m_dateDelimiter;
    if (!m_bShowCentury) return WriteTwoDigits(at, numbers.year % 100);
    // With the century, every two-digit year counts as one of the 2000s; only the weekday knows the 1900s.
    return WriteYear(at, numbers.year < 100 ? numbers.year + 2000 : numbers.year);
}

char16_t* DisplayFormatter::WriteTime(char16_t* at, const DateTimeNumbers& numbers) const noexcept {
    if (m_bShowLongDay) at = WriteWeekday(at, numbers);
    std::int32_t hour = numbers.hour;
    const bool morning = hour < 12;
    if (m_bTwelveHourClock) {
        if (!morning) hour -= 12;
        if (hour == 0) hour = 12;
    }
    at = WriteOneOrTwoDigits(at, hour, m_bShowLeadingZeros);
    *at++ = m_timeDelimiter;
    at = WriteTwoDigits(at, numbers.minute);
    if (m_bShowSeconds) {
        *at++ = m_timeDelimiter;
        at = WriteTwoDigits(at, numbers.second);
    }
    if (!m_bTwelveHourClock) return at;
    return WriteText(at, morning ? m_morning : m_afternoon);
}

std::u16string_view DisplayFormatter::Written(const char16_t* end) const noexcept {
    return {m_buffer.data() + 1, static_cast<std::size_t>(end - m_buffer.data()) - 1};
}

}  // namespace kiv
