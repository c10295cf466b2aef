#include "win32/MessageTimer.h"

#include <windows.h>

#include <map>
#include <memory>
#include <utility>

namespace kiv::win32 {

namespace {

class MessageTimer final : public Timer {
public:
    MessageTimer(std::uint32_t milliseconds, std::function<void()> tick)
        : m_lMilliseconds(milliseconds), m_pTick(std::make_shared<std::function<void()>>(std::move(tick))) {}
    MessageTimer(const MessageTimer&) = delete;
    MessageTimer& operator=(const MessageTimer&) = delete;
    ~MessageTimer() override { SetEnabled(false); }

    bool IsEnabled() const override { return m_id != 0; }

    void SetEnabled(bool enabled) override {
        if (enabled == IsEnabled()) return;
        if (enabled) {
            m_id = SetTimer(nullptr, 0, m_lMilliseconds, &OnTimer);
            if (m_id) Running().emplace(m_id, this);
        } else {
            Running().erase(m_id);
            KillTimer(nullptr, std::exchange(m_id, 0));
        }
    }

private:
    // Timers without a window are found by their identifier, and only by the thread that started them. A tick that was
    // posted before its timer stopped finds nothing.
    static std::map<UINT_PTR, MessageTimer*>& Running() {
        static thread_local std::map<UINT_PTR, MessageTimer*> running;
        return running;
    }

    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR id, DWORD) noexcept {
        const auto found = Running().find(id);
        if (found == Running().end()) return;
        const std::shared_ptr<std::function<void()>> tick = found->second->m_pTick;
        try {
            (*tick)();
        } catch (...) {
            // Nobody waits for the result of a tick.
            return;
        }
    }

    std::uint32_t m_lMilliseconds;
    std::shared_ptr<std::function<void()>> m_pTick;  ///< held by a running tick too, which may destroy the timer
    UINT_PTR m_id = 0;
};

}  // namespace

std::unique_ptr<Timer> MessageTimerFactory::CreateTimer(std::uint32_t milliseconds, std::function<void()> tick) {
    return std::make_unique<MessageTimer>(milliseconds, std::move(tick));
}

}  // namespace kiv::win32
