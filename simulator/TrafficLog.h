// What went to and fro between the controls and the simulated framework, one line of readable text for each.
//
//   read definition 5: LM 1, type 1, nvoMonth [Clock.Month]
//   write definition 5: LM 1, type 0, nviSetMonth [SetClock.Month]
//   write-enable 5: True
//   write value 5: nviSetMonth = 7 (NoDisplay, UseCurrent)
//   value 5: nvoMonth = 7                                         (delivered to the control)
//
// The number is the element's index. A call that failed has " failed: " and the reason at its end. Lines are numbered
// from 0 since the last Clear; only the newest Capacity lines are kept.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vexa {

class TrafficLog {
public:
    static constexpr std::size_t Capacity = 2000;

    void Add(std::u16string line);
    void Clear() noexcept;
    /// Lines since the last Clear, the dropped ones included.
    std::size_t Count() const noexcept { return m_count; }
    /// Null for a line that was dropped or not yet written.
    const std::u16string* Line(std::size_t index) const noexcept;

private:
    std::vector<std::u16string> m_lines;  ///< line n stands at n modulo Capacity
    std::size_t m_count = 0;
};

}  // namespace vexa
