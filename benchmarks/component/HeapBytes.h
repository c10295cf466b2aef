#pragma once

#include <windows.h>

#include <array>

namespace bench {

/// Bytes in use in all heaps of the process.
inline double HeapBytes() {
    std::array<HANDLE, 256> heaps{};
    const DWORD count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    double bytes = 0;
    for (DWORD i = 0; i < count && i < heaps.size(); ++i) {
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heaps.at(i), &entry))
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += entry.cbData;
    }
    return bytes;
}

}  // namespace bench
