// Where the library takes the memory for exceptions from: the heap or, where that has run out, a reserve in the module.
//
// The library's own reserve is guarded by a lock that takes memory when it is first used. Without any it throws, asks
// the reserve for that exception, and so on until the stack is full. This one needs neither a lock nor memory.
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <exception>

namespace {

/// In front of each exception; more than the library keeps there in any of its variants.
constexpr std::size_t HeaderSize = 256;
constexpr std::size_t ReservedSize = 256;
constexpr std::size_t ReservedCount = 32;

struct alignas(std::max_align_t) Block {
    std::array<std::byte, HeaderSize + ReservedSize> bytes;
};

std::array<Block, ReservedCount> g_blocks;
std::array<std::atomic_flag, ReservedCount> g_taken;

void* TakeReserved(std::size_t size) noexcept {
    if (size > sizeof(Block)) return nullptr;
    for (std::size_t i = 0; i < ReservedCount; ++i)
        if (!g_taken.at(i).test_and_set()) return &g_blocks.at(i);
    return nullptr;
}

/// All zero: the library counts on it for what it keeps there.
void* Take(std::size_t size) noexcept {
    void* memory = std::malloc(size);  // NOLINT(cppcoreguidelines-no-malloc): not to throw where an exception is made
    if (!memory) memory = TakeReserved(size);
    if (!memory) std::terminate();
    return std::memset(memory, 0, size);
}

void Give(void* memory) noexcept {
    for (std::size_t i = 0; i < ReservedCount; ++i) {
        if (memory != &g_blocks.at(i)) continue;
        g_taken.at(i).clear();
        return;
    }
    std::free(memory);  // NOLINT(cppcoreguidelines-no-malloc): as it was taken
}

}  // namespace

// NOLINTBEGIN(bugprone-reserved-identifier): the library's names for them
extern "C" {
void* __cxa_allocate_dependent_exception() noexcept;
void __cxa_free_dependent_exception(void* exception) noexcept;

void* __cxa_allocate_exception(std::size_t size) noexcept {
    return static_cast<std::byte*>(Take(HeaderSize + size)) + HeaderSize;
}

void __cxa_free_exception(void* exception) noexcept {
    Give(static_cast<std::byte*>(exception) - HeaderSize);
}

void* __cxa_allocate_dependent_exception() noexcept {
    return Take(HeaderSize);
}

void __cxa_free_dependent_exception(void* exception) noexcept {
    Give(exception);
}
}
// NOLINTEND(bugprone-reserved-identifier)
