// Finds in a screen file what would surprise when the screen runs: keys that nobody reads, values that do not count,
// slots that are bound half or to no effect. Controls of other makers are only checked as far as the host itself reads
// them. docs/screen-host.md lists the rules.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "screenhost/ScreenFile.h"

namespace screenhost {

struct Finding {
    std::size_t line;  ///< from 1
    std::string_view rule;
    std::string message;
};

/// By line; none where nothing is wrong.
std::vector<Finding> CheckScreen(ScreenFile& file);

/// One line for each finding, as compilers write them: "FILE:12: MESSAGE [RULE]".
std::string DescribeFindings(std::string_view fileName, const std::vector<Finding>& findings);

}  // namespace screenhost
