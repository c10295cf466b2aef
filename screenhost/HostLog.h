// What the controls raised, what went between them and the device, and what the host itself has to say.
//
// Lines go to the transcript as they come, except the details, which would bury the rest there. A reader that looks in
// from time to time sees them by number.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

#include "screenhost/Transcript.h"

namespace screenhost {

struct LogEntry {
    std::string time;  ///< seconds since the start, such as "12.345"
    std::string source;
    std::string text;
};

class HostLog {
public:
    static constexpr std::size_t Capacity = 5000;

    explicit HostLog(Transcript& transcript) : m_transcript(transcript) {}

    enum class Weight { Plain, Detail };
    /// source: "event", "change", "device", "host" or "error".
    void Add(std::string_view source, std::string_view text, Weight weight = Weight::Plain);

    /// Number of the next line to come. Numbers start at 0 and are never used again.
    std::size_t End() const noexcept { return m_first + m_entries.size(); }
    std::size_t Begin() const noexcept { return m_first; }
    const LogEntry& At(std::size_t number) const { return m_entries.at(number - m_first); }

    /// The first line from the given one on that contains the text, or End().
    std::size_t Find(std::string_view text, std::size_t from) const;

    Transcript& Output() noexcept { return m_transcript; }

private:
    Transcript& m_transcript;
    std::deque<LogEntry> m_entries;
    std::size_t m_first = 0;
};

}  // namespace screenhost
