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

}  // namespace

std::size_t AllocationCount() noexcept {
    return g_allocations;
}

#ifdef __SANITIZE_ADDRESS__

namespace {

// The sanitizer must keep its own operators, which know more than these would; it tells of each allocation instead.
void OnMalloc(const volatile void*, std::size_t) {
    ++g_allocations;
}
void OnFree(const volatile void*) {}
[[maybe_unused]] const int g_installed = __sanitizer_install_malloc_and_free_hooks(OnMalloc, OnFree);

}  // namespace

#endif

}  // namespace kiv

#ifndef __SANITIZE_ADDRESS__

// NOLINTBEGIN(cppcoreguidelines-no-malloc): what operator new is made of
void* operator new(std::size_t size) {
    ++kiv::g_allocations;
    if (void* memory = std::malloc(size != 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
// NOLINTEND(cppcoreguidelines-no-malloc)

#endif
