// Every day from 1900 to 2100 in every order of arrival, and the PC's clock in many time zones over their changes.
//
// What is true is counted here day by day and second by second, or asked of the system's own zones, not computed by the
// code under test.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

#include "SetControlFixture.h"
#include "ShowControlFixture.h"
#include "tests/Effort.h"

namespace kiv {
namespace {

/// A calendar as one is made by hand: one day after the other.
class DayByDay {
public:
    CivilDate date{1900, 1, 1};
    int weekday = 2;    ///< 1 January 1900 was a Monday
    double serial = 2;  ///< days since 30 December 1899
    bool Ends() const { return date.year > 2100; }
    void Next() {
        const bool leap = (date.year % 4 == 0 && date.year % 100 != 0) || date.year % 400 == 0;
        const std::array<int, 12> lengths{31, leap ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
        weekday = weekday % 7 + 1;
        ++serial;
        if (++date.day <= lengths[static_cast<std::size_t>(date.month - 1)]) return;
        date.day = 1;
        if (++date.month <= 12) return;
        date.month = 1;
        ++date.year;
    }
};

std::u16string Number(int number) {
    const std::string text = std::to_string(number);
    return {text.begin(), text.end()};
}

/// The values of month, day and year by number of the part, and their six orders.
std::array<int, 3> PartsOf(const CivilDate& date) {
    return {date.month, date.day, date.year};
}
constexpr std::array<std::array<int, 3>, 6> Orders{{{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}}};

class DateTruthOfTheSetControl : public SetControlTest {};
class DateTruthOfTheShowControl : public ShowControlTest {};

/// Each day in the long form; otherwise the days on which something goes wrong if it does, and some between.
bool Counts(const CivilDate& date) {
    static const bool all = Effort(1) > 1;
    return all || date.day >= 28 || date.day == 1 || (date.year * 12 + date.month + date.day) % 29 == 0;
}

TEST_F(DateTruthOfTheSetControl, EveryDayArrivesInEveryOrderFromTheOneBefore) {
    Load(BoundBag());
    long mismatches = 0;
    long arrivals = 0;
    for (DayByDay day; !day.Ends(); day.Next()) {
        ASSERT_EQ(ToOleDate({day.date, {}}), day.serial);
        ASSERT_EQ(FromOleDate(day.serial).date, day.date);
        ASSERT_EQ(DayOfWeek(day.date), day.weekday);
        if (!Counts(day.date)) continue;
        const auto parts = PartsOf(day.date);
        for (const auto& order : Orders) {
            for (const int part : order)
                world.framework.Deliver(static_cast<std::int16_t>(5 + part),
                                        Number(parts[static_cast<std::size_t>(part)]));
            world.framework.calls.clear();
            ++arrivals;
            mismatches += control->GetDateTimeInfo().date != day.date;
        }
        ASSERT_EQ(mismatches, 0) << day.date.year << "-" << day.date.month << "-" << day.date.day;
    }
    std::printf("%ld dates arrived\n", arrivals);
    EXPECT_GT(arrivals, 10000);
}

TEST_F(DateTruthOfTheShowControl, EveryDayArrivesInEveryOrderAndShowsWithItsWeekday) {
    static constexpr std::array<const char*, 7> Weekdays{"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                         "Thursday", "Friday", "Saturday"};
    static constexpr std::array<const char*, 12> Months{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                        "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    Load(With(With(BoundBag(), u"ShowLongDay", true), u"ShowLeadZeros", false));
    for (DayByDay day; !day.Ends(); day.Next()) {
        if (!Counts(day.date)) continue;
        const auto parts = PartsOf(day.date);
        const std::string expected = std::string(Weekdays[static_cast<std::size_t>(day.weekday - 1)]) + ", " +
                                     Months[static_cast<std::size_t>(day.date.month - 1)] + "-" +
                                     std::to_string(day.date.day) + "-" + std::to_string(day.date.year);
        for (const auto& order : Orders) {
            for (const int part : order)
                world.framework.Deliver(static_cast<std::int16_t>(4 + part),
                                        Number(parts[static_cast<std::size_t>(part)]));
            Forget();
            ASSERT_EQ(Text(), expected);
        }
    }
}

/// The process's time zone for a while.
class TimeZoneScope {
public:
    explicit TimeZoneScope(const char* zone) {
        if (const char* const before = std::getenv("TZ")) m_before = before;
        setenv("TZ", zone, 1);
        tzset();
    }
    TimeZoneScope(const TimeZoneScope&) = delete;
    TimeZoneScope& operator=(const TimeZoneScope&) = delete;
    ~TimeZoneScope() {
        m_before.empty() ? unsetenv("TZ") : setenv("TZ", m_before.c_str(), 1);
        tzset();
    }

    static DateTime LocalAt(std::time_t moment) {
        std::tm parts{};
        localtime_r(&moment, &parts);
        // A leap second would have no place in the field.
        return {{parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday}, {parts.tm_hour, parts.tm_min, parts.tm_sec}};
    }
    static long OffsetAt(std::time_t moment) {
        std::tm parts{};
        localtime_r(&moment, &parts);
        return parts.tm_gmtoff;
    }

private:
    std::string m_before;
};

struct Zone {
    const char* rule;  ///< as POSIX writes them, so that no data base of zones is needed
    int changes;       ///< in a year
};

constexpr Zone Zones[] = {
    {"UTC0", 0},
    {"<-12>12", 0},
    {"<-11>11", 0},
    {"HST10HDT,M3.2.0,M11.1.0", 2},
    {"AKST9AKDT,M3.2.0,M11.1.0", 2},
    {"PST8PDT,M3.2.0,M11.1.0", 2},
    {"MST7", 0},
    {"CST6CDT,M4.1.0,M10.5.0", 2},
    {"EST5EDT,M3.2.0,M11.1.0", 2},
    {"<-04>4<-03>,M9.1.6/24,M4.1.6/24", 2},
    {"NST3:30NDT,M3.2.0,M11.1.0", 2},
    {"<-03>3", 0},
    {"<-02>2<-01>,M3.5.0/-1,M10.5.0/0", 2},
    {"<-01>1<+00>,M3.5.0/0,M10.5.0/1", 2},
    {"WET0WEST,M3.5.0/1,M10.5.0", 2},
    {"IST-1GMT0,M10.5.0,M3.5.0/1", 2},
    {"CET-1CEST,M3.5.0,M10.5.0/3", 2},
    {"<+00>0<+02>-2,M3.5.0/1,M10.5.0/3", 2},
    {"EET-2EEST,M3.5.0/3,M10.5.0/4", 2},
    {"EET-2EEST,M3.5.0/0,M10.5.0/0", 2},
    {"IST-2IDT,M3.4.4/26,M10.5.0", 2},
    {"<+0330>-3:30", 0},
    {"<+0545>-5:45", 0},
    {"<+0630>-6:30", 0},
    {"AEST-10AEDT,M10.1.0,M4.1.0/3", 2},
    {"<+1030>-10:30<+11>-11,M10.1.0,M4.1.0", 2},
    {"ACST-9:30ACDT,M10.1.0,M4.1.0/3", 2},
    {"NZST-12NZDT,M9.5.0,M4.1.0/3", 2},
    {"<+1245>-12:45<+1345>,M9.5.0/2:45,M4.1.0/3:45", 2},
    {"<+14>-14", 0},
};

TEST_F(DateTruthOfTheSetControl, ThePcsClockIsFollowedInEveryZoneOverItsChanges) {
    static_assert(std::size(Zones) >= 25);
    constexpr std::time_t Year = std::time_t{365} * 86400;
    constexpr std::time_t Start = 1735689600;            // 1 January 2025, 00:00 UTC
    const std::time_t step = Effort(1) > 1 ? 61 : 3607;  // never the same second of the minute for long
    MemoryBag bag = BoundBag();
    bag.Put(u"UsePCDateTime", true);
    bag.Put(u"ShowSeconds", true);
    long ticks = 0;
    for (const Zone& zone : Zones) {
        SCOPED_TRACE(zone.rule);
        const TimeZoneScope scope(zone.rule);
        control.reset();
        Load(bag);
        ASSERT_EQ(world.timers.EnabledCount(), 1U);
        const auto tick = [&](std::time_t moment) {
            const DateTime now = TimeZoneScope::LocalAt(moment);
            world.clock.now = now;
            world.timers.Fire();
            ++ticks;
            return Calendar().Value() == now.date && Time().Value().time == now.time;
        };
        int changes = 0;
        for (std::time_t moment = Start; moment < Start + Year; moment += step) {
            ASSERT_TRUE(tick(moment)) << moment;
            if (TimeZoneScope::OffsetAt(moment) == TimeZoneScope::OffsetAt(moment + step)) continue;
            ++changes;
            for (std::time_t second = moment; second < moment + step; ++second) ASSERT_TRUE(tick(second)) << second;
        }
        EXPECT_EQ(changes, zone.changes);
    }
    std::printf("%ld ticks in %zu zones\n", ticks, std::size(Zones));
}

TEST_F(DateTruthOfTheSetControl, EverySecondOfADayArrivesAsItIs) {
    MemoryBag bag = BoundBag();
    bag.Put(u"ShowSeconds", true);
    Load(bag);
    const int step = Effort(1) > 1 ? 1 : 37;
    for (int second = 0; second < 86400; second += step) {
        const TimeOfDay time{second / 3600, second / 60 % 60, second % 60};
        const std::array<int, 3> parts{time.hour, time.minute, time.second};
        for (const int part : Orders[static_cast<std::size_t>(second) % Orders.size()])
            world.framework.Deliver(static_cast<std::int16_t>(2 + part), Number(parts[static_cast<std::size_t>(part)]));
        world.framework.calls.clear();
        ASSERT_EQ(control->GetDateTimeInfo().time.time, time);
        const DateTime whole{{2004, 2, 29}, time};
        ASSERT_EQ(FromOleDate(ToOleDate(whole)), whole);
        const DateTime beforeZero{{1899, 12, 28}, time};
        ASSERT_EQ(FromOleDate(ToOleDate(beforeZero)), beforeZero);
    }
}

}  // namespace
}  // namespace kiv
