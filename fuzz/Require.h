// What a fuzz target requires of every input. Where it does not hold, the line is named and the process ends, which
// fuzzers and sanitizers take for a finding.
#pragma once

#include <cstdio>
#include <cstdlib>

inline void Require(bool holds, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    if (holds) return;
    std::fprintf(stderr, "%s:%d: does not hold\n", file, line);
    std::abort();
}
