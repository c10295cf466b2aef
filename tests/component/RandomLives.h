// Lives full of random input, and what they leave behind.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>

#include "Holdings.h"
#include "RandomUser.h"
#include "tests/Effort.h"

namespace component {

constexpr int EventsOfALife = 250;
constexpr int EventsOfABatch = 25;
constexpr long Noise = 32;  // caches of the system, which fill once

/// KIV_SEED, where that is set. Builds that share the lives have different ones.
inline std::uint32_t Seed() {
    const char* const wanted = std::getenv("KIV_SEED");
    return wanted ? static_cast<std::uint32_t>(std::strtoul(wanted, nullptr, 10))
                  : 20261122U + static_cast<std::uint32_t>(kiv::OurShare().first);
}

/// What the second half of so many lives leaves behind.
template <class Life>
Holdings GainOfLives(long lives, const RandomUser& user, Life live) {
    Holdings early;
    long answers = 0;
    for (long life = 0; life < lives && !testing::Test::HasFailure(); ++life) {
        if (life == lives / 2) {
            early = CountHoldings();
            answers = user.AccessAnswers();
        }
        SCOPED_TRACE(testing::Message() << "seed " << Seed() << ", life " << life);
        live();
    }
    if (testing::Test::HasFailure()) ADD_FAILURE() << "after these events, the last one at the end:\n" << user.Recent();
    const Holdings late = CountHoldings();
    return {late.heapBlocks - early.heapBlocks - (user.AccessAnswers() - answers), late.gdiObjects - early.gdiObjects};
}

}  // namespace component
