#include "screenhost/ScreenValue.h"

#include <array>
#include <charconv>
#include <cmath>

namespace screenhost {

namespace {

constexpr std::int32_t NormalWeight = 400;
constexpr std::int32_t BoldWeight = 700;
constexpr double LargestFont = 32767.0;

std::string FormatDouble(double number) {
    if (!std::isfinite(number)) throw TextError("a number that is not finite cannot be written");
    std::array<char, 40> buffer;
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    std::string result(buffer.data(), end);
    if (result.find_first_of(".e") == std::string::npos) result += ".0";
    return result;
}

std::string FormatInteger(std::int32_t number) {
    const auto bits = static_cast<std::uint32_t>(number);
    if ((bits & 0xFFFFFF00u) != 0x80000000u) return std::to_string(number);
    constexpr std::string_view Digits = "0123456789ABCDEF";
    std::string result = "0x";
    for (int shift = 28; shift >= 0; shift -= 4) result += Digits[(bits >> shift) & 0xF];
    return result;
}

std::string FormatFont(const FontSpec& font) {
    // The shortest spelling that is still a number: 8.25, but 10 rather than 10.0.
    std::string size = FormatDouble(font.size);
    if (size.ends_with(".0")) size.resize(size.size() - 2);
    std::string result = "Font(" + Quoted(font.name) + ", " + size;
    if (font.weight == BoldWeight) result += ", Bold";
    if (font.weight != BoldWeight && font.weight != NormalWeight) result += ", Weight " + std::to_string(font.weight);
    if (font.italic) result += ", Italic";
    if (font.underline) result += ", Underline";
    if (font.strikethrough) result += ", Strikethrough";
    if (font.charset != 0) result += ", Charset " + std::to_string(font.charset);
    return result + ")";
}

double ParseDouble(std::string_view word) {
    double number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (error != std::errc() || end != word.data() + word.size() || !std::isfinite(number))
        throw TextError("\"" + std::string(word) + "\" is not a number");
    return number;
}

std::int32_t ReadOptionNumber(TextCursor& cursor, std::int32_t largest) {
    cursor.SkipBlanks();
    const std::int32_t number = ParseInteger(cursor.ReadWord());
    if (number < 0 || number > largest) throw TextError(std::to_string(number) + " is out of range in a font");
    return number;
}

void ReadFontOption(TextCursor& cursor, FontSpec& font) {
    const std::string_view option = cursor.ReadWord();
    if (option == "Bold")
        font.weight = BoldWeight;
    else if (option == "Italic")
        font.italic = true;
    else if (option == "Underline")
        font.underline = true;
    else if (option == "Strikethrough")
        font.strikethrough = true;
    else if (option == "Weight")
        font.weight = ReadOptionNumber(cursor, 1000);
    else if (option == "Charset")
        font.charset = ReadOptionNumber(cursor, 255);
    else
        throw TextError("unknown font option \"" + std::string(option) + "\"");
}

FontSpec ReadFont(TextCursor& cursor) {
    FontSpec font;
    cursor.Expect('(', "\"(\" after Font");
    cursor.SkipBlanks();
    font.name = cursor.ReadQuoted();
    cursor.SkipBlanks();
    cursor.Expect(',', "the comma after the font's name");
    cursor.SkipBlanks();
    font.size = ParseDouble(cursor.ReadWord());
    if (!(font.size > 0 && font.size <= LargestFont)) throw TextError("the font's size is out of range");
    for (cursor.SkipBlanks(); cursor.Take(','); cursor.SkipBlanks()) {
        cursor.SkipBlanks();
        ReadFontOption(cursor, font);
    }
    cursor.Expect(')', "\")\" at the end of the font");
    return font;
}

struct Formatter {
    std::string operator()(bool value) const { return value ? "True" : "False"; }
    std::string operator()(std::int32_t value) const { return FormatInteger(value); }
    std::string operator()(double value) const { return FormatDouble(value); }
    std::string operator()(const std::u16string& value) const { return Quoted(value); }
    std::string operator()(const FontSpec& value) const { return FormatFont(value); }
};

}  // namespace

ScreenValue ReadValue(TextCursor& cursor) {
    if (cursor.Peek() == '"') return cursor.ReadQuoted();
    const std::string_view word = cursor.ReadWord();
    if (word == "True") return true;
    if (word == "False") return false;
    if (word == "Font") return ReadFont(cursor);
    if (word.empty()) throw TextError(cursor.AtEnd() ? "the value is missing" : "the value cannot be read");
    if (std::string_view("0123456789+-.").find(word.front()) == std::string_view::npos)
        throw TextError("\"" + std::string(word) + "\" is no value (a text stands in quotes)");
    const bool hexadecimal = word.starts_with("0x") || word.starts_with("0X");
    if (!hexadecimal && word.find_first_of(".eE") != std::string_view::npos) return ParseDouble(word);
    return ParseInteger(word);
}

std::string FormatValue(const ScreenValue& value) {
    return std::visit(Formatter{}, value);
}

}  // namespace screenhost
