// A value of a control's property as a screen file spells it.
//
//   text      "Set Date/Time"                       escapes \" \\ \n \r \t \uXXXX
//   number    495   -1   0x8000000F                 32 bits; system colours are written in hexadecimal
//   fraction  8.25   1e+20   2.0                    always with a point or an exponent
//   Boolean   True   False
//   font      Font("Tahoma", 8.25, Bold, Italic, Underline, Strikethrough, Weight 600, Charset 161)
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "screenhost/TextCursor.h"

namespace screenhost {

struct FontSpec {
    std::u16string name;
    double size = 8.25;  ///< points
    std::int32_t weight = 400;
    std::int32_t charset = 0;
    bool italic = false;
    bool underline = false;
    bool strikethrough = false;
    friend bool operator==(const FontSpec&, const FontSpec&) = default;
};

using ScreenValue = std::variant<bool, std::int32_t, double, std::u16string, FontSpec>;

/// Reads one value and leaves the cursor behind it. Throws TextError.
ScreenValue ReadValue(TextCursor& cursor);

/// The value's one canonical spelling; ReadValue gives the equal value back. Throws TextError for a number that is
/// not finite.
std::string FormatValue(const ScreenValue& value);

}  // namespace screenhost
