// The text of a show control: a date or a time of day, built from six numbers by the control's own rules.
//
// Whatever can be settled before a number arrives (names in the right case, order, delimiters) is settled in Configure;
// building a text afterwards allocates nothing. A text is valid until the formatter's next call.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/RegionalNames.h"

namespace kiv {

enum ModeShowConstants : std::int32_t { sdtShowDateOnly = 1, sdtShowTimeOnly = 2 };

/// The numbers as the device sent them; ClampDateTime brings them into range.
struct DateTimeNumbers {
    std::int32_t hour = 0;
    std::int32_t minute = 0;
    std::int32_t second = 0;
    std::int32_t month = 0;
    std::int32_t day = 0;   ///< 1..31 once clamped, whatever the month
    std::int32_t year = 0;  ///< 0..2999 once clamped, two or four digits
    friend bool operator==(const DateTimeNumbers&, const DateTimeNumbers&) = default;
};

/// Writes the corrected values back. A year out of range becomes 1980, all else the nearer bound; the second is left
/// alone unless it is shown.
void ClampDateTime(DateTimeNumbers& numbers, bool showSeconds) noexcept;

/// The properties that the text depends on.
struct DisplaySettings {
    bool dayFirst = false;
    bool twelveHourClock = true;
    char16_t dateDelimiter = u'-';
    char16_t timeDelimiter = u':';
    std::u16string_view amPmFormat = u"AM,PM";  ///< fields separated by commas; the first and the last count
    bool showCentury = true;
    bool showLeadingZeros = true;
    bool showLongDay = false;
    bool showSeconds = false;
    bool upperCase = true;
};

class DisplayFormatter {
public:
    /// Must be called before a text is asked for, and again after a setting or the regional settings changed.
    void Configure(const DisplaySettings& settings, const RegionalNames& names);

    /// The numbers must have been clamped.
    std::u16string_view FormatDateText(const DateTimeNumbers& numbers) noexcept;
    std::u16string_view FormatTimeText(const DateTimeNumbers& numbers) noexcept;

    /// The whole caption: the text that the mode asks for, "?????" for an unknown mode, with a blank on either side
    /// inside a sunken border.
    std::u16string_view FormatCaption(std::int32_t mode, bool sunken, const DateTimeNumbers& numbers) noexcept;

private:
    char16_t* WriteWeekday(char16_t* at, const DateTimeNumbers& numbers) const noexcept;
    char16_t* WriteDate(char16_t* at, const DateTimeNumbers& numbers) const noexcept;
    char16_t* WriteTime(char16_t* at, const DateTimeNumbers& numbers) const noexcept;
    std::u16string_view Written(const char16_t* end) const noexcept;

    bool m_bDayFirst = false;
    bool m_bTwelveHourClock = false;
    bool m_bShowCentury = false;
    bool m_bShowLeadingZeros = false;
    bool m_bShowLongDay = false;
    bool m_bShowSeconds = false;
    char16_t m_dateDelimiter = u'-';
    char16_t m_timeDelimiter = u':';
    std::shared_ptr<const NameTable> m_pNames;
    std::u16string m_morning;  ///< with the blank before it
    std::u16string m_afternoon;
    std::u16string m_buffer;  ///< one unit of room before the text, for the blank of a sunken border
};

}  // namespace kiv
