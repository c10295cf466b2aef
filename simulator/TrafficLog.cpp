#include "simulator/TrafficLog.h"

#include <utility>

namespace vexa {

void TrafficLog::Add(std::u16string line) {
    m_lines.push_back(std::move(line));
    if (m_lines.size() <= Capacity) return;
    m_lines.pop_front();
    ++m_dropped;
}

void TrafficLog::Clear() noexcept {
    m_lines.clear();
    m_dropped = 0;
}

const std::u16string* TrafficLog::Line(std::size_t index) const noexcept {
    if (index < m_dropped || index - m_dropped >= m_lines.size()) return nullptr;
    return &m_lines[index - m_dropped];
}

}  // namespace vexa
