// Calendar dates and times of day as value types, in the proleptic Gregorian calendar, without a time zone.
//
// The serial form (ToOleDate, FromOleDate) is the automation date: whole days since 30 December 1899, the time of day
// as the fraction, and for negative values the fraction still counted forwards from midnight.
#pragma once

#include <compare>
#include <cstdint>

namespace kiv {

struct CivilDate {
    int year = 1899;
    int month = 12;  ///< 1..12
    int day = 30;    ///< 1..days of the month
    friend auto operator<=>(const CivilDate&, const CivilDate&) = default;
};

struct TimeOfDay {
    int hour = 0;    ///< 0..23
    int minute = 0;  ///< 0..59
    int second = 0;  ///< 0..59
    friend auto operator<=>(const TimeOfDay&, const TimeOfDay&) = default;
};

/// Default constructed, the zero date: 30 December 1899, midnight.
struct DateTime {
    CivilDate date;
    TimeOfDay time;
    friend auto operator<=>(const DateTime&, const DateTime&) = default;
};

/// month must be 1..12.
int DaysInMonth(int year, int month) noexcept;

bool IsValidDate(const CivilDate& date) noexcept;
bool IsValidTime(const TimeOfDay& time) noexcept;

/// 1 is Sunday, 7 Saturday. The date must be valid.
int DayOfWeek(const CivilDate& date) noexcept;

/// The date must be valid.
double ToOleDate(const DateTime& value) noexcept;

/// Rounds to the nearest second. Throws HostError 6 for NaN and outside the years 100 to 9999.
DateTime FromOleDate(double days);

}  // namespace kiv
