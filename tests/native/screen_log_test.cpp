// What the log's filter shows, and what the device's log tells of reading and writing.
#include <gtest/gtest.h>

#include "screenhost/ExchangeOutcome.h"
#include "screenhost/LogFilter.h"

namespace screenhost {
namespace {

TEST(LogFilter, EveryWordHasToOccurAndNoUnwantedOneMay) {
    const struct {
        const char* filter;
        bool shown;
    } cases[] = {
        {"", true},
        {"  \t ", true},
        {"month", true},
        {"DEVICE MONTH", true},
        {"month year", false},
        {"devicewrite", false},
        {"\"write value\" 7", true},
        {"\"value write\"", false},
        {"\"write value", true},
        {"-month", false},
        {"-year write", true},
        {"-\"write value\"", false},
        {"-device", false},
        {"-", true},
        {"\"\" --", true},
        {"(NoDisplay,", true},
    };
    for (const auto& each : cases) {
        const LogFilter filter(each.filter);
        EXPECT_EQ(filter.Matches("device", "write value 5: nviSetMonth = 7 (NoDisplay, UseCurrent)"), each.shown)
            << each.filter;
    }
    EXPECT_TRUE(LogFilter(" \"\" - ").IsEmpty());
    EXPECT_FALSE(LogFilter("x").IsEmpty());
}

std::string Outcome(ExchangeOutcome::Kind kind, std::initializer_list<const char*> lines) {
    ExchangeOutcome outcome(kind);
    for (const char* line : lines) outcome.Take(line);
    return outcome.Text();
}

TEST(ExchangeOutcome, WhatWasWrittenAndRefusedIsCountedAndTheFirstReasonTold) {
    constexpr auto Write = ExchangeOutcome::Kind::Write;
    EXPECT_EQ(Outcome(Write, {"write-enable 5: True", "value 5: nvoMonth = 7"}),
              "Nothing was written: no control has a value.");
    EXPECT_EQ(Outcome(Write, {"write value 5: nviSetMonth = 7 (NoDisplay, UseCurrent)"}),
              "1 value was written to the device.");
    EXPECT_EQ(Outcome(Write, {"write value 5: nviSetMonth = 2 (NoDisplay, UseCurrent)",
                              "write value 6: nviSetDay = 30 (NoDisplay, UseCurrent)",
                              "write value 7: nviSetYear = 2001 (, ) failed: the month has no such day",
                              "write value 4: nviSetSecond = 1 (, ) failed: something else"}),
              "2 values written, 2 refused: nviSetYear: the month has no such day");
    EXPECT_EQ(Outcome(Write, {"write value 5: nviSetMonth = 7 (, ) failed: the device is offline"}),
              "Nothing written, 1 refused: nviSetMonth: the device is offline");
}

TEST(ExchangeOutcome, AVariableThatArrivesAgainIsReadOnce) {
    ExchangeOutcome outcome(ExchangeOutcome::Kind::Read);
    EXPECT_EQ(outcome.Text(), "Nothing was read: no value came from the device.");
    EXPECT_TRUE(outcome.Take("value 4: nvoSecond = 36"));
    EXPECT_FALSE(outcome.Take("value 4: nvoSecond = 37"));
    EXPECT_FALSE(outcome.Take("write value 4: nviSetSecond = 37 (, )"));
    EXPECT_EQ(outcome.Text(), "1 value was read from the device.");
    EXPECT_TRUE(outcome.Take("value 5: nvoMonth = 7"));
    EXPECT_EQ(outcome.Text(), "2 values were read from the device.");
}

}  // namespace
}  // namespace screenhost
