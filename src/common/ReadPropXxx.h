// The tolerant readers of persisted properties. Whatever the bag holds or does, they return a value: the default where
// the key is missing, cannot be read or cannot be converted. A value that was there but not usable is reported to the
// bag. They never throw, save for ControlGone.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/PropertyBag.h"

namespace kiv {

bool ReadPropBool(const PropertyBag& bag, std::u16string_view key, bool defaultValue);

std::int32_t ReadPropLong(const PropertyBag& bag, std::u16string_view key, std::int32_t defaultValue);

/// A text shorter than minLength or longer than maxLength, in UTF-16 units, is replaced by the default; -1 means no
/// bound.
std::u16string ReadPropString(const PropertyBag& bag, std::u16string_view key, std::u16string_view defaultValue,
                              std::int16_t minLength = -1, std::int16_t maxLength = -1);

}  // namespace kiv
