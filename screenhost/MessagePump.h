// The host's message loop, which scripts run inside of.
#pragma once

#include <windows.h>

#include <chrono>
#include <functional>

namespace screenhost {

class MessagePump {
public:
    /// Returns true for a message that it has dealt with.
    using Filter = std::function<bool(MSG&)>;
    void SetFilter(Filter filter) { m_filter = std::move(filter); }

    /// Until the program ends; returns its status.
    int Run();
    void RunFor(std::chrono::milliseconds time);
    /// True as soon as condition holds, false when the time is over or the program ends.
    bool RunUntil(const std::function<bool()>& condition, std::chrono::milliseconds timeout);
    /// Until nothing has happened for a moment.
    void Settle();

    bool HasQuit() const noexcept { return m_bQuit; }

private:
    /// False when nothing was there.
    bool DispatchOne();

    Filter m_filter;
    bool m_bQuit = false;
    int m_status = 0;
};

}  // namespace screenhost
