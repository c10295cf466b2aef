// Counts what a test's thread takes from the heap.
#pragma once

#include <cstddef>

namespace kiv {

/// Allocations by the calling thread since it started, with sanitizers and without.
std::size_t AllocationCount() noexcept;

}  // namespace kiv
