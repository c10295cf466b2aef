#include "screenhost/TextCursor.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "screenhost/Utf8.h"

namespace screenhost {

namespace {

char Lower(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool IsWordCharacter(char c) noexcept {
    const char l = Lower(c);
    return (l >= 'a' && l <= 'z') || (c >= '0' && c <= '9') || c == '_' || c == '.' || c == '-' || c == '+';
}

std::string HexEscape(char16_t unit) {
    constexpr std::string_view Digits = "0123456789ABCDEF";
    std::string result = "\\u0000";
    for (std::size_t i = 0; i < 4; ++i) result[5 - i] = Digits[(static_cast<unsigned>(unit) >> (4 * i)) & 0xF];
    return result;
}

}  // namespace

bool EqualWithoutCase(std::string_view a, std::string_view b) noexcept {
    return std::ranges::equal(a, b, [](char x, char y) { return Lower(x) == Lower(y); });
}

bool IsBlank(char c) noexcept {
    return c == ' ' || c == '\t';
}

void TextCursor::SkipBlanks() noexcept {
    while (m_at < m_text.size() && IsBlank(m_text[m_at])) ++m_at;
}

bool TextCursor::Take(char c) noexcept {
    if (m_at >= m_text.size() || m_text[m_at] != c) return false;
    ++m_at;
    return true;
}

void TextCursor::Expect(char c, const char* what) {
    if (!Take(c)) throw TextError(std::string(what) + " is missing");
}

void TextCursor::ExpectEnd() {
    SkipBlanks();
    if (!AtEnd()) throw TextError("unexpected text \"" + std::string(Rest()) + "\"");
}

std::string_view TextCursor::ReadWord() noexcept {
    const std::size_t start = m_at;
    while (m_at < m_text.size() && IsWordCharacter(m_text[m_at])) ++m_at;
    return m_text.substr(start, m_at - start);
}

std::string TextCursor::ReadArgument() {
    if (Peek() == '"') return Utf8FromUtf16(ReadQuoted());
    const std::size_t start = m_at;
    while (m_at < m_text.size() && !IsBlank(m_text[m_at]) && m_text[m_at] != ';') ++m_at;
    return std::string(m_text.substr(start, m_at - start));
}

std::u16string TextCursor::ReadQuoted() {
    Expect('"', "an opening quotation mark");
    std::u16string result;
    for (;;) {
        const std::size_t start = m_at;
        while (m_at < m_text.size() && m_text[m_at] != '"' && m_text[m_at] != '\\') ++m_at;
        const auto plain = Utf16FromUtf8(m_text.substr(start, m_at - start));
        if (!plain) throw TextError("the text is not UTF-8");
        result += *plain;
        if (Take('"')) return result;
        if (!Take('\\')) throw TextError("the closing quotation mark is missing");
        AppendEscape(result);
    }
}

void TextCursor::AppendEscape(std::u16string& result) {
    const char c = Peek();
    constexpr std::array<std::pair<char, char16_t>, 5> Simple{
        {{'"', u'"'}, {'\\', u'\\'}, {'n', u'\n'}, {'r', u'\r'}, {'t', u'\t'}}};
    for (const auto& [letter, unit] : Simple) {
        if (!Take(letter)) continue;
        result += unit;
        return;
    }
    if (!Take('u')) throw TextError(std::string("unknown escape \\") + (c ? std::string(1, c) : std::string()));
    unsigned unit = 0;
    const std::string_view digits = Rest().substr(0, 4);
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), unit, 16);
    if (error != std::errc() || end != digits.data() + 4) throw TextError("\\u needs four hexadecimal digits");
    m_at += 4;
    result += static_cast<char16_t>(unit);
}

std::string Quoted(std::u16string_view text) {
    std::string result = "\"";
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        const auto isHigh = [](char16_t u) { return u >= 0xD800 && u <= 0xDBFF; };
        const auto isLow = [](char16_t u) { return u >= 0xDC00 && u <= 0xDFFF; };
        if (c == u'"' || c == u'\\') {
            (result += '\\') += static_cast<char>(c);
        } else if (c == u'\n') {
            result += "\\n";
        } else if (c == u'\r') {
            result += "\\r";
        } else if (c == u'\t') {
            result += "\\t";
        } else if (c < 0x20 || c == 0x7F) {
            result += HexEscape(c);
        } else if (isHigh(c) && i + 1 < text.size() && isLow(text[i + 1])) {
            result += Utf8FromUtf16(text.substr(i++, 2));
        } else if (isHigh(c) || isLow(c)) {
            result += HexEscape(c);
        } else {
            result += Utf8FromUtf16(text.substr(i, 1));
        }
    }
    return result += '"';
}

std::int32_t ParseInteger(std::string_view word) {
    const char* const last = word.data() + word.size();
    if (word.starts_with("0x") || word.starts_with("0X")) {
        std::uint32_t bits = 0;
        const auto [end, error] = std::from_chars(word.data() + 2, last, bits, 16);
        if (error != std::errc() || end != last)
            throw TextError("\"" + std::string(word) + "\" is not a 32-bit number");
        return static_cast<std::int32_t>(bits);
    }
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(word.data(), last, number);
    if (error != std::errc() || end != last) throw TextError("\"" + std::string(word) + "\" is not a 32-bit number");
    return number;
}

}  // namespace screenhost
