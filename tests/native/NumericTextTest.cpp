#include "common/NumericText.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>
#include <vector>

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

/// The C library's answer, by the same rule.
std::u16string PrintedText(double value) {
    std::array<char, 32> buffer{};
    const int length = std::snprintf(buffer.data(), buffer.size(), "%.15g", value);
    return {buffer.data(), buffer.data() + length};
}

TEST(DoubleText, IsWhatTheLibraryPrintsToFifteenDigits) {
    std::vector<double> values{0.0, 0.1, 100.0, 1e14, 999999999999999.0,
                               // Where the notation changes, and where rounding carries over all digits.
                               999999999999999.4, 999999999999999.5, 1e15, 0.0001, 0.00009999999999999995,
                               0.000099999999999999999, 9.9999999999999995,
                               // Exactly half-way: to the even digit.
                               1000000000000002.5, 10000000000000005.0, 10000000000000015.0, 45234.520833333336,
                               std::numeric_limits<double>::max(), std::numeric_limits<double>::min(),
                               std::numeric_limits<double>::denorm_min()};
    std::mt19937_64 random(20261122);  // NOLINT(cert-msc51-cpp): the same numbers every time
    for (int i = 0; i < 20'000; ++i) {
        const auto anything = std::bit_cast<double>(random());
        if (std::isfinite(anything)) values.push_back(anything);
        // Few digits, as people write numbers.
        values.push_back(static_cast<double>(random() % 2'000'000) / std::pow(10, static_cast<double>(random() % 12)));
    }
    for (const double value : values) {
        ASSERT_EQ(ToText(value), PrintedText(value));
        ASSERT_EQ(ToText(-value), PrintedText(-value));
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
