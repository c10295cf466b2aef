#include "screenhost/ScriptFile.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdint>

#include "screenhost/Utf8.h"

namespace screenhost {

namespace {

enum class Argument : std::uint8_t { None, Text, Milliseconds, Twips, Count, Date, Time, Boolean, Value };

struct Grammar {
    Verb verb;
    std::string_view name;
    std::array<Argument, 4> arguments;
    bool takesWithin;
    std::string_view help;
};

constexpr std::int32_t LongestWait = 600'000;  // milliseconds
constexpr std::int32_t LongestWithin = 600;    // seconds
constexpr std::int32_t MostTwips = 450'000;
constexpr std::int32_t MostLines = 100'000;

using enum Argument;

constexpr Grammar Grammars[] = {
    {Verb::Wait, "wait", {Milliseconds}, false, "MILLISECONDS"},
    {Verb::ExpectValue, "expect-value", {Text, Text}, true, "VARIABLE TEXT [within SECONDS]"},
    {Verb::ExpectShown, "expect-shown", {Text, Date, Time}, true, "NAME YYYY-MM-DD HH:MM:SS [within SECONDS]"},
    {Verb::ExpectDeviceShown, "expect-device-shown", {Text}, true, "NAME [within SECONDS]"},
    {Verb::ExpectClock, "expect-clock", {Date, Time}, true, "YYYY-MM-DD HH:MM:SS [within SECONDS]"},
    {Verb::ExpectLog, "expect-log", {Text}, true, "TEXT [within SECONDS]"},
    {Verb::ExpectNoLog, "expect-no-log", {Text}, false, "TEXT"},
    {Verb::MarkLog, "mark-log", {}, false, ""},
    {Verb::ExpectProperty, "expect-property", {Text, Text, Value}, true, "NAME PROPERTY VALUE [within SECONDS]"},
    {Verb::Click, "click", {Text, Text}, false, "NAME CAPTION"},
    {Verb::PickDay, "pick-day", {Text, Date}, false, "NAME YYYY-MM-DD"},
    {Verb::TypeTime, "type-time", {Text, Time}, false, "NAME HH:MM:SS"},
    {Verb::Press, "press", {Text}, false, "CAPTION"},
    {Verb::Key, "key", {Text}, false, "KEY"},
    {Verb::Set, "set", {Text, Text, Value}, false, "NAME PROPERTY VALUE"},
    {Verb::Device, "device", {Text, Text}, false, "VARIABLE TEXT"},
    {Verb::DeviceClock, "device-clock", {Date, Time}, false, "YYYY-MM-DD HH:MM:SS"},
    {Verb::DeviceOffline, "device-offline", {Boolean}, false, "True|False"},
    {Verb::Refresh, "refresh", {}, false, ""},
    {Verb::Design, "design", {}, false, ""},
    {Verb::RunMode, "run-mode", {}, false, ""},
    {Verb::New, "new", {}, false, ""},
    {Verb::Open, "open", {Text}, false, "FILE"},
    {Verb::Save, "save", {Text}, false, "FILE"},
    {Verb::Choose, "choose", {Text}, false, "CLASS"},
    {Verb::Draw, "draw", {Twips, Twips, Twips, Twips}, false, "LEFT TOP WIDTH HEIGHT"},
    {Verb::Select, "select", {Text}, false, "NAME"},
    {Verb::SelectAlso, "select-also", {Text}, false, "NAME"},
    {Verb::Drag, "drag", {Text, Twips, Twips}, false, "NAME DX DY"},
    {Verb::DragHandle, "drag-handle", {Text, Text, Twips, Twips}, false, "NAME N|NE|E|SE|S|SW|W|NW DX DY"},
    {Verb::Tab, "tab", {Text}, false, "CAPTION"},
    {Verb::TypeField, "type-field", {Text, Text}, false, "LABEL TEXT"},
    {Verb::ChooseField, "choose-field", {Text, Text}, false, "LABEL TEXT"},
    {Verb::ExpectField, "expect-field", {Text, Text}, true, "LABEL TEXT [within SECONDS]"},
    {Verb::ExpectFrame, "expect-frame", {Boolean}, true, "True|False [within SECONDS]"},
    {Verb::ExpectSelection, "expect-selection", {Text}, true, "NAMES [within SECONDS]"},
    {Verb::ExpectTitle, "expect-title", {Text}, true, "TEXT [within SECONDS]"},
    {Verb::ChooseVariable, "choose-variable", {Text}, false, "VARIABLE"},
    {Verb::ExpectPanel, "expect-panel", {Text, Text}, true, "VARIABLE TEXT [within SECONDS]"},
    {Verb::ExpectStatus, "expect-status", {Text}, true, "TEXT [within SECONDS]"},
    {Verb::ExpectCopied, "expect-copied", {Count, Text}, false, "LINES TEXT"},
    {Verb::Screenshot, "screenshot", {Text}, false, "FILE"},
};

const Grammar& GrammarOf(std::string_view verb) {
    const auto* found = std::ranges::find(Grammars, verb, &Grammar::name);
    if (found == std::end(Grammars)) throw TextError("unknown step \"" + std::string(verb) + "\"");
    return *found;
}

/// Exactly the digits and separators of a pattern such as "dddd-dd-dd"; the numbers between the separators.
template <std::size_t N>
std::array<int, N> ParsePattern(std::string_view text, std::string_view pattern, const char* what) {
    const auto fits = [](char c, char p) { return p == 'd' ? c >= '0' && c <= '9' : c == p; };
    if (!std::ranges::equal(text, pattern, fits)) throw TextError("\"" + std::string(text) + "\" is not " + what);
    std::array<int, N> numbers{};
    std::size_t part = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (pattern[i] != 'd')
            ++part;
        else
            numbers[part] = numbers[part] * 10 + (text[i] - '0');
    }
    return numbers;
}

CivilDate ParseDate(std::string_view text) {
    const auto [year, month, day] = ParsePattern<3>(text, "dddd-dd-dd", "a date (YYYY-MM-DD)");
    const std::chrono::year_month_day date{std::chrono::year{year}, std::chrono::month{static_cast<unsigned>(month)},
                                           std::chrono::day{static_cast<unsigned>(day)}};
    if (!date.ok()) throw TextError("there is no " + std::string(text));
    return {year, month, day};
}

TimeOfDay ParseTime(std::string_view text) {
    const auto [hour, minute, second] = ParsePattern<3>(text, "dd:dd:dd", "a time (HH:MM:SS)");
    if (hour > 23 || minute > 59 || second > 59) throw TextError("there is no " + std::string(text));
    return {hour, minute, second};
}

std::int32_t ParseBetween(std::string_view text, std::int32_t least, std::int32_t most) {
    const std::int32_t number = ParseInteger(text);
    if (number < least || number > most)
        throw TextError(std::string(text) + " is not between " + std::to_string(least) + " and " +
                        std::to_string(most));
    return number;
}

ScriptArgument ReadScriptArgument(TextCursor& cursor, Argument kind) {
    cursor.SkipBlanks();
    if (cursor.AtEnd()) throw TextError("an argument is missing");
    if (kind == Value) return ReadValue(cursor);
    const std::string text = cursor.ReadArgument();
    switch (kind) {
        case Milliseconds:
            return ParseBetween(text, 0, LongestWait);
        case Twips:
            return ParseBetween(text, -MostTwips, MostTwips);
        case Count:
            return ParseBetween(text, 0, MostLines);
        case Date:
            return ParseDate(text);
        case Time:
            return ParseTime(text);
        case Boolean:
            if (text != "True" && text != "False") throw TextError("True or False is expected");
            return ScreenValue(text == "True");
        default:
            return text;
    }
}

void ReadWithin(TextCursor& cursor, const Grammar& grammar, ScriptStep& step) {
    cursor.SkipBlanks();
    if (!grammar.takesWithin || cursor.AtEnd()) return;
    if (cursor.ReadArgument() != "within") throw TextError("only \"within SECONDS\" may follow");
    cursor.SkipBlanks();
    step.withinSeconds = ParseBetween(cursor.ReadArgument(), 0, LongestWithin);
}

ScriptStep ReadStep(std::string_view text) {
    TextCursor cursor(text);
    const Grammar& grammar = GrammarOf(cursor.ReadArgument());
    ScriptStep step;
    step.verb = grammar.verb;
    for (const Argument kind : grammar.arguments)
        if (kind != None) step.arguments.push_back(ReadScriptArgument(cursor, kind));
    ReadWithin(cursor, grammar, step);
    cursor.ExpectEnd();
    std::string_view written = text.substr(0, text.size() - cursor.Rest().size());
    while (!written.empty() && IsBlank(written.back())) written.remove_suffix(1);
    step.text = written;
    return step;
}

}  // namespace

ScriptFile ScriptFile::Parse(std::string_view text) {
    if (text.size() > MaxBytes) throw TextError("the file is longer than " + std::to_string(MaxBytes) + " bytes");
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    ScriptFile file;
    std::size_t number = 0;
    ForEachLine(text, [&](std::string_view line, std::string_view) {
        ++number;
        TextCursor cursor(line);
        cursor.SkipBlanks();
        if (cursor.AtEnd()) return;
        try {
            if (!Utf16FromUtf8(line)) throw TextError("the line is not UTF-8");
            file.m_steps.push_back(ReadStep(cursor.Rest()));
            file.m_steps.back().line = number;
        } catch (const TextError& error) {
            file.m_problems.push_back({number, error.what()});
        }
    });
    return file;
}

std::string ScriptHelp() {
    std::string result;
    for (const Grammar& grammar : Grammars) {
        ((result += "  ") += grammar.name) += ' ';
        (result += grammar.help) += '\n';
    }
    return result;
}

}  // namespace screenhost
