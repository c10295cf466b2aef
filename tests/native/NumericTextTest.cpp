#include "common/NumericText.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/HostError.h"

namespace kiv {
namespace {

TEST(DeviceNumber, IsTheLeadingNumericPartRoundedHalvesToEven) {
    const struct {
        const char16_t* text;
        std::int32_t number;
    } cases[] = {
        {u"", 0},
        {u"7", 7},
        {u"  \t12abc", 12},
        {u"abc12", 0},
        {u"-", 0},
        {u".", 0},
        {u"+5", 5},
        {u"- 5", 0},
        {u"0.5", 0},
        {u"1.5", 2},
        {u"2.5", 2},
        {u"-2.5", -2},
        {u"-3.5", -4},
        {u"2.50000000000000000000000000000001", 3},
        {u"0.4999999999999999999999999999999", 0},
        {u".9", 1},
        {u"5.", 5},
        {u"1e2", 100},
        {u"1E+2x", 100},
        {u"12e", 12},
        {u"12e+", 12},
        {u"25e-1", 2},
        {u"35e-1", 4},
        {u"0.0000000000000000000000000001e28", 1},
        {u"1e-999999999999999999999999", 0},
        {u"0e999999999999999999999999", 0},
        {u"0000000000000000000000000000013", 13},
        {u"2147483647", 2147483647},
        {u"-2147483648.5", -2147483647 - 1},
        {u"1,5", 1},
        {u"1 2", 1},
    };
    for (const auto& c : cases) EXPECT_EQ(ParseDeviceNumber(c.text), c.number) << testing::PrintToString(c.text);
}

TEST(DeviceNumber, ThatDoesNotFitThirtyTwoBitsFails) {
    for (const char16_t* text : {u"2147483648", u"2147483647.5", u"-2147483649", u"1e10", u"1e400", u"99999999999",
                                 u"1e999999999999999999999999999"}) {
        EXPECT_THROW(ParseDeviceNumber(text), HostError) << testing::PrintToString(text);
    }
}

TEST(WholeTextNumber, TakesNothingButANumberWithBlanksAroundIt) {
    EXPECT_EQ(ParseWholeText(u" 12.5 "), 12);
    for (const char16_t* text : {u"", u"  ", u"12x", u"1 2", u"0x10", u"1e", u"--1", u"99999999999"}) {
        EXPECT_EQ(ParseWholeText(text), std::nullopt) << testing::PrintToString(text);
    }
}

TEST(RoundedDouble, GoesToTheEvenNeighbourAndRefusesWhatDoesNotFit) {
    EXPECT_EQ(RoundToInt32(0.5), 0);
    EXPECT_EQ(RoundToInt32(1.5), 2);
    EXPECT_EQ(RoundToInt32(-0.5), 0);
    EXPECT_EQ(RoundToInt32(-1.5), -2);
    EXPECT_EQ(RoundToInt32(2147483647.4), 2147483647);
    EXPECT_EQ(RoundToInt32(-2147483648.5), -2147483647 - 1);
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double bad :
         {2147483647.5, -2147483649.0, infinity, -infinity, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_THROW(RoundToInt32(bad), HostError);
    }
}

}  // namespace
}  // namespace kiv
