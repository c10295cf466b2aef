// What this process holds of memory and of the system's drawing objects, to find out what is left behind.
#pragma once

#include <windows.h>

#include <vector>

namespace component {

struct Holdings {
    long heapBlocks = 0;
    long gdiObjects = 0;
};

inline long HeapBlocks() {
    std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr));
    heaps.resize(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
    long blocks = 0;
    for (const HANDLE heap : heaps) {
        HeapLock(heap);
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heap, &entry)) blocks += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0;
        HeapUnlock(heap);
    }
    return blocks;
}

/// GetGuiResources answers nothing in some environments: every handle value is tried instead.
inline long GdiObjects() {
    long objects = 0;
    for (ULONG_PTR handle = 1; handle <= 0xFFFF; ++handle)
        objects += GetObjectType(reinterpret_cast<HGDIOBJ>(handle)) != 0;
    return objects;
}

/// The same of the system's other objects: events, files, keys, threads.
inline long KernelHandles() {
    long handles = 0;
    DWORD flags = 0;
    for (ULONG_PTR handle = 4; handle <= 0x8000; handle += 4)
        handles += GetHandleInformation(reinterpret_cast<HANDLE>(handle), &flags) != 0;
    return handles;
}

inline BOOL CALLBACK CountOwnWindow(HWND window, LPARAM sum) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    *reinterpret_cast<long*>(sum) += process == GetCurrentProcessId();
    return TRUE;
}

/// Of this process, at whatever depth.
inline long Windows() {
    long windows = 0;
    EnumChildWindows(GetDesktopWindow(), &CountOwnWindow, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

inline Holdings CountHoldings() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    return {HeapBlocks(), GdiObjects()};
}

/// What is gained by the cycles after the first ones, which may fill caches.
template <class Cycle>
Holdings Gain(int cycles, Cycle cycle, int firstOnes = 100) {
    for (int i = 0; i < firstOnes; ++i) cycle();
    const Holdings before = CountHoldings();
    for (int i = 0; i < cycles; ++i) cycle();
    const Holdings after = CountHoldings();
    return {after.heapBlocks - before.heapBlocks, after.gdiObjects - before.gdiObjects};
}

}  // namespace component
