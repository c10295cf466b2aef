// What one more control takes of the process's heaps.
#include <KivDateTime.h>
#include <oleidl.h>

#include <vector>

#include "Benchmarks.h"
#include "benchmarks/Comparison.h"
#include "comkit/ComPtr.h"
#include "HeapBytes.h"

namespace bench {

namespace {

using comkit::ComPtr;

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
