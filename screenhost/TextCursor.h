// Reads one line of a screen or script file from left to right.
//
// Every reader throws TextError with a message that needs no more than the line's number in front of it.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace screenhost {

/// A line that cannot be understood, or a value that cannot be written.
class TextError final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// ASCII only: the same on every machine and in every locale.
bool EqualWithoutCase(std::string_view a, std::string_view b) noexcept;
bool IsBlank(char c) noexcept;

/// Calls use(line, terminator) for each line. The terminator is "\n", "\r\n" or, for the last line only, "".
template <class Use>
void ForEachLine(std::string_view text, Use&& use) {
    while (!text.empty()) {
        const std::size_t feed = text.find('\n');
        if (feed == std::string_view::npos) return use(text, std::string_view());
        const std::size_t end = feed > 0 && text[feed - 1] == '\r' ? feed - 1 : feed;
        use(text.substr(0, end), text.substr(end, feed + 1 - end));
        text.remove_prefix(feed + 1);
    }
}

class TextCursor {
public:
    /// The text must outlive the cursor.
    explicit TextCursor(std::string_view text) noexcept : m_text(text) {}

    void SkipBlanks() noexcept;
    /// True at the end of the line and before a comment.
    bool AtEnd() const noexcept { return m_at >= m_text.size() || m_text[m_at] == ';'; }
    /// The next character; 0 at the end.
    char Peek() const noexcept { return m_at < m_text.size() ? m_text[m_at] : '\0'; }
    /// Takes c if it is next.
    bool Take(char c) noexcept;
    void Expect(char c, const char* what);
    void ExpectEnd();
    std::string_view Rest() const noexcept { return m_text.substr(m_at); }

    /// Letters, digits, underscore, dot and minus sign; may be empty.
    std::string_view ReadWord() noexcept;
    /// Everything up to the next blank, or a text in quotes; a word of a script.
    std::string ReadArgument();
    /// A text in quotes, with its escapes resolved: \" \\ \n \r \t \uXXXX.
    std::u16string ReadQuoted();

private:
    void AppendEscape(std::u16string& result);

    std::string_view m_text;
    std::size_t m_at = 0;
};

/// The text in quotes as ReadQuoted reads it back, lone surrogates and control characters included.
std::string Quoted(std::u16string_view text);

/// Whole numbers: decimal, or hexadecimal with 0x, which then names the 32 bits. Throws TextError.
std::int32_t ParseInteger(std::string_view word);

}  // namespace screenhost
