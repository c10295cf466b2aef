#include "win32/MessageTimer.h"

#include <windows.h>

#include <memory>
#include <mutex>
#include <utility>

#include "comkit/FlatMap.h"
#include "comkit/SlimLock.h"

namespace kiv::win32 {

namespace {

class MessageTimer;

/// Timers without a window are found by their identifier, and only by the thread that started them. A tick that was
/// posted before its timer stopped finds nothing. No variable of a thread's own: that would keep the module loaded for
/// as long as any thread that ever had a timer.
class Running {
public:
    static Running& Get() noexcept {
        static Running running;
        return running;
    }
    void Add(UINT_PTR id, MessageTimer& timer) {
        const std::lock_guard guard(m_lock);
        m_timers.Put(Key(id), &timer);
    }
    void Remove(UINT_PTR id) noexcept {
        const std::lock_guard guard(m_lock);
        m_timers.Erase(Key(id));
    }
    MessageTimer* Find(UINT_PTR id) const noexcept {
        const std::lock_guard guard(m_lock);
        MessageTimer* const* const found = m_timers.Find(Key(id));
        return found ? *found : nullptr;
    }

private:
    Running() = default;
    static std::pair<DWORD, UINT_PTR> Key(UINT_PTR id) noexcept { return {GetCurrentThreadId(), id}; }

    mutable comkit::SlimLock m_lock;
    comkit::FlatMap<std::pair<DWORD, UINT_PTR>, MessageTimer*> m_timers;
};

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
            Start();
        } else {
            Running::Get().Remove(m_id);
            KillTimer(nullptr, std::exchange(m_id, 0));
        }
    }

private:
    void Start() {
        const UINT_PTR id = SetTimer(nullptr, 0, m_lMilliseconds, &OnTimer);
        if (!id) return;
        try {
            Running::Get().Add(id, *this);
        } catch (...) {
            KillTimer(nullptr, id);
            throw;
        }
        m_id = id;
    }

    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR id, DWORD) noexcept {
        MessageTimer* const timer = Running::Get().Find(id);
        if (!timer) return;
        const std::shared_ptr<std::function<void()>> tick = timer->m_pTick;
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
