// OLE colours as the colours of Windows.
#pragma once

#include <windows.h>

#include <olectl.h>

#include "platform/Color.h"

namespace kiv::win32 {

/// System colours are looked up now; a value that is no colour is black.
inline COLORREF ColorRefOf(OleColor color) noexcept {
    COLORREF result = RGB(0, 0, 0);
    if (FAILED(OleTranslateColor(color, nullptr, &result))) return RGB(0, 0, 0);
    return result;
}

/// The device context's own brush in that colour: nobody has to delete it.
inline HBRUSH BrushFor(HDC dc, OleColor color) noexcept {
    SetDCBrushColor(dc, ColorRefOf(color));
    return static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
}

inline void FillWithColor(HDC dc, const RECT& area, OleColor color) noexcept {
    FillRect(dc, &area, BrushFor(dc, color));
}

}  // namespace kiv::win32
