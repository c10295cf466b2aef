// Whole numbers as wide text.
#pragma once

#include <string>

namespace comkit {

/// Not by way of formatted output, as the library's own function does it: that brings 11 KB of code along.
template <class Whole>
std::wstring DecimalText(Whole value) {
    const std::string digits = std::to_string(value);
    return {digits.begin(), digits.end()};
}

}  // namespace comkit
