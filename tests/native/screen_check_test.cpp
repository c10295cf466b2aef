// The screen checker: what each rule finds and on which line, and what it leaves in peace.
#include "screenhost/ScreenCheck.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

namespace screenhost {
namespace {

/// "LINE RULE" of each finding.
using Found = std::vector<std::string>;

std::vector<Finding> FindingsIn(const std::string& text) {
    ScreenFile file = ScreenFile::Parse(text);
    return CheckScreen(file);
}

Found Check(const std::string& text) {
    Found found;
    for (const Finding& finding : FindingsIn(text))
        found.push_back(std::to_string(finding.line) + " " + std::string(finding.rule));
    return found;
}

// Lines 1 and 2 of a screen with one control.
const std::string Set = "[A]\nProgID = \"KivDateTime.KivSetDateTime\"\n";
const std::string Show = "[A]\nProgID = \"KivDateTime.KivShowDateTime.1\"\n";

std::string Name(int slot, const std::string& name) {
    return "DataVarName" + std::to_string(slot) + " = \"" + name + "\"\n";
}

std::string Names(std::initializer_list<int> slots) {
    std::string text;
    for (const int slot : slots) text += Name(slot, "v" + std::to_string(slot));
    return text;
}

struct Case {
    const char* name;
    std::string text;
    Found found;
};

void ExpectAll(std::initializer_list<Case> cases) {
    for (const Case& each : cases) EXPECT_EQ(Check(each.text), each.found) << each.name << "\n" << each.text;
}

TEST(ScreenCheck, KeysAndValuesThatDoNotCountAreFoundOnTheirLine) {
    ExpectAll({
        {"nothing at all", "", {}},
        {"comments and a title", "; x\nTitle = \"T\"\n", {}},
        {"an unknown key of the screen", "Titel = \"T\"\n", {"1 unknown-key"}},
        {"a title that is no text", "Title = 3\n", {"1 wrong-kind"}},
        {"a line that cannot be read", Set + "Mode 1\n", {"3 syntax"}},
        {"the second of two values", Set + "Mode = 1\nMode = 2\n", {"4 syntax"}},
        {"a control without a class", "[A]\nLeft = 1\n", {"1 program-id"}},
        {"a class that the server does not have", "[A]\nProgID = \"KivDateTime.KivSetDate\"\n", {"2 program-id"}},
        {"a class that is no text", "[A]\nProgID = 7\n", {"2 wrong-kind"}},
        {"another maker's control", "[A]\nProgID = \"Other.Control\"\nMode = 99\nLeft = -3\n", {"4 out-of-range"}},
        {"keys in another case", Set + "mode = 1\ncaption = \"x\"\n", {}},
        {"a property's name for a key", Set + "TimeFormat = 1\n", {"3 unknown-key"}},
        {"the other control's key", Set + "ShowCentury = True\n", {"3 unknown-key"}},
        {"a number in quotes", Set + "Mode = \"1\"\n", {"3 wrong-kind"}},
        {"a number for a Boolean", Show + "Enabled = 1\n", {"3 wrong-kind"}},
        {"a fraction of a twip", Set + "TimeWidth = 1100.5\nWidth = 4000.5\n", {"3 wrong-kind"}},
        {"a text for a font", Set + "Font = \"Tahoma\"\n", {"3 wrong-kind"}},
        {"modes",
         Set + "Mode = 3\n[B]\nProgID = \"KivDateTime.KivShowDateTime\"\nMode = 0\n",
         {"3 out-of-range", "6 out-of-range"}},
        {"a colour with a stray digit",
         Set + "BackColor = 0x0FF00000\nForeColor = 0x8000001F\n",
         {"3 out-of-range", "4 out-of-range"}},
        {"colours", Set + "BackColor = 0xFFFFFF\nForeColor = 0x8000001E\nCalBackColor = 0\n", {}},
        {"a place off the screen",
         Set + "Left = -15\nTop = 450001\nWidth = 0\n",
         {"3 out-of-range", "4 out-of-range", "5 out-of-range"}},
        {"two delimiters",
         Show + "DateDelimiter = \"//\"\nTimeDelimiter = \"\"\nAMPMFormat = \"AM\"\n",
         {"3 out-of-range", "4 out-of-range", "5 out-of-range"}},
        {"daylight saving of a date", Set + "Mode = 1\nShowDST = True\n", {"4 out-of-range"}},
        {"daylight saving of a time", Set + "Mode = 2\nShowDST = True\n", {}},
        {"no 24-hour clock", Set + "Data12HourValue = 1\nData24HourValue = 1\n", {"4 same-values"}},
        {"the 24-hour clock's default", Set + "Data12HourValue = 2\n", {}},
        {"no month first", Show + "DataMDYValue = 4\nDataDMYValue = 4\n", {"3 same-values"}},
    });
}

TEST(ScreenCheck, SlotsThatAreBoundHalfOrTwiceAreFound) {
    const std::string date = Names({5, 6, 7, 11, 12, 13});
    ExpectAll({
        {"all parts of a date, both ways", Set + "Mode = 1\n" + date, {}},
        {"a slot too many", Set + "DataVarName14 = \"x\"\n" + Name(99999999, "x"), {"3 slot-number", "4 slot-number"}},
        {"the show control's slots", Show + "DataType7 = 1\n", {"3 slot-number"}},
        {"a slot with zeros", Set + "DataVarName07 = \"x\"\n", {"3 slot-number"}},
        {"a slot key without a slot", Set + "DataVarName = \"x\"\n", {"3 unknown-key"}},
        {"a property's name for a slot's key", Set + "DataVariableName5 = \"x\"\n", {"3 unknown-key"}},
        {"a path alone", Set + "DataElemPath5 = \"Clock.Month\"\n", {"3 no-variable"}},
        {"a blank name", Set + "DataLMObject5 = 1\nDataElemPath5 = \"p\"\nDataVarName5 = \"  \"\n", {"4 no-variable"}},
        {"set slots without get slots",
         Set + "Mode = 1\n" + Names({11, 12, 13}),
         {"4 set-without-get", "5 set-without-get", "6 set-without-get"}},
        {"a get slot without its set slot",
         Set + "Mode = 1\n" + Names({5, 6, 7, 11, 13}),
         {"5 get-without-set", "7 missing-part"}},
        {"a second that is only written", Set + Names({2, 3, 8, 9, 10}), {}},
        {"a second that is only written, but shown",
         Set + "ShowSeconds = True\n" + Names({2, 3, 8, 9, 10}),
         {"4 missing-part", "8 set-without-get"}},
        {"a date without a day", Show + Names({4, 6}), {"3 missing-part"}},
        {"a weekday without a year", Show + "Mode = 2\nShowLongDay = True\n" + Names({1, 2, 4, 5}), {"7 missing-part"}},
        {"the same variable twice", Show + Names({4, 5}) + Name(6, "v4"), {"5 duplicate-binding"}},
        {"two elements of one variable",
         Show + "DataVarName4 = \"v\"\nDataElemPath4 = \"v.m\"\nDataVarName5 = \"v\"\nDataElemPath5 = \"v.d\"\n" +
             Name(6, "y"),
         {}},
        {"the same variable of two objects",
         Show + "DataLMObject4 = 1\nDataLMObject5 = 2\nDataLMObject6 = 1\n" + Name(4, "v") + Name(5, "v") +
             Name(6, "y"),
         {}},
        {"a variable both read and written", Set + "Mode = 1\n" + date + "DataType4 = 1\n", {"10 no-variable"}},
        {"an object forgotten", Show + "DataLMObject4 = 1\nDataLMObject6 = 1\n" + Names({4, 5, 6}), {"6 lm-object"}},
    });
}

TEST(ScreenCheck, AConfigurationValueMayBeReadAndWrittenUnderOneName) {
    const auto screen = [](const char* type) {
        std::string text = Set + "Mode = 1\n";
        for (const int slot : {5, 6, 7, 11, 12, 13}) {
            text += Name(slot, "cfg" + std::to_string(slot > 7 ? slot - 6 : slot));
            text += "DataType" + std::to_string(slot) + " = " + type + "\n";
        }
        return text;
    };
    EXPECT_EQ(Check(screen("2")), Found{});
    EXPECT_EQ(Check(screen("3")), Found{});
    EXPECT_EQ(Check(screen("1")), (Found{"10 duplicate-binding", "11 data-type", "12 duplicate-binding", "13 data-type",
                                         "14 duplicate-binding", "15 data-type"}));
}

TEST(ScreenCheck, DataTypesThatContradictTheUseOfASlotAreFound) {
    const std::string date = Set + "Mode = 1\n" + Names({5, 6, 7, 11, 12, 13});
    ExpectAll({
        {"an output variable written", date + "DataType12 = 1\n", {"10 data-type"}},
        {"a configuration value written", date + "DataType12 = 2\n", {}},
        {"an input variable read", date + "DataType5 = 0\n", {"10 data-type"}},
        {"the daylight-saving flag, read and written", Set + Name(1, "flag") + "DataType1 = 0\n", {}},
        {"the flag as an output variable", Set + Name(1, "flag") + "DataType1 = 1\n", {"4 data-type"}},
        {"a type that there is not", date + "DataType5 = 4\n", {"10 out-of-range"}},
        {"an input variable shown", Show + Names({4, 5, 6}) + "DataType4 = 0\n", {"6 data-type"}},
    });
}

TEST(ScreenCheck, BoundSlotsThatTheModeDoesNotUseAreFound) {
    ExpectAll({
        {"clock and flag of a date", Set + "Mode = 1\n" + Names({0, 1}), {"4 unused-slot", "5 unused-slot"}},
        {"times of a date", Set + "Mode = 1\n" + Names({2, 8}), {"4 unused-slot", "5 unused-slot"}},
        {"a date of a time", Set + "Mode = 2\n" + Names({5, 11}), {"4 unused-slot", "5 unused-slot"}},
        {"seconds that do not show", Set + Names({2, 3, 4, 8, 9, 10}), {"5 unused-slot"}},
        {"a flag that does not show", Set + "ShowDST = False\n" + Names({1}), {"4 unused-slot"}},
        {"a mode that loads as the default", Set + "Mode = 9\n" + Names({0, 1}), {"3 out-of-range"}},
        {"times shown as a date", Show + Names({0, 1, 4, 5, 6}), {"4 unused-slot"}},
        {"dates shown as a time", Show + "Mode = 2\n" + Names({0, 1, 2, 3, 4}), {"7 unused-slot", "8 unused-slot"}},
        {"a time with its weekday", Show + "Mode = 2\nShowLongDay = True\n" + Names({1, 2, 4, 5, 6}), {}},
    });
}

TEST(ScreenCheck, MessagesNameWhatWasProbablyMeant) {
    const std::pair<std::string, std::string> cases[] = {
        {"DataVariableName5 = \"x\"", "DataVarName5 meant"},
        {"DataVarNme13 = \"x\"", "DataVarName13 meant"},
        {"CalBackColorDisabled = 0", "CalDisabledBackColor meant"},
        {"ShowSecond = True", "ShowSeconds meant"},
        {"Widht = 3", "Width meant"},
        {"Zebra = 3", "nothing reads the key Zebra"},
    };
    for (const auto& [line, expected] : cases) {
        const std::vector<Finding> findings = FindingsIn(Set + line + "\n");
        ASSERT_EQ(findings.size(), 1u) << line;
        EXPECT_NE(findings[0].message.find(expected), std::string::npos) << findings[0].message;
    }
    EXPECT_EQ(FindingsIn(Set + "Zebra = 3\n")[0].message, "nothing reads the key Zebra");
    EXPECT_EQ(DescribeFindings("a.screen", {{7, "syntax", "what"}}), "a.screen:7: what [syntax]\n");
}

std::string ReadAll(const std::filesystem::path& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

TEST(ScreenCheck, AllScreensOfTheProjectAreClean) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(KIV_SOURCE_DIR "/screens")) {
        if (entry.path().extension() != ".screen") continue;
        ++count;
        const std::string name = entry.path().filename().string();
        EXPECT_EQ(DescribeFindings(name, FindingsIn(ReadAll(entry.path()))), "");
    }
    EXPECT_GE(count, 8);
}

/// The rows of the table say "| `rule` | what | `example`, ... |"; the examples stand in a set control's section.
TEST(ScreenCheck, EveryRuleInTheManualFindsItsExample) {
    std::istringstream manual(ReadAll(KIV_SOURCE_DIR "/docs/screen-host.md"));
    std::set<std::string> rules;
    for (std::string line; std::getline(manual, line);) {
        std::vector<std::string> quoted;
        std::istringstream parts(line);
        for (std::string part; std::getline(parts, part, '`');) quoted.push_back(part);
        if (!line.starts_with("| `") || line.find("| example |") != std::string::npos || quoted.size() < 4) continue;
        std::string text = quoted[1] == "program-id" ? "[A]\n" : Set;
        for (std::size_t i = 3; i < quoted.size(); i += 2) text += quoted[i] + "\n";
        std::set<std::string> found;
        for (const Finding& finding : FindingsIn(text)) found.emplace(finding.rule);
        EXPECT_TRUE(found.contains(quoted[1])) << line << "\n" << text;
        rules.insert(quoted[1]);
    }
    const std::set<std::string> all = {"syntax",       "program-id",        "unknown-key",     "slot-number",
                                       "wrong-kind",   "out-of-range",      "same-values",     "no-variable",
                                       "unused-slot",  "set-without-get",   "get-without-set", "data-type",
                                       "missing-part", "duplicate-binding", "lm-object"};
    EXPECT_EQ(rules, all);
}

}  // namespace
}  // namespace screenhost
