// How much the tests without a natural end do: a little among the other tests, KIV_EFFORT times as much where that is
// set, as ./reliability does.
#pragma once

#include <cstdlib>

namespace kiv {

inline long Effort(long little) {
    const char* const factor = std::getenv("KIV_EFFORT");
    const long times = factor ? std::atol(factor) : 1;
    return times > 1 ? little * times : little;
}

}  // namespace kiv
