// The simulated device: its running clock, its latches, what it refuses.
#include "simulator/DeviceModel.h"

#include <gtest/gtest.h>

#include <limits>
#include <ostream>
#include <string>
#include <vector>

#include "simulator/OleDate.h"

namespace vexa {
namespace {

using namespace std::chrono_literals;
using Reason = SimulatorError::Reason;

DeviceTime At(std::chrono::year_month_day date, std::chrono::seconds time) {
    return std::chrono::local_days(date) + time;
}

/// A device whose clock only runs when the test lets it.
class SimulatedDevice : public testing::Test {
protected:
    void Pass(std::chrono::milliseconds time) { m_elapsed += time; }
    std::u16string Read(std::u16string_view name) { return device.Read({1, name, {}}); }
    void Write(std::u16string_view name, std::u16string_view text) { device.Write({1, name, {}}, text); }
    /// hour, minute, second, month, day, year
    std::u16string Clock() {
        std::u16string all;
        for (const auto* name : {u"nvoHour", u"nvoMinute", u"nvoSecond", u"nvoMonth", u"nvoDay", u"nvoYear"})
            all += (all.empty() ? u"" : u" ") + Read(name);
        return all;
    }
    template <class Body>
    static Reason Refusal(Body&& body) {
        try {
            body();
        } catch (const SimulatorError& error) {
            EXPECT_FALSE(error.Text().empty());
            return error.Why();
        }
        ADD_FAILURE() << "nothing was refused";
        return Reason::InjectedFailure;
    }

    std::chrono::milliseconds m_elapsed{5000};
    DeviceModel device{[this] { return m_elapsed; }, At(2001y / 7 / 4, 14h + 25min + 36s)};
};

TEST_F(SimulatedDevice, ClockRunsByWholeSecondsAcrossTheEndOfAYear) {
    device.SetNow(At(1999y / 12 / 31, 23h + 59min + 58s));
    Pass(1999ms);
    EXPECT_EQ(Clock(), u"23 59 59 12 31 1999");
    Pass(1ms);
    EXPECT_EQ(Clock(), u"0 0 0 1 1 2000");
    Pass(std::chrono::hours(24 * 59));
    EXPECT_EQ(Clock(), u"0 0 0 2 29 2000");
}

TEST_F(SimulatedDevice, ClockStopsAtTheLastSecondItCanShow) {
    device.SetNow(At(9999y / 12 / 31, 23h + 59min + 59s));
    Pass(10min);
    EXPECT_EQ(Clock(), u"23 59 59 12 31 9999");
}

TEST_F(SimulatedDevice, APausedClockKeepsItsTimeAndGoesOnFromIt) {
    Pass(4s);
    device.SetClockPaused(true);
    Pass(1h);
    EXPECT_EQ(Clock(), u"14 25 40 7 4 2001");
    device.SetNow(At(2001y / 7 / 4, 15h));
    Pass(1h);
    device.SetClockPaused(true);
    EXPECT_EQ(Clock(), u"15 0 0 7 4 2001");
    device.SetClockPaused(false);
    Pass(1s);
    EXPECT_EQ(Clock(), u"15 0 1 7 4 2001");
}

TEST_F(SimulatedDevice, WrittenPartsWaitForTheYearAndForTheSecond) {
    Write(u"nviSetMonth", u"2");
    Write(u"nviSetDay", u"29");
    Write(u"nviSetHour", u"0");
    Write(u"nviSetMinute", u"5");
    EXPECT_EQ(Clock(), u"14 25 36 7 4 2001");
    Write(u"nviSetYear", u"2004");
    EXPECT_EQ(Clock(), u"14 25 36 2 29 2004");
    Write(u"nviSetSecond", u"9");
    EXPECT_EQ(Clock(), u"0 5 9 2 29 2004");
    Pass(1s);
    EXPECT_EQ(Clock(), u"0 5 10 2 29 2004");
}

TEST_F(SimulatedDevice, LatchedPartsAreUsedOnceAndStayReadable) {
    Write(u"nviSetMonth", u"2");
    Write(u"nviSetDay", u"11");
    Write(u"nviSetYear", u"2004");
    device.SetNow(At(2010y / 9 / 8, 0h));
    Write(u"nviSetYear", u"2011");
    EXPECT_EQ(Clock(), u"0 0 0 9 8 2011");
    EXPECT_EQ(Read(u"nviSetMonth"), u"2");
    EXPECT_EQ(Read(u"nviSetYear"), u"2011");
}

TEST_F(SimulatedDevice, PartsThatMakeNoDateAreRefusedAndForgotten) {
    Write(u"nviSetMonth", u"2");
    Write(u"nviSetDay", u"29");
    EXPECT_EQ(Refusal([&] { Write(u"nviSetYear", u"2001"); }), Reason::BadValue);
    EXPECT_EQ(Clock(), u"14 25 36 7 4 2001");
    Write(u"nviSetYear", u"2003");
    EXPECT_EQ(Clock(), u"14 25 36 7 4 2003") << "the refused month and day came back";
}

TEST_F(SimulatedDevice, RefusesWhatIsNoWholeNumberInRangeAndChangesNothing) {
    const struct {
        std::u16string name, text;
    } cases[] = {
        {u"nviSetHour", u"24"},         {u"nviSetHour", u"-1"},
        {u"nviSetMinute", u"60"},       {u"nviSetSecond", u"60"},
        {u"nviSetMonth", u"0"},         {u"nviSetMonth", u"13"},
        {u"nviSetDay", u"0"},           {u"nviSetDay", u"32"},
        {u"nviSetYear", u"99"},         {u"nviSetYear", u"10000"},
        {u"nciClockFormat", u"2"},      {u"nciDaylightSaving", u"-1"},
        {u"nviSetHour", u""},           {u"nviSetHour", u" 1"},
        {u"nviSetHour", u"1 "},         {u"nviSetHour", u"1.0"},
        {u"nviSetHour", u"0x1"},        {u"nviSetHour", u"+"},
        {u"nviSetHour", u"--1"},        {u"nviSetHour", u"\u0661"},
        {u"nviSetHour", u"4294967297"}, {u"nviSetHour", u"99999999999999999999999999"},
    };
    for (const auto& [name, text] : cases) {
        SCOPED_TRACE(std::string(text.begin(), text.end()));
        const std::u16string before = Read(name);
        EXPECT_EQ(Refusal([&, &n = name, &t = text] { Write(n, t); }), Reason::BadValue);
        EXPECT_EQ(Read(name), before);
    }
    Write(u"nviSetSecond", u"+007");
    EXPECT_EQ(Clock(), u"14 25 7 7 4 2001") << "a refused hour or minute was latched";
}

TEST_F(SimulatedDevice, RefusesUnknownVariablesAndWritesToTheRunningClock) {
    EXPECT_EQ(Refusal([&] { device.Read({2, u"nvoHour", {}}); }), Reason::UnknownVariable);
    EXPECT_EQ(Refusal([&] { Read(u"NVOHOUR"); }), Reason::UnknownVariable);
    EXPECT_EQ(Refusal([&] { Read(u""); }), Reason::UnknownVariable);
    EXPECT_EQ(Refusal([&] { Write(u"nvoHour", u"1"); }), Reason::ReadOnly);
}

TEST_F(SimulatedDevice, FindsAVariableByItsPathWhereTheNameIsEmptyOrUnknown) {
    EXPECT_EQ(device.Read({1, u"", u"Clock.Minute"}), u"25");
    EXPECT_EQ(device.Read({1, u"nvoElsewhere", u"Clock.Minute"}), u"25");
    EXPECT_EQ(device.Read({1, u"nvoHour", u"Clock.Minute"}), u"14");
}

TEST_F(SimulatedDevice, FailsOfflineWhileItsClockRunsOn) {
    device.SetOffline(true);
    EXPECT_EQ(Refusal([&] { Read(u"nvoHour"); }), Reason::Offline);
    EXPECT_EQ(Refusal([&] { Write(u"nviSetMinute", u"1"); }), Reason::Offline);
    Pass(4s);
    device.SetOffline(false);
    EXPECT_EQ(Clock(), u"14 25 40 7 4 2001");
    Write(u"nviSetSecond", u"0");
    EXPECT_EQ(Clock(), u"14 25 0 7 4 2001") << "a value written offline was latched";
}

TEST_F(SimulatedDevice, ForcingAPartOfTheClockKeepsTheOthersAndTheCalendarWhole) {
    device.Force({1, u"nvoHour", {}}, u"3");
    device.Force({1, u"nvoDay", {}}, u"31");
    EXPECT_EQ(Clock(), u"3 25 36 7 31 2001");
    EXPECT_EQ(Refusal([&] { device.Force({1, u"nvoMonth", {}}, u"6"); }), Reason::BadValue);
    EXPECT_EQ(Clock(), u"3 25 36 7 31 2001");
}

TEST(SimulatedDeviceDates, GoToAutomationDatesAndBack) {
    const struct {
        DeviceTime time;
        double days;
    } cases[] = {
        {At(1899y / 12 / 30, 0s), 0.0},    {At(1899y / 12 / 30, 6h), 0.25},      {At(1899y / 12 / 29, 0s), -1.0},
        {At(1899y / 12 / 29, 6h), -1.25},  {At(1899y / 12 / 28, 18h), -2.75},    {At(2001y / 7 / 4, 12h), 37076.5},
        {At(100y / 1 / 1, 0s), -657434.0}, {At(9999y / 12 / 31, 0s), 2958465.0},
    };
    for (const auto& [time, days] : cases) {
        SCOPED_TRACE(days);
        EXPECT_DOUBLE_EQ(ToOleDate(time), days);
        EXPECT_EQ(FromOleDate(days), time);
    }
    for (int second = 0; second < 86400; second += 61) {
        const DeviceTime time = At(2038y / 1 / 19, std::chrono::seconds(second));
        EXPECT_EQ(FromOleDate(ToOleDate(time)), time);
        const DeviceTime early = At(1776y / 7 / 4, std::chrono::seconds(second));
        EXPECT_EQ(FromOleDate(ToOleDate(early)), early);
    }
}

TEST(SimulatedDeviceDates, RefuseWhatIsNoDate) {
    const double inf = std::numeric_limits<double>::infinity();
    for (const double days : {inf, -inf, std::numeric_limits<double>::quiet_NaN(), 2958466.0, -657435.0, 1e300})
        EXPECT_THROW(FromOleDate(days), SimulatorError) << days;
}

}  // namespace
}  // namespace vexa
