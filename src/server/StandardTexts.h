// The host's own words for its standard errors.
#pragma once

#include <cstdint>
#include <string_view>

namespace kiv::server {

/// Every number has a text; one that is not known, a general one.
std::u16string_view StandardText(std::int32_t number) noexcept;

}  // namespace kiv::server
