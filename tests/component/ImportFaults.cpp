#include "ImportFaults.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

#include "ImportFaultPoints.h"
#include "ImportNames.h"

namespace component {

namespace {

constexpr std::size_t PointCount = std::tuple_size_v<decltype(FaultPoints)>;

struct Faults {
    DWORD thread = 0;
    bool counting = false;
    FaultPlan plan;
    bool armed = false;
    long left = 0;  ///< calls up to the one that fails
    long failed = 0;
    std::array<long, PointCount> calls{};
    std::array<void*, PointCount> originals{};
    TIMERPROC timer = nullptr;
    UINT_PTR timerId = 0;
};
Faults g_faults;

bool Fails(std::size_t point, FaultKind kind) noexcept {
    Faults& f = g_faults;
    if (!f.counting || GetCurrentThreadId() != f.thread) return false;
    ++f.calls.at(point);
    if (!f.armed ||
        (f.plan.function != point && !(f.plan.function == ImportFaults::AnyMemory && kind == FaultKind::Memory)))
        return false;
    if (f.left > 0 && --f.left > 0) return false;
    f.armed = f.plan.sticky;
    ++f.failed;
    return true;
}

template <std::size_t Point, class F>
struct Wrapper;

template <std::size_t Point, class F, class... A>
auto Forward(A... arguments) noexcept {
    constexpr const auto& point = std::get<Point>(FaultPoints);
    if (Fails(Point, point.kind)) {
        SetLastError(point.lastError);
        return point.failure;
    }
    const auto result = reinterpret_cast<F>(g_faults.originals[Point])(arguments...);
    if constexpr (std::is_same_v<F, decltype(&SetTimer)>) {
        g_faults.timer = std::get<3>(std::tuple(arguments...));
        g_faults.timerId = result;
    }
    return result;
}

template <std::size_t Point, class R, class... A>
struct Wrapper<Point, R(WINAPI*)(A...)> {
    static R WINAPI Call(A... arguments) noexcept { return Forward<Point, R(WINAPI*)(A...)>(arguments...); }
};
#ifndef _WIN64
template <std::size_t Point, class R, class... A>
struct Wrapper<Point, R(__cdecl*)(A...)> {
    static R __cdecl Call(A... arguments) noexcept { return Forward<Point, R(__cdecl*)(A...)>(arguments...); }
};
#endif

template <std::size_t... Point>
std::vector<void*> WrappersOf(std::index_sequence<Point...>) {
    return {reinterpret_cast<void*>(
        &Wrapper<Point, typename std::tuple_element_t<Point, decltype(FaultPoints)>::Function>::Call)...};
}

template <std::size_t... Point>
std::vector<FaultFunction> FunctionsOf(std::index_sequence<Point...>) {
    return {FaultFunction{std::get<Point>(FaultPoints).name, std::get<Point>(FaultPoints).kind}...};
}

std::size_t PointOf(std::string_view name) {
    const std::vector<FaultFunction>& functions = ImportFaults::Functions();
    std::size_t point = 0;
    while (point < functions.size() && functions[point].name != name) ++point;
    return point;
}

std::vector<std::string_view> NamesLeftAlone() {
    std::vector<std::string_view> names;
    for (const ImportsLeftAlone& group : LeftAlone) {
        std::string_view left = group.names;
        while (!left.empty()) {
            const std::size_t end = std::min(left.find(' '), left.size());
            names.push_back(left.substr(0, end));
            left.remove_prefix(std::min(end + 1, left.size()));
        }
    }
    return names;
}

void Write(void** slot, void* value) {
    DWORD former = 0;
    VirtualProtect(slot, sizeof(*slot), PAGE_READWRITE, &former);
    *slot = value;
    VirtualProtect(slot, sizeof(*slot), former, &former);
}

}  // namespace

ImportFaults::ImportFaults(HMODULE module) {
    static const std::vector<void*> wrappers = WrappersOf(std::make_index_sequence<PointCount>());
    g_faults = {};
    g_faults.thread = GetCurrentThreadId();
    VisitImports(module, [this](const char*, const char* name, void** slot) {
        const std::size_t point = PointOf(name);
        if (point == PointCount) return;
        m_replaced.push_back({slot, *slot});
        g_faults.originals.at(point) = *slot;
        Write(slot, wrappers.at(point));
    });
}

ImportFaults::~ImportFaults() {
    for (const Replaced& each : m_replaced) Write(each.slot, each.original);
}

const std::vector<FaultFunction>& ImportFaults::Functions() {
    static const std::vector<FaultFunction> functions = FunctionsOf(std::make_index_sequence<PointCount>());
    return functions;
}

std::vector<std::string> ImportFaults::UndecidedImports(HMODULE module) {
    const std::vector<std::string_view> alone = NamesLeftAlone();
    std::vector<std::string> undecided;
    VisitImports(module, [&](const char* library, const char* name, void**) {
        if (PointOf(name) == PointCount && std::ranges::find(alone, std::string_view(name)) == alone.end())
            undecided.push_back(std::string(library) + " " + name);
    });
    return undecided;
}

std::vector<std::string> ImportFaults::RepeatedNames() {
    std::vector<std::string_view> names = NamesLeftAlone();
    for (const FaultFunction& function : Functions()) names.emplace_back(function.name);
    std::ranges::sort(names);
    std::vector<std::string> repeated;
    for (std::size_t i = 1; i < names.size(); ++i)
        if (names[i] == names[i - 1]) repeated.emplace_back(names[i]);
    return repeated;
}

void ImportFaults::Begin() {
    g_faults.calls = {};
    g_faults.failed = 0;
    g_faults.armed = false;
    g_faults.counting = true;
}

void ImportFaults::Begin(const FaultPlan& plan) {
    Begin();
    g_faults.plan = plan;
    g_faults.left = plan.call;
    g_faults.armed = true;
}

long ImportFaults::End() {
    g_faults.counting = g_faults.armed = false;
    return g_faults.failed;
}

long ImportFaults::Calls(std::size_t function) const {
    if (function != AnyMemory) return g_faults.calls.at(function);
    long calls = 0;
    for (std::size_t i = 0; i < PointCount; ++i)
        if (Functions()[i].kind == FaultKind::Memory) calls += g_faults.calls.at(i);
    return calls;
}

TIMERPROC ImportFaults::LastTimer() const noexcept {
    return g_faults.timer;
}

UINT_PTR ImportFaults::LastTimerId() const noexcept {
    return g_faults.timerId;
}

}  // namespace component
