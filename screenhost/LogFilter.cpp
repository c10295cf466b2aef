#include "screenhost/LogFilter.h"

#include <algorithm>

#include "screenhost/TextCursor.h"

namespace screenhost {

namespace {

char Lower(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool Contains(std::string_view text, std::string_view word) {
    const auto isSame = [](char left, char right) { return Lower(left) == Lower(right); };
    return std::search(text.begin(), text.end(), word.begin(), word.end(), isSame) != text.end();
}

/// The word at the beginning, which is taken away.
std::string_view TakeWord(std::string_view& rest) {
    const bool isQuoted = rest.starts_with('"');
    if (isQuoted) rest.remove_prefix(1);
    const std::size_t end = std::min(isQuoted ? rest.find('"') : rest.find_first_of(" \t"), rest.size());
    const std::string_view word = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return word;
}

}  // namespace

LogFilter::LogFilter(std::string_view text) {
    while (!text.empty()) {
        if (IsBlank(text.front())) {
            text.remove_prefix(1);
            continue;
        }
        // A minus sign alone is a word that somebody is about to type.
        const bool isUnwanted = text.starts_with('-');
        if (isUnwanted) text.remove_prefix(1);
        if (const std::string_view word = TakeWord(text); !word.empty())
            m_words.push_back({std::string(word), !isUnwanted});
    }
}

bool LogFilter::Matches(std::string_view source, std::string_view text) const {
    return std::ranges::all_of(m_words, [&](const Word& word) {
        return (Contains(source, word.text) || Contains(text, word.text)) == word.wanted;
    });
}

}  // namespace screenhost
