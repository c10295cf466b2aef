// How much the tests without a natural end do: a little among the other tests, KIV_EFFORT times as much where that is
// set, as ./reliability does. What is too much for one process is done in several, each with its number in KIV_TURN.
#pragma once

#include <cstdlib>

namespace kiv {

inline long Effort(long little) {
    const char* const factor = std::getenv("KIV_EFFORT");
    const long times = factor ? std::atol(factor) : 1;
    return times > 1 ? little * times : little;
}

/// 0 for the first process.
inline long Turn() {
    const char* const turn = std::getenv("KIV_TURN");
    return turn ? std::atol(turn) : 0;
}

}  // namespace kiv
