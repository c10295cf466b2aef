// Twips of the screen file, pixels of the window, HIMETRIC of OLE.
#pragma once

#include <windows.h>

#include <cmath>

namespace screenhost {

inline constexpr int TwipsPerInch = 1440;
inline constexpr int HimetricPerInch = 2540;

/// The resolution that the whole host works with.
int HostDpi() noexcept;

inline int PixelsFromTwips(double twips) noexcept {
    return static_cast<int>(std::lround(twips * HostDpi() / TwipsPerInch));
}
inline int TwipsFromPixels(int pixels) noexcept {
    return MulDiv(pixels, TwipsPerInch, HostDpi());
}
inline int PixelsFromHimetric(long himetric) noexcept {
    return MulDiv(static_cast<int>(himetric), HostDpi(), HimetricPerInch);
}
inline int HimetricFromPixels(int pixels) noexcept {
    return MulDiv(pixels, HimetricPerInch, HostDpi());
}
/// A length that was designed for 96 dots to the inch.
inline int Scaled(int pixels) noexcept {
    return MulDiv(pixels, HostDpi(), USER_DEFAULT_SCREEN_DPI);
}

inline int WidthOf(const RECT& r) noexcept {
    return static_cast<int>(r.right - r.left);
}
inline int HeightOf(const RECT& r) noexcept {
    return static_cast<int>(r.bottom - r.top);
}

}  // namespace screenhost
