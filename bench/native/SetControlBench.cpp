// How long the portable part of a set control takes to load, to save, and to take a value from the device.
#include <benchmark/benchmark.h>

#include "common/MemoryBag.h"
#include "common/PropertyStream.h"
#include "headless/HeadlessPlatform.h"
#include "setcontrol/SetControl.h"

namespace kiv {
namespace {

class NoEvents final : public SetControlEvents {
    void Click() override {}
    void DblClick() override {}
    void KeyUp(std::int16_t& /*keyCode*/, std::int16_t& /*shift*/) override {}
    void KeyPress(std::int16_t& /*keyAscii*/) override {}
    void KeyDown(std::int16_t& /*keyCode*/, std::int16_t& /*shift*/) override {}
    void MouseDown(std::int16_t& /*b*/, std::int16_t& /*s*/, float& /*x*/, float& /*y*/) override {}
    void MouseMove(std::int16_t& /*b*/, std::int16_t& /*s*/, float& /*x*/, float& /*y*/) override {}
    void MouseUp(std::int16_t& /*b*/, std::int16_t& /*s*/, float& /*x*/, float& /*y*/) override {}
    void GetDeviceDateTime(Value& /*dtNow*/, bool& /*bEnableDST*/) override {}
};

struct Screen {
    explicit Screen(bool userMode) {
        world.container.userMode = userMode;
        control.InitProperties();
        // The framework in memory writes down its calls; nobody reads them here.
        world.framework.TakeCalls();
    }
    headless::HeadlessPlatform world;
    NoEvents host;
    SetControl control{world.Platform(), host};
};

void LoadInDesigner(benchmark::State& state) {
    Screen screen(false);
    const MemoryBag bag;
    for (auto _ : state) screen.control.ReadProperties(bag);
}
BENCHMARK(LoadInDesigner);

void LoadAtRunTime(benchmark::State& state) {
    Screen screen(true);
    const MemoryBag bag;
    for (auto _ : state) {
        screen.control.ReadProperties(bag);
        screen.world.framework.calls.clear();
    }
}
BENCHMARK(LoadAtRunTime);

void SaveAllToStream(benchmark::State& state) {
    Screen screen(false);
    for (auto _ : state) {
        MemoryBag bag(true);
        screen.control.WriteProperties(bag);
        benchmark::DoNotOptimize(EncodeProperties(bag));
    }
}
BENCHMARK(SaveAllToStream);

void CreateAndDestroy(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(Screen(true).control.Mode());
}
BENCHMARK(CreateAndDestroy);

void DayArrives(benchmark::State& state) {
    Screen screen(true);
    screen.control.SetUsePCDateTime(false);
    screen.control.SetDataVariableName(6, u"nvoDay");
    bool odd = false;
    for (auto _ : state) {
        odd = !odd;
        screen.world.framework.Deliver(6, odd ? u"31" : u"30");
        screen.world.framework.calls.clear();
    }
}
BENCHMARK(DayArrives);

}  // namespace
}  // namespace kiv

BENCHMARK_MAIN();
