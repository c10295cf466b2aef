#include "screenhost/MessagePump.h"

namespace screenhost {

namespace {

using Clock = std::chrono::steady_clock;
constexpr DWORD LookAgainMilliseconds = 15;
constexpr std::chrono::milliseconds QuietTime{60};
constexpr std::chrono::milliseconds LongestSettling{2000};

}  // namespace

bool MessagePump::DispatchOne() {
    MSG message{};
    if (m_bQuit || !PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) return false;
    if (message.message == WM_QUIT) {
        m_bQuit = true;
        m_status = static_cast<int>(message.wParam);
        return false;
    }
    if (m_filter && m_filter(message)) return true;
    TranslateMessage(&message);
    DispatchMessageW(&message);
    return true;
}

int MessagePump::Run() {
    while (!m_bQuit)
        if (!DispatchOne() && !m_bQuit) WaitMessage();
    return m_status;
}

void MessagePump::RunFor(std::chrono::milliseconds time) {
    RunUntil([] { return false; }, time);
}

bool MessagePump::RunUntil(const std::function<bool()>& condition, std::chrono::milliseconds timeout) {
    const auto end = Clock::now() + timeout;
    for (;;) {
        while (DispatchOne()) {
        }
        if (m_bQuit) return false;
        if (condition()) return true;
        if (Clock::now() >= end) return false;
        MsgWaitForMultipleObjectsEx(0, nullptr, LookAgainMilliseconds, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    }
}

void MessagePump::Settle() {
    const auto latest = Clock::now() + LongestSettling;
    auto quietSince = Clock::now();
    while (!m_bQuit && Clock::now() < latest && Clock::now() - quietSince < QuietTime) {
        if (DispatchOne())
            quietSince = Clock::now();
        else
            MsgWaitForMultipleObjectsEx(0, nullptr, LookAgainMilliseconds, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    }
}

}  // namespace screenhost
