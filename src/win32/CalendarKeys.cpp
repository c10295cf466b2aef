#include "win32/CalendarKeys.h"

#include <algorithm>
#include <chrono>

#include "platform/Widgets.h"

namespace kiv::win32 {

namespace {

CivilDate AddDays(const CivilDate& date, int days) noexcept {
    const std::chrono::sys_days start = std::chrono::year{date.year} /
                                        std::chrono::month{static_cast<unsigned>(date.month)} /
                                        std::chrono::day{static_cast<unsigned>(date.day)};
    const std::chrono::year_month_day sum{start + std::chrono::days{days}};
    return {static_cast<int>(sum.year()), static_cast<int>(static_cast<unsigned>(sum.month())),
            static_cast<int>(static_cast<unsigned>(sum.day()))};
}

CivilDate AddMonths(const CivilDate& date, int months) noexcept {
    const int index = date.year * 12 + date.month - 1 + months;
    const int year = index / 12;
    const int month = index % 12 + 1;
    return {year, month, std::min(date.day, DaysInMonth(year, month))};
}

std::optional<CivilDate> Moved(const CivilDate& date, WPARAM key, bool control) noexcept {
    constexpr int DaysPerWeek = 7;
    const int page = control ? 12 : 1;
    switch (key) {
        case VK_LEFT:
            return AddDays(date, -1);
        case VK_RIGHT:
            return AddDays(date, 1);
        case VK_UP:
            return AddDays(date, -DaysPerWeek);
        case VK_DOWN:
            return AddDays(date, DaysPerWeek);
        case VK_PRIOR:
            return AddMonths(date, -page);
        case VK_NEXT:
            return AddMonths(date, page);
        case VK_HOME:
            return CivilDate{date.year, date.month, 1};
        case VK_END:
            return CivilDate{date.year, date.month, DaysInMonth(date.year, date.month)};
        default:
            return std::nullopt;
    }
}

}  // namespace

std::optional<CivilDate> DateAfterKey(const CivilDate& date, WPARAM key, bool control) noexcept {
    const std::optional<CivilDate> moved = Moved(date, key, control);
    if (!moved || moved->year < Calendar::MinYear || moved->year > Calendar::MaxYear) return std::nullopt;
    return moved;
}

}  // namespace kiv::win32
