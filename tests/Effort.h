// How much the tests without a natural end do: a little among the other tests, KIV_EFFORT times as much where that is
// set, as ./reliability does. Where the tests run in two builds, KIV_SHARE lets each do a part of what both would do.
#pragma once

#include <cstdlib>

namespace kiv {

inline long Effort(long little) {
    const char* const factor = std::getenv("KIV_EFFORT");
    const long times = factor ? std::atol(factor) : 1;
    return times > 1 ? little * times : little;
}

/// Some of so many equal parts of the tests.
struct Share {
    long first = 0;
    long last = 0;
    long count = 1;

    /// Whether the cell of a matrix, or the run of a series, belongs to it.
    bool Has(long cell) const noexcept { return cell % count >= first && cell % count <= last; }
    /// How many of so many.
    long Of(long all) const noexcept { return all * (last - first + 1) / count; }
};

/// KIV_SHARE is "0-2/5", say, where another build of the same tests does the other two fifths. With more effort, or by
/// itself, a build does everything.
inline Share OurShare() {
    const char* const text = std::getenv("KIV_SHARE");
    if (!text || Effort(1) > 1) return {};
    Share share;
    char* rest = nullptr;
    share.first = std::strtol(text, &rest, 10);
    if (*rest != '-') return {};
    share.last = std::strtol(rest + 1, &rest, 10);
    if (*rest != '/') return {};
    share.count = std::strtol(rest + 1, nullptr, 10);
    const bool isSome = share.first >= 0 && share.first <= share.last && share.last < share.count;
    return isSome ? share : Share{};
}

}  // namespace kiv
