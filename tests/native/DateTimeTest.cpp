#include "platform/DateTime.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/HostError.h"

namespace kiv {
namespace {

TEST(OleDate, CountsFromTheZeroDateAndItsFractionForwardsEvenBeforeIt) {
    const struct {
        double days;
        DateTime value;
    } cases[] = {
        {0, {{1899, 12, 30}, {}}},
        {0.25, {{1899, 12, 30}, {6, 0, 0}}},
        {-0.25, {{1899, 12, 30}, {6, 0, 0}}},
        {-1.25, {{1899, 12, 29}, {6, 0, 0}}},
        {1, {{1899, 12, 31}, {}}},
        {36526.5, {{2000, 1, 1}, {12, 0, 0}}},
        {36585, {{2000, 2, 29}, {}}},
        {-657434, {{100, 1, 1}, {}}},
        {-657434.75, {{100, 1, 1}, {18, 0, 0}}},
        {2958465, {{9999, 12, 31}, {}}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(FromOleDate(c.days), c.value) << c.days;
        if (c.days != -0.25) {
            EXPECT_EQ(ToOleDate(c.value), c.days);
        }
    }
}

TEST(OleDate, RoundsToTheNearestSecondAcrossMidnightToo) {
    const double halfSecond = 0.5 / 86400;
    EXPECT_EQ(FromOleDate(37075 + halfSecond * 0.9), (DateTime{{2001, 7, 3}, {}}));
    EXPECT_EQ(FromOleDate(37076 - halfSecond * 0.9), (DateTime{{2001, 7, 4}, {}}));
    EXPECT_EQ(FromOleDate(-1.9999999), (DateTime{{1899, 12, 30}, {}}));
}

TEST(OleDate, OutsideTheYears100To9999OrNoNumberFails) {
    for (const double bad : {-657435.0, 2958466.0, 2958465.999999999, 1e300, -1e300,
                             std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_THROW(FromOleDate(bad), HostError) << bad;
    }
}

TEST(OleDate, RoundTripsEveryDayOfFourCenturies) {
    for (int days = -109205; days <= 36891; days += 1) {
        const DateTime value = FromOleDate(days < 0 ? days - 0.75 : days + 0.75);
        ASSERT_TRUE(IsValidDate(value.date));
        ASSERT_EQ(value.time.hour, 18);
        ASSERT_EQ(ToOleDate(value), days < 0 ? days - 0.75 : days + 0.75);
        ASSERT_EQ(DayOfWeek(value.date), (days % 7 + 7 + 6) % 7 + 1);  // the zero date was a Saturday
    }
}

TEST(CivilDate, KnowsLeapYearsOfBothKinds) {
    EXPECT_EQ(DaysInMonth(1900, 2), 28);
    EXPECT_EQ(DaysInMonth(2000, 2), 29);
    EXPECT_EQ(DaysInMonth(2004, 2), 29);
    EXPECT_EQ(DaysInMonth(2001, 2), 28);
    for (const CivilDate& bad : {CivilDate{2001, 2, 29}, CivilDate{2001, 4, 31}, CivilDate{2001, 13, 1},
                                 CivilDate{2001, 0, 1}, CivilDate{2001, 1, 0}, CivilDate{10000, 1, 1}}) {
        EXPECT_FALSE(IsValidDate(bad));
    }
}

}  // namespace
}  // namespace kiv
