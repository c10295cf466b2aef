// Every text that a user sees, by number. The numbers and texts are fixed; there are gaps on purpose.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "common/KivDateTimeResID.h"

namespace kiv {

struct ResourceString {
    std::int16_t id;
    std::u16string_view text;
};

/// Nothing where there is no string of that number.
std::optional<std::u16string_view> FindResString(std::int32_t id) noexcept;

/// Never fails: a missing string shows itself as "Err: Missing ResID (1347)".
std::u16string GetResString(std::int16_t id);

/// For pages and about boxes, which have no use for a text that says that it is missing: throws HostError 326 instead.
std::u16string LoadResString(std::int16_t id);

}  // namespace kiv
