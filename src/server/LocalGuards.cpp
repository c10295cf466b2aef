// Who makes a function-local variable where several threads come to it at once.
//
// The library's own version takes memory for its lock when it is first used and ends the process without. It also
// brings all of a thread library along, which keeps an index of thread-local storage when the module is unloaded: after
// about a thousand loads in one process there was none left.
#include <cxxabi.h>
#include <windows.h>

#include <atomic>
#include <mutex>

#include "comkit/SlimLock.h"

namespace {

/// One for all: to wait for another thread's variable is rare, and making one may make others.
comkit::SlimLock g_lock;
CONDITION_VARIABLE g_ended = CONDITION_VARIABLE_INIT;

/// As the language's binary interface has it: the first byte of the guard tells that the variable is there.
struct Guard {
    unsigned char made;
    unsigned char inTheMaking;
};

std::atomic_ref<unsigned char> MadeOf(Guard& guard) noexcept {
    return std::atomic_ref(guard.made);
}

/// Whether the caller is the one who makes it; it calls End then.
bool Begin(Guard& guard) noexcept {
    if (MadeOf(guard).load(std::memory_order_acquire) != 0) return false;
    const std::lock_guard lock(g_lock);
    while (guard.inTheMaking != 0) g_lock.WaitFor(g_ended);
    if (guard.made != 0) return false;
    guard.inTheMaking = 1;
    return true;
}

void End(Guard& guard, bool made) noexcept {
    {
        const std::lock_guard lock(g_lock);
        guard.inTheMaking = 0;
        if (made) MadeOf(guard).store(1, std::memory_order_release);
    }
    WakeAllConditionVariable(&g_ended);
}

}  // namespace

// NOLINTBEGIN(bugprone-reserved-identifier): the library's names for them
namespace __cxxabiv1 {

int __cxa_guard_acquire(__guard* guard) {
    return Begin(*reinterpret_cast<Guard*>(guard)) ? 1 : 0;
}

void __cxa_guard_release(__guard* guard) noexcept {
    End(*reinterpret_cast<Guard*>(guard), true);
}

void __cxa_guard_abort(__guard* guard) noexcept {
    End(*reinterpret_cast<Guard*>(guard), false);
}

}  // namespace __cxxabiv1

#ifndef _WIN64
// The same for what the library sets up before the first exception, where it unwinds the stack itself.
extern "C" int pthread_once(long* once, void (*make)());
extern "C" int pthread_once(long* once, void (*make)()) {
    Guard& guard = *reinterpret_cast<Guard*>(once);
    if (Begin(guard)) {
        make();
        End(guard, true);
    }
    return 0;
}
#endif
// NOLINTEND(bugprone-reserved-identifier)
