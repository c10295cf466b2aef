// What the controls do most often, each ready to be done any number of times: for timing and for counting instructions.
#pragma once

#include <functional>
#include <span>

namespace bench {

struct HotPath {
    const char* name;
    std::function<void()> (*prepare)();
};

std::span<const HotPath> HotPaths();

}  // namespace bench
