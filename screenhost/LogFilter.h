// Which lines of the log are shown: those that contain every word of the filter.
//
// Words are separated by blanks; a text in quotation marks is one word. A word with a minus sign in front must not
// occur. Case does not count, for the letters of ASCII.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace screenhost {

class LogFilter {
public:
    /// Shows everything.
    LogFilter() = default;
    /// Any text makes a filter: a quotation mark that is never closed ends with the text.
    explicit LogFilter(std::string_view text);

    bool IsEmpty() const noexcept { return m_words.empty(); }
    /// A word may occur in the line's source or in its text.
    bool Matches(std::string_view source, std::string_view text) const;

private:
    struct Word {
        std::string text;
        bool wanted;
    };
    std::vector<Word> m_words;
};

}  // namespace screenhost
