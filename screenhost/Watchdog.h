// Ends a program that hangs while nobody is there to close it, and says where it was.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

#include "screenhost/Transcript.h"

namespace screenhost {

class Watchdog {
public:
    static constexpr unsigned ExitStatus = 3;

    /// Watches nothing until it is told what to expect.
    explicit Watchdog(Transcript& transcript);
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;
    ~Watchdog();

    /// Something that ought to be over, or followed by the next thing, within the time.
    void Expect(const std::string& what, std::chrono::seconds within);
    void Rest();

private:
    void Watch();

    Transcript& m_transcript;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::string m_what;
    std::chrono::steady_clock::time_point m_until = std::chrono::steady_clock::time_point::max();
    bool m_bEnd = false;
    std::thread m_thread;
};

}  // namespace screenhost
