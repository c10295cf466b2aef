#include "server/ExceptionState.h"

#include <windows.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdlib>

namespace kiv::server {

namespace {

/// As the language's binary interface has it.
struct ExceptionState {
    void* caught;
    unsigned int uncaught;
};

struct Place {
    std::atomic<DWORD> thread;  ///< 0: free
    ExceptionState state;
};

// The library's own variable of each thread is made when a thread first throws, and ends the process where there is no
// memory for it: at the very moment at which an exception is to tell of that.
constexpr std::size_t MostThreads = 1024;
std::array<Place, MostThreads> g_places;

Place* PlaceOf(DWORD thread) noexcept {
    for (Place& place : g_places)
        if (place.thread == thread) return &place;
    return nullptr;
}

Place& TakePlace(DWORD thread) noexcept {
    for (Place& place : g_places) {
        DWORD nobody = 0;
        if (place.thread.compare_exchange_strong(nobody, thread)) return place;
    }
    std::abort();  // more threads than a process with a user interface ever has
}

ExceptionState* StateOfThread() noexcept {
    const DWORD self = GetCurrentThreadId();
    Place* const known = PlaceOf(self);
    return known ? &known->state : &TakePlace(self).state;
}

}  // namespace

void ForgetExceptionsOfThread() noexcept {
    Place* const place = PlaceOf(GetCurrentThreadId());
    if (!place) return;
    place->state = {};
    place->thread = 0;
}

}  // namespace kiv::server

// NOLINTBEGIN(bugprone-reserved-identifier): the library's names for them
extern "C" {
void* __cxa_get_globals() noexcept;
void* __cxa_get_globals_fast() noexcept;

void* __cxa_get_globals() noexcept {
    return kiv::server::StateOfThread();
}

void* __cxa_get_globals_fast() noexcept {
    return kiv::server::StateOfThread();
}
}
// NOLINTEND(bugprone-reserved-identifier)
