#include "screenhost/Utf8.h"

#include <cstddef>
#include <cstdint>

namespace screenhost {

namespace {

constexpr char32_t Replacement = 0xFFFD;

bool IsSurrogate(char32_t c) {
    return c >= 0xD800 && c <= 0xDFFF;
}

/// Length of the sequence that a first byte announces; 0 for a byte that cannot be first.
std::size_t SequenceLength(unsigned char first) {
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first <= 0xDF) return 2;
    if (first >= 0xE0 && first <= 0xEF) return 3;
    if (first >= 0xF0 && first <= 0xF4) return 4;
    return 0;
}

std::optional<char32_t> DecodeOne(std::string_view text, std::size_t& at) {
    const auto first = static_cast<unsigned char>(text[at]);
    const std::size_t length = SequenceLength(first);
    if (length == 0 || length > text.size() - at) return std::nullopt;
    char32_t c = length == 1 ? first : first & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[at + i]);
        if ((next & 0xC0) != 0x80) return std::nullopt;
        c = (c << 6) | (next & 0x3Fu);
    }
    constexpr char32_t Smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (c < Smallest[length] || IsSurrogate(c) || c > 0x10FFFF) return std::nullopt;
    at += length;
    return c;
}

}  // namespace

std::optional<std::u16string> Utf16FromUtf8(std::string_view text) {
    std::u16string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const auto c = DecodeOne(text, at);
        if (!c) return std::nullopt;
        if (*c < 0x10000) {
            result += static_cast<char16_t>(*c);
        } else {
            result += static_cast<char16_t>(0xD800 + ((*c - 0x10000) >> 10));
            result += static_cast<char16_t>(0xDC00 + ((*c - 0x10000) & 0x3FF));
        }
    }
    return result;
}

void AppendUtf8(std::string& out, char32_t character) {
    const char32_t c = IsSurrogate(character) || character > 0x10FFFF ? Replacement : character;
    const auto put = [&out](char32_t byte) { out += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xC0 | (c >> 6));
        put(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        put(0xE0 | (c >> 12));
        put(0x80 | ((c >> 6) & 0x3F));
        put(0x80 | (c & 0x3F));
    } else {
        put(0xF0 | (c >> 18));
        put(0x80 | ((c >> 12) & 0x3F));
        put(0x80 | ((c >> 6) & 0x3F));
        put(0x80 | (c & 0x3F));
    }
}

std::string Utf8FromUtf16(std::u16string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char32_t unit = text[i];
        const bool pair =
            unit >= 0xD800 && unit <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF;
        if (pair)
            AppendUtf8(result, 0x10000 + ((unit - 0xD800) << 10) + (text[++i] - char32_t{0xDC00}));
        else
            AppendUtf8(result, unit);
    }
    return result;
}

}  // namespace screenhost
