// What one more control takes of the process's heaps.
#include <KivDateTime.h>
#include <oleidl.h>

#include <array>
#include <cstddef>
#include <vector>

#include "Benchmarks.h"
#include "benchmarks/Comparison.h"
#include "comkit/ComPtr.h"

namespace bench {

namespace {

using comkit::ComPtr;

/// Bytes in use in all heaps.
double HeapBytes() {
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

ComPtr<IUnknown> Loaded(IClassFactory& factory) {
    ComPtr<IUnknown> control;
    factory.CreateInstance(nullptr, IID_IUnknown, control.PutVoid());
    ComPtr<IPersistStreamInit>::From(control.Get())->InitNew();
    return control;
}

}  // namespace

void RunMemory(IClassFactory& factory) {
    constexpr int Count = 200;
    constexpr double FourKilobytes = 4096;
    const auto first = Loaded(factory);  // what all of them share is there already
    Comparison comparison;
    for (int round = 0; round < 5; ++round) {
        std::vector<ComPtr<IUnknown>> controls(Count);
        const double before = HeapBytes();
        for (auto& control : controls) control = Loaded(factory);
        comparison.Add((HeapBytes() - before) / Count, FourKilobytes);
    }
    comparison.Print({"memory of one more show control", "4,096 bytes", 1}, "bytes");
}

}  // namespace bench
