// How much the tests without a natural end do: a little among the other tests, KIV_EFFORT times as much where that is
// set, as ./reliability does. Where the tests run in two builds, KIV_SHARE lets each do one half of what both would do.
#pragma once

#include <cstdlib>

namespace kiv {

inline long Effort(long little) {
    const char* const factor = std::getenv("KIV_EFFORT");
    const long times = factor ? std::atol(factor) : 1;
    return times > 1 ? little * times : little;
}

/// One part of so many equal ones.
struct Share {
    long number = 0;  ///< from 0
    long count = 1;

    /// Whether the cell of a matrix, or the run of a series, belongs to it.
    bool Has(long cell) const noexcept { return cell % count == number; }
};

/// KIV_SHARE is "0/2" or "1/2" where another build of the same tests does the rest. With more effort, or by itself, a
/// build does everything.
inline Share OurShare() {
    const char* const text = std::getenv("KIV_SHARE");
    char* rest = nullptr;
    const long number = text ? std::strtol(text, &rest, 10) : 0;
    const long count = text && *rest == '/' ? std::strtol(rest + 1, nullptr, 10) : 1;
    const bool counts = Effort(1) == 1 && number >= 0 && number < count;
    return counts ? Share{number, count} : Share{};
}

}  // namespace kiv
