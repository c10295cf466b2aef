// Timing of two ways to do the same, by turns.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <vector>

namespace bench {

inline double Microseconds() {
    LARGE_INTEGER now{};
    LARGE_INTEGER frequency{};
    QueryPerformanceCounter(&now);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(now.QuadPart) * 1e6 / static_cast<double>(frequency.QuadPart);
}

template <class Step>
double Timed(Step step) {
    const double start = Microseconds();
    step();
    return Microseconds() - start;
}

inline double Median(std::vector<double> times) {
    std::nth_element(times.begin(), times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2), times.end());
    return times[times.size() / 2];
}

inline void Print(const char* what, double ours, const char* beside, double theirs, double ratio) {
    std::printf("%-36s %9.2f us   %-34s %9.2f us   ratio %.3f\n", what, ours, beside, theirs, ratio);
}

/// Runs both by turns; prints their medians and the median of the ratios of each round.
template <class Ours, class Theirs>
void Compare(const char* what, const char* beside, int rounds, Ours ours, Theirs theirs) {
    std::vector<double> first;
    std::vector<double> second;
    std::vector<double> ratios;
    for (int i = 0; i < rounds; ++i) {
        first.push_back(Timed(ours));
        second.push_back(Timed(theirs));
        if (i > 0) ratios.push_back(first.back() / second.back());
    }
    Print(what, Median(first), beside, Median(second), Median(ratios));
}

}  // namespace bench
