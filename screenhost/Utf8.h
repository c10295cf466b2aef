// Between UTF-8, in which files, messages and transcripts are written, and UTF-16, in which properties are kept.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace screenhost {

/// Nothing when the text is not well-formed UTF-8 (overlong forms and encoded surrogates included).
std::optional<std::u16string> Utf16FromUtf8(std::string_view text);

/// A lone surrogate becomes U+FFFD.
std::string Utf8FromUtf16(std::u16string_view text);

/// Appends one character. Surrogates and values beyond U+10FFFF become U+FFFD.
void AppendUtf8(std::string& out, char32_t character);

}  // namespace screenhost
