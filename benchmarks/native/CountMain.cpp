// Does one hot path so many times, for a tool that counts instructions: the difference between two numbers of times is
// what the path itself takes. Without arguments: the names of all paths.
//
// usage: hot_paths [NAME TIMES]
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string_view>

#include "benchmarks/native/HotPaths.h"

int main(int count, char** arguments) {
    const bool lists = count != 3;
    for (const bench::HotPath& path : bench::HotPaths()) {
        if (lists) std::printf("%s\n", path.name);
        if (lists || std::string_view(path.name) != arguments[1]) continue;
        const std::function<void()> step = path.prepare();
        for (long i = std::strtol(arguments[2], nullptr, 10); i > 0; --i) step();
        return 0;
    }
    return lists ? 0 : 2;
}
