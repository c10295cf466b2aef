#include "screenhost/HostLog.h"

#include <algorithm>

namespace screenhost {

void HostLog::Add(std::string_view source, std::string_view text, Weight weight) {
    if (weight == Weight::Plain) m_transcript.Line(source, text);
    const auto elapsed = m_transcript.Elapsed().count();
    std::string thousandths = std::to_string(elapsed % 1000);
    thousandths.insert(0, 3 - thousandths.size(), '0');
    m_entries.push_back({std::to_string(elapsed / 1000) + "." + thousandths, std::string(source), std::string(text)});
    if (m_entries.size() > Capacity) {
        m_entries.pop_front();
        ++m_first;
    }
}

std::size_t HostLog::Find(std::string_view text, std::size_t from) const {
    for (std::size_t number = std::max(from, m_first); number < End(); ++number)
        if (At(number).text.find(text) != std::string::npos) return number;
    return End();
}

}  // namespace screenhost
