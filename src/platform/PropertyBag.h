// Where a control's persistent state comes from and goes to: the container's property bag, or a bag in memory that is
// encoded into a stream.
#pragma once

#include <string_view>

#include "platform/Value.h"

namespace kiv {

class PropertyBag {
public:
    virtual ~PropertyBag() = default;

    /// Returns fallback when the key is missing; may throw when the bag itself fails.
    virtual Value Read(std::u16string_view key, const Value& fallback) const = 0;

    /// A bag may leave out a value that equals its default. A null defaultValue means: write always.
    virtual void Write(std::u16string_view key, const Value& value, const Value* defaultValue) = 0;

    /// Told of each value that had to be replaced by its default, for the container's error log.
    virtual void ReportBadValue(std::u16string_view /*key*/) const {}
};

}  // namespace kiv
