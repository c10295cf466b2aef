// Scripts and command lines.
#include <gtest/gtest.h>

#include "screenhost/CommandLine.h"
#include "screenhost/ScriptFile.h"

namespace screenhost {
namespace {

TEST(ScriptFile, StepsCarryTheirArgumentsLineAndText) {
    const ScriptFile script = ScriptFile::Parse(
        "\xEF\xBB\xBF; the visit\r\n"
        "\r\n"
        "click Clock \"Use PC; System\" ; un-check it\r\n"
        "\tpick-day Clock 2024-02-29\n"
        "type-time Clock 23:59:58\n"
        "expect-clock 2024-02-29 23:59:58 within 10\n"
        "expect-log \"Set \\\"Hour\\\"\"\n"
        "set Clock Caption \"True\"\n"
        "set Clock Enabled False\n"
        "device-offline True\n"
        "drag-handle Clock NW -120 450000");
    ASSERT_TRUE(script.Problems().empty());
    const auto& steps = script.Steps();
    ASSERT_EQ(steps.size(), 9u);
    EXPECT_EQ(steps[0].line, 3u);
    EXPECT_EQ(steps[0].text, "click Clock \"Use PC; System\"");
    EXPECT_EQ(steps[0].Text(1), "Use PC; System");
    EXPECT_EQ(steps[1].Date(1), (CivilDate{2024, 2, 29}));
    EXPECT_EQ(steps[2].Time(1), (TimeOfDay{23, 59, 58}));
    EXPECT_EQ(steps[3].withinSeconds, 10);
    EXPECT_EQ(steps[4].withinSeconds, std::nullopt);
    EXPECT_EQ(steps[4].Text(0), "Set \"Hour\"");
    EXPECT_EQ(steps[5].Value(2), ScreenValue(std::u16string(u"True")));
    EXPECT_EQ(steps[6].Value(2), ScreenValue(false));
    EXPECT_EQ(steps[7].line, 10u);
    EXPECT_EQ(steps[8].Number(2), -120);
    EXPECT_EQ(steps[8].Number(3), 450000);
}

TEST(ScriptFile, MalformedStepsAreReportedByNumberAndTheRestLoads) {
    const struct {
        const char* line;
        const char* message;
    } cases[] = {
        {"dance", "unknown step \"dance\""},
        {"\"", "closing quotation mark"},
        {"wait", "an argument is missing"},
        {"wait ; 100", "an argument is missing"},
        {"wait -1", "not between"},
        {"wait 600001", "not between"},
        {"wait 1 2", "unexpected text"},
        {"wait 1 within 2", "unexpected text"},
        {"pick-day Clock 2023-02-29", "there is no 2023-02-29"},
        {"pick-day Clock 2023-2-9", "is not a date"},
        {"pick-day Clock 0000-00-00", "there is no"},
        {"type-time Clock 24:00:00", "there is no 24:00:00"},
        {"type-time Clock 12:00", "is not a time"},
        {"expect-clock 2023-02-28 00:00:00 within", "not a 32-bit number"},
        {"expect-clock 2023-02-28 00:00:00 about 3", "only \"within SECONDS\""},
        {"set Clock Mode", "an argument is missing"},
        {"set Clock Mode one", "\"one\" is no value"},
        {"device-offline 1", "True or False"},
        {"draw 0 0 10", "an argument is missing"},
        {"drag Clock 0 450001", "not between -450000 and 450000"},
        {"drag Clock 1.5 0", "not a 32-bit number"},
        {"expect-frame maybe", "True or False"},
        {"press \"\xFF\"", "not UTF-8"},
    };
    for (const auto& [line, message] : cases) {
        const ScriptFile script = ScriptFile::Parse("design\n" + std::string(line) + "\nrefresh\n");
        ASSERT_EQ(script.Problems().size(), 1u) << line;
        EXPECT_EQ(script.Problems()[0].line, 2u);
        EXPECT_NE(script.Problems()[0].message.find(message), std::string::npos)
            << line << " says: " << script.Problems()[0].message;
        EXPECT_EQ(script.Steps().size(), 2u) << line;
    }
    EXPECT_THROW(ScriptFile::Parse(std::string(ScriptFile::MaxBytes + 1, ';')), TextError);
}

TEST(CommandLine, OptionsStandInAnyOrderAndServersAddUp) {
    const Options options = ParseCommandLine({"--server", "a.ocx", "my screen.screen", "--design", "--script",
                                              "v.visit", "--server", "b.dll", "--once", "--run", "--log", "--odd"});
    EXPECT_EQ(options.screen, "my screen.screen");
    EXPECT_EQ(options.servers, (std::vector<std::string>{"a.ocx", "b.dll"}));
    EXPECT_EQ(options.script, "v.visit");
    EXPECT_EQ(options.log, "--odd");
    EXPECT_TRUE(options.once);
    EXPECT_FALSE(options.design) << "the later one of --design and --run counts";
}

TEST(CommandLine, WhatCannotBeMeantIsRefused) {
    EXPECT_THROW(ParseCommandLine({"--verbose"}), TextError);
    EXPECT_THROW(ParseCommandLine({"a", "b"}), TextError);
    EXPECT_THROW(ParseCommandLine({"a", "--script"}), TextError);
    EXPECT_THROW(ParseCommandLine({"a", "--once"}), TextError);
}

}  // namespace
}  // namespace screenhost
