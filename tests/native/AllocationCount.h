// Counts what a test's thread takes from the heap, and lets it fail.
#pragma once

#include <cstddef>

namespace kiv {

/// Allocations by the calling thread since it started, with sanitizers and without.
std::size_t AllocationCount() noexcept;

/// Whether allocations can be made to fail: not with sanitizers, which keep their own operators.
bool CanFailAllocations() noexcept;

/// Allocations of the calling thread that were not given back so far. Always 0 with sanitizers.
long LivingAllocations() noexcept;

/// From now on, the calling thread's n-th allocation throws std::bad_alloc; and all behind it where it is sticky.
void FailAllocation(std::size_t n, bool sticky) noexcept;

/// Ends that; whether any allocation failed.
bool StopFailing() noexcept;

}  // namespace kiv
