// What a VARIANT refers to.
#pragma once

#include <windows.h>

#include <oleauto.h>

namespace comkit {

/// Whether a decimal's parts are within their bounds. Wine's conversion to a text writes past its end otherwise.
inline bool IsSound(const DECIMAL& value) noexcept {
    constexpr BYTE MostPlaces = 28;
    return value.scale <= MostPlaces;
}

/// Whether a value and all that it refers to is there: no reference is null, and they come to an end, with a decimal
/// that is one. The system's own conversions take that for granted.
inline bool IsWhole(const VARIANT& value) noexcept {
    // One reference to a variable is usual; some callers pass on what they were passed themselves.
    constexpr int MostReferences = 16;
    const VARIANT* at = &value;
    for (int i = 0; i < MostReferences; ++i) {
        if (!(at->vt & VT_BYREF)) return at->vt != VT_DECIMAL || IsSound(at->decVal);
        if (!at->byref) return false;
        if (at->vt == (VT_BYREF | VT_DECIMAL)) return IsSound(*at->pdecVal);
        if (at->vt != (VT_BYREF | VT_VARIANT)) return true;
        at = at->pvarVal;
    }
    return false;
}

}  // namespace comkit
