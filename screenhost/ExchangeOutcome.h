// What became of reading from the device or of writing to it, told from the lines of the device's log.
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>

namespace screenhost {

class ExchangeOutcome {
public:
    enum class Kind { Read, Write };
    explicit ExchangeOutcome(Kind kind) noexcept : m_kind(kind) {}

    Kind What() const noexcept { return m_kind; }
    /// A line of the device's log. True where it tells of a value that counts: one more variable read, a value written
    /// or refused.
    bool Take(std::string_view line);

    std::size_t Done() const noexcept { return m_done; }
    std::size_t Refused() const noexcept { return m_refused; }
    /// The outcome so far, a sentence for the status bar.
    std::string Text() const;

private:
    std::string TextOfRead() const;
    std::string TextOfWrite() const;

    Kind m_kind;
    std::set<std::string, std::less<>> m_read;  ///< the running clock's parts arrive again and again
    std::size_t m_done = 0;
    std::size_t m_refused = 0;
    std::string m_reason;  ///< of the first refusal
};

}  // namespace screenhost
