// Values of the core against the types of a dual interface: Hand gives one to a caller, Taken takes one from him.
#pragma once

#include <ocidl.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include "comkit/Bstr.h"
#include "platform/Color.h"
#include "platform/Font.h"
#include "win32/OleFont.h"

namespace kiv::server {

inline void Hand(OleColor value, OLE_COLOR& out) noexcept {
    out = value;
}
inline void Hand(std::int32_t value, LONG& out) noexcept {
    out = value;
}
inline void Hand(std::int16_t value, SHORT& out) noexcept {
    out = value;
}
inline void Hand(bool value, VARIANT_BOOL& out) noexcept {
    out = value ? VARIANT_TRUE : VARIANT_FALSE;
}
inline void Hand(const std::u16string& value, BSTR& out) {
    out = comkit::Bstr(value).Detach();
}
inline void Hand(const FontPtr& value, IFontDisp*& out) {
    out = win32::FontDispOf(value).Detach();
}
template <class Enum>
requires std::is_enum_v<Enum>
void Hand(std::int32_t value, Enum& out) noexcept {
    out = static_cast<Enum>(value);
}

inline OleColor Taken(OLE_COLOR value) noexcept {
    return static_cast<OleColor>(value);
}
inline std::int32_t Taken(LONG value) noexcept {
    return value;
}
inline bool Taken(VARIANT_BOOL value) noexcept {
    return value != VARIANT_FALSE;
}
inline std::u16string_view Taken(BSTR value) noexcept {
    return comkit::ViewOf(value);
}
template <class Enum>
requires std::is_enum_v<Enum> std::int32_t Taken(Enum value)
noexcept {
    return static_cast<std::int32_t>(value);
}

}  // namespace kiv::server
