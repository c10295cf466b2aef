// What the user asked for on the command line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace screenhost {

struct Options {
    std::string screen;                ///< the screen file; empty for an empty screen
    std::vector<std::string> servers;  ///< component servers to use without registration
    std::string screenshot;
    std::string script;
    std::vector<std::string> checks;  ///< screen files that are to be checked and not shown
    std::string log;                  ///< transcript; standard output where empty
    bool design = false;
    bool once = false;
    bool help = false;
    bool check = false;
};

/// The arguments behind the program's name. Throws TextError.
Options ParseCommandLine(const std::vector<std::string>& arguments);

std::string_view UsageText() noexcept;

}  // namespace screenhost
