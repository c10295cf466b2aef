// Whether two texts are the same.
#pragma once

#include <algorithm>
#include <string_view>

namespace kiv {

/// As ==, which takes such texts one character at a time; this one compares them as blocks of memory.
inline bool SameText(std::u16string_view a, std::u16string_view b) noexcept {
    return std::equal(a.begin(), a.end(), b.begin(), b.end());
}

}  // namespace kiv
