// A value as it travels between the control and a property bag or an event handler.
#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "platform/Font.h"

namespace kiv {

/// An automation date, see DateTime.h.
struct OleDate {
    double days = 0;
    friend bool operator==(const OleDate&, const OleDate&) = default;
};

/// A value that the sender had no form for that is listed here (an array, a foreign object, ...). Converts to nothing.
///
/// Not trivially copyable, on purpose: GCC's library (12) takes a variant of texts, shared pointers and such types
/// for one that always has a value, and ends the process when the copy of a text fails for want of memory.
struct Unsupported {
    Unsupported() = default;
    Unsupported(const Unsupported&) noexcept {}  // NOLINT(modernize-use-equals-default): not trivial
    // NOLINTNEXTLINE(modernize-use-equals-default): not trivial
    Unsupported& operator=(const Unsupported&) noexcept { return *this; }
    ~Unsupported() = default;
    friend bool operator==(const Unsupported&, const Unsupported&) = default;
};

/// std::monostate is "empty": it converts to 0, False, "" and the zero date.
using Value = std::variant<std::monostate, bool, std::int16_t, std::int32_t, double, OleDate, std::u16string, FontPtr,
                           Unsupported>;

}  // namespace kiv
