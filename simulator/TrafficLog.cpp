#include "simulator/TrafficLog.h"

#include <utility>

namespace vexa {

void TrafficLog::Add(std::u16string line) {
    if (m_lines.size() < Capacity)
        m_lines.push_back(std::move(line));
    else
        m_lines[m_count % Capacity] = std::move(line);
    ++m_count;
}

void TrafficLog::Clear() noexcept {
    m_lines.clear();
    m_count = 0;
}

const std::u16string* TrafficLog::Line(std::size_t index) const noexcept {
    const std::size_t dropped = m_count - m_lines.size();
    return index < dropped || index >= m_count ? nullptr : &m_lines[index % Capacity];
}

}  // namespace vexa
