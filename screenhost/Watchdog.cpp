#include "screenhost/Watchdog.h"

namespace screenhost {

Watchdog::Watchdog(Transcript& transcript) : m_transcript(transcript), m_thread([this] { Watch(); }) {}

Watchdog::~Watchdog() {
    {
        const std::lock_guard lock(m_mutex);
        m_bEnd = true;
    }
    m_changed.notify_one();
    m_thread.join();
}

void Watchdog::Expect(const std::string& what, std::chrono::seconds within) {
    {
        const std::lock_guard lock(m_mutex);
        m_what = what;
        m_until = std::chrono::steady_clock::now() + within;
    }
    m_changed.notify_one();
}

void Watchdog::Rest() {
    {
        const std::lock_guard lock(m_mutex);
        m_until = std::chrono::steady_clock::time_point::max();
    }
    m_changed.notify_one();
}

void Watchdog::Watch() {
    std::unique_lock lock(m_mutex);
    while (!m_bEnd) {
        if (m_until == std::chrono::steady_clock::time_point::max()) {
            m_changed.wait(lock);
        } else if (m_changed.wait_until(lock, m_until) == std::cv_status::timeout &&
                   std::chrono::steady_clock::now() >= m_until) {
            m_transcript.Line("FAILED", "no answer any more at " + m_what);
            // Not a clean end: the thread that would do it is the one that hangs.
            TerminateProcess(GetCurrentProcess(), ExitStatus);
        }
    }
}

}  // namespace screenhost
