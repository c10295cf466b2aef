// How long a show control's text takes: against a writer of the same text that knows nothing but that text, and an
// arriving value that changes nothing against the building of the text that it costs.
#include <benchmark/benchmark.h>

#include <array>
#include <string_view>

#include "common/MemoryBag.h"
#include "headless/HeadlessShowPlatform.h"
#include "showcontrol/DisplayFormatter.h"
#include "showcontrol/ShowControl.h"

namespace kiv {
namespace {

class NoEvents final : public ShowControlEvents {
    void Click() override {}
    void DblClick() override {}
    void KeyUp(std::int16_t& /*keyCode*/, std::int16_t& /*shift*/) override {}
    void KeyPress(std::int16_t& /*keyAscii*/) override {}
    void KeyDown(std::int16_t& /*keyCode*/, std::int16_t& /*shift*/) override {}
    void MouseDown(std::int16_t& /*b*/, std::int16_t& /*s*/, float& /*x*/, float& /*y*/) override {}
    void MouseMove(std::int16_t& /*b*/, std::int16_t& /*s*/, float& /*x*/, float& /*y*/) override {}
    void MouseUp(std::int16_t& /*b*/, std::int16_t& /*s*/, float& /*x*/, float& /*y*/) override {}
    void ValueChange() override {}
};

constexpr DateTimeNumbers Numbers{13, 5, 9, 11, 5, 2026};

char* WriteTwoDigits(char* at, int value) {
    at[0] = static_cast<char>('0' + value / 10);
    at[1] = static_cast<char>('0' + value % 10);
    return at + 2;
}

/// "05-NOV-2026"
void DateByHand(benchmark::State& state) {
    static constexpr std::string_view Months = "JANFEBMARAPRMAYJUNJULAUGSEPOCTNOVDEC";
    std::array<char, 16> text{};
    DateTimeNumbers numbers = Numbers;
    for (auto _ : state) {
        benchmark::DoNotOptimize(numbers);
        char* at = WriteTwoDigits(text.data(), numbers.day);
        *at++ = '-';
        at += Months.substr(3 * static_cast<std::size_t>(numbers.month - 1)).copy(at, 3);
        *at++ = '-';
        at = WriteTwoDigits(at, numbers.year / 100);
        at = WriteTwoDigits(at, numbers.year % 100);
        benchmark::DoNotOptimize(at);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(DateByHand);

/// "01:05:09 PM"
void TimeByHand(benchmark::State& state) {
    std::array<char, 16> text{};
    DateTimeNumbers numbers = Numbers;
    for (auto _ : state) {
        benchmark::DoNotOptimize(numbers);
        const int hour = numbers.hour % 12;
        char* at = WriteTwoDigits(text.data(), hour == 0 ? 12 : hour);
        *at++ = ':';
        at = WriteTwoDigits(at, numbers.minute);
        *at++ = ':';
        at = WriteTwoDigits(at, numbers.second);
        std::string_view(numbers.hour < 12 ? " AM" : " PM").copy(at, 3);
        benchmark::DoNotOptimize(at);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(TimeByHand);

/// As a control builds it: the numbers are corrected each time.
void BuildText(benchmark::State& state, std::int32_t mode, bool longDay) {
    DisplayFormatter formatter;
    DisplaySettings settings;
    settings.dayFirst = true;
    settings.showSeconds = true;
    settings.showLongDay = longDay;
    formatter.Configure(settings, headless::HeadlessRegionalNames());
    DateTimeNumbers numbers = Numbers;
    for (auto _ : state) {
        benchmark::DoNotOptimize(numbers);
        ClampDateTime(numbers, settings.showSeconds);
        benchmark::DoNotOptimize(formatter.FormatCaption(mode, false, numbers));
        benchmark::ClobberMemory();
    }
}
BENCHMARK_CAPTURE(BuildText, Date, sdtShowDateOnly, false);
BENCHMARK_CAPTURE(BuildText, Time, sdtShowTimeOnly, false);
BENCHMARK_CAPTURE(BuildText, DateWithWeekday, sdtShowDateOnly, true);
BENCHMARK_CAPTURE(BuildText, TimeWithWeekday, sdtShowTimeOnly, true);

void ArrivingValue(benchmark::State& state, const char16_t* first, const char16_t* second) {
    headless::HeadlessShowPlatform world;
    NoEvents host;
    ShowControl control(world.Platform(), host);
    control.InitProperties();
    (void)control.DataVariableName(0);  // the framework is there from now on
    bool odd = false;
    for (auto _ : state) {
        odd = !odd;
        world.framework.Deliver(5, odd ? first : second);
    }
}
BENCHMARK_CAPTURE(ArrivingValue, ThatChangesNothing, u"5", u"5");
BENCHMARK_CAPTURE(ArrivingValue, ThatChangesTheText, u"5", u"6");

/// With a framework that is not there, as on a screen of many.
void CreateLoadAndDestroy(benchmark::State& state) {
    headless::HeadlessShowPlatform world;
    world.framework.fails = [](const std::string&) { return true; };
    NoEvents host;
    const MemoryBag bag;
    for (auto _ : state) {
        ShowControl control(world.Platform(), host);
        control.ReadProperties(bag);
        benchmark::DoNotOptimize(control.Mode());
    }
}
BENCHMARK(CreateLoadAndDestroy);

}  // namespace
}  // namespace kiv

BENCHMARK_MAIN();
