#include "setcontrol/ArrivingDate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <vector>

#include "platform/HostError.h"

namespace kiv {
namespace {

std::int32_t PartOf(const CivilDate& date, DatePart part) {
    switch (part) {
        case DatePart::Month:
            return date.month;
        case DatePart::Day:
            return date.day;
        case DatePart::Year:
            return date.year;
    }
    return 0;
}

const std::vector<CivilDate> HardDates = {{2000, 2, 29}, {2004, 2, 29},  {2001, 2, 28}, {1999, 12, 31},
                                          {2001, 1, 31}, {2001, 4, 30},  {2001, 3, 31}, {2000, 3, 1},
                                          {1753, 1, 1},  {9999, 12, 31}, {1900, 2, 28}, {1996, 2, 29}};

TEST(ArrivingDate, EndsAtTheDevicesDateInEveryOrderFromEveryDateShownBefore) {
    for (const CivilDate& before : HardDates) {
        for (const CivilDate& target : HardDates) {
            std::array<DatePart, 3> order{DatePart::Month, DatePart::Day, DatePart::Year};
            do {
                ArrivingDate arriving;
                CivilDate shown = before;
                for (const DatePart part : order) {
                    shown = arriving.Arrive(part, PartOf(target, part), shown);
                    ASSERT_TRUE(IsValidDate(shown));
                }
                EXPECT_EQ(shown, target);
            } while (std::ranges::next_permutation(order).found);
        }
    }
}

TEST(ArrivingDate, FollowsADeviceFromDayToDayWhateverPartsItSends) {
    ArrivingDate arriving;
    CivilDate shown{2001, 1, 30};
    shown = arriving.Arrive(DatePart::Day, 31, shown);
    shown = arriving.Arrive(DatePart::Month, 2, shown);
    EXPECT_EQ(shown, (CivilDate{2001, 2, 28}));
    shown = arriving.Arrive(DatePart::Day, 1, shown);
    EXPECT_EQ(shown, (CivilDate{2001, 2, 1}));
}

TEST(ArrivingDate, RefusesPartsThatNoDateHasAndLeavesTheOthersAsTheyWere) {
    ArrivingDate arriving;
    const CivilDate shown = arriving.Arrive(DatePart::Day, 31, {2001, 6, 15});
    ASSERT_EQ(shown, (CivilDate{2001, 6, 30}));
    const struct {
        DatePart part;
        std::int32_t value;
    } bad[] = {{DatePart::Month, 0},   {DatePart::Month, 13},   {DatePart::Month, -1},
               {DatePart::Day, 0},     {DatePart::Day, 32},     {DatePart::Day, 65536 + 5},
               {DatePart::Year, 1752}, {DatePart::Year, 10000}, {DatePart::Year, 2147483647}};
    for (const auto& b : bad) EXPECT_THROW(arriving.Arrive(b.part, b.value, shown), HostError);
    EXPECT_EQ(arriving.Arrive(DatePart::Month, 7, shown), (CivilDate{2001, 7, 31}));
}

TEST(ArrivingDate, DropsWhatWasAskedForOnceSomebodyElseSetTheCalendar) {
    ArrivingDate arriving;
    CivilDate shown = arriving.Arrive(DatePart::Day, 31, {2001, 6, 15});
    shown = {2001, 9, 10};
    EXPECT_EQ(arriving.Arrive(DatePart::Month, 7, shown), (CivilDate{2001, 7, 10}));

    // Even when the other one chose just the date that is shown.
    shown = arriving.Arrive(DatePart::Day, 31, {2001, 6, 15});
    arriving.Forget();
    EXPECT_EQ(arriving.Arrive(DatePart::Month, 7, shown), (CivilDate{2001, 7, 30}));
}

}  // namespace
}  // namespace kiv
