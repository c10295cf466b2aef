// A lock of the system's, for std::lock_guard: it needs no set-up, never fails and throws nothing. std::mutex does the
// same, but what it throws brings half a megabyte of the library into a component.
#pragma once

#include <windows.h>

namespace comkit {

class SlimLock {
public:
    constexpr SlimLock() noexcept = default;
    SlimLock(const SlimLock&) = delete;
    SlimLock& operator=(const SlimLock&) = delete;
    ~SlimLock() = default;

    // The names that std::lock_guard asks for.
    void lock() noexcept { AcquireSRWLockExclusive(&m_lock); }
    void unlock() noexcept { ReleaseSRWLockExclusive(&m_lock); }
    /// For whoever holds it: lets others in until they wake the condition's waiters.
    void WaitFor(CONDITION_VARIABLE& condition) noexcept {
        SleepConditionVariableSRW(&condition, &m_lock, INFINITE, 0);
    }

private:
    SRWLOCK m_lock = SRWLOCK_INIT;
};

}  // namespace comkit
