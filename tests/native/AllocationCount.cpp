#include "AllocationCount.h"

#include <cstdlib>
#include <new>

#ifdef __SANITIZE_ADDRESS__
// Part of the sanitizer's run time, which has no header of its own for it.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the run time's name
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*onMalloc)(const volatile void*, std::size_t),
                                                         void (*onFree)(const volatile void*));
#endif

namespace kiv {
namespace {

thread_local std::size_t g_allocations = 0;
[[maybe_unused]] thread_local long g_living = 0;
thread_local std::size_t g_failAt = 0;  ///< counts down; 0: none fails
thread_local bool g_sticky = false;
thread_local bool g_hasFailed = false;

/// Whether the allocation that is being made is to fail.
[[maybe_unused]] bool Fails() noexcept {
    if (g_failAt == 0 || --g_failAt != 0) return false;
    if (g_sticky) g_failAt = 1;
    g_hasFailed = true;
    return true;
}

}  // namespace

std::size_t AllocationCount() noexcept {
    return g_allocations;
}

long LivingAllocations() noexcept {
    return g_living;
}

void FailAllocation(std::size_t n, bool sticky) noexcept {
    g_failAt = n;
    g_sticky = sticky;
    g_hasFailed = false;
}

bool StopFailing() noexcept {
    g_failAt = 0;
    return g_hasFailed;
}

#ifdef __SANITIZE_ADDRESS__

bool CanFailAllocations() noexcept {
    return false;
}

namespace {

// The sanitizer must keep its own operators, which know more than these would; it tells of each allocation instead.
void OnMalloc(const volatile void*, std::size_t) {
    ++g_allocations;
}
void OnFree(const volatile void*) {}
[[maybe_unused]] const int g_installed = __sanitizer_install_malloc_and_free_hooks(OnMalloc, OnFree);

}  // namespace

#else

bool CanFailAllocations() noexcept {
    return true;
}

#endif

}  // namespace kiv

#ifndef __SANITIZE_ADDRESS__

// NOLINTBEGIN(cppcoreguidelines-no-malloc): what operator new is made of
void* operator new(std::size_t size) {
    ++kiv::g_allocations;
    if (kiv::Fails()) throw std::bad_alloc();
    if (void* memory = std::malloc(size != 0 ? size : 1)) {
        ++kiv::g_living;
        return memory;
    }
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    kiv::g_living -= memory ? 1 : 0;
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}
// NOLINTEND(cppcoreguidelines-no-malloc)

#endif
