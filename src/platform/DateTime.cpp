#include "platform/DateTime.h"

#include <array>
#include <chrono>
#include <cmath>

#include "platform/HostError.h"

namespace kiv {

namespace {

constexpr std::int64_t SecondsPerDay = 86400;

std::chrono::sys_days DaysOf(const CivilDate& date) noexcept {
    return std::chrono::year{date.year} / date.month / date.day;
}

const std::chrono::sys_days ZeroDay = DaysOf(CivilDate{});

}  // namespace

int DaysInMonth(int year, int month) noexcept {
    static constexpr std::array<int, 12> Days{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = month == 2 && std::chrono::year{year}.is_leap();
    return Days[static_cast<std::size_t>(month - 1)] + (leap ? 1 : 0);
}

bool IsValidDate(const CivilDate& date) noexcept {
    return date.year >= 1 && date.year <= 9999 && date.month >= 1 && date.month <= 12 && date.day >= 1 &&
           date.day <= DaysInMonth(date.year, date.month);
}

bool IsValidTime(const TimeOfDay& time) noexcept {
    return time.hour >= 0 && time.hour <= 23 && time.minute >= 0 && time.minute <= 59 && time.second >= 0 &&
           time.second <= 59;
}

int DayOfWeek(const CivilDate& date) noexcept {
    return static_cast<int>(std::chrono::weekday{DaysOf(date)}.c_encoding()) + 1;
}

double ToOleDate(const DateTime& value) noexcept {
    const auto days = static_cast<double>((DaysOf(value.date) - ZeroDay).count());
    const double seconds = value.time.hour * 3600 + value.time.minute * 60 + value.time.second;
    const double fraction = seconds / static_cast<double>(SecondsPerDay);
    // Before the zero date the fraction still counts forwards from midnight: -1.25 is six in the morning of the 29th.
    return days < 0 ? days - fraction : days + fraction;
}

DateTime FromOleDate(double days) {
    constexpr double FirstDay = -657434;  // 1 January 100
    constexpr double DayAfterLast = 2958466;
    if (!(days > FirstDay - 1 && days < DayAfterLast)) throw HostError(ErrorNumber::Overflow);

    double whole = std::trunc(days);
    auto seconds = std::llround(std::fabs(days - whole) * static_cast<double>(SecondsPerDay));
    if (seconds == SecondsPerDay) {
        seconds = 0;
        whole += 1;
    }
    if (whole >= DayAfterLast) throw HostError(ErrorNumber::Overflow);

    const std::chrono::year_month_day date{ZeroDay + std::chrono::days{static_cast<int>(whole)}};
    const auto second = static_cast<int>(seconds);
    return {{static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
             static_cast<int>(static_cast<unsigned>(date.day()))},
            {second / 3600, second / 60 % 60, second % 60}};
}

}  // namespace kiv
