#include "win32/Dpi.h"

#include <algorithm>
#include <cmath>

#include "comkit/Handle.h"

namespace kiv::win32 {

namespace {

constexpr int TwipsPerInch = 1440;
constexpr double LargestLength = 32767;  // window coordinates have 16 bits in many messages

using GetDpiForWindowFunction = UINT(WINAPI*)(HWND);

// Windows 10 has it; older systems have one resolution for all windows.
GetDpiForWindowFunction FindGetDpiForWindow() noexcept {
    const FARPROC found = GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow");
    return reinterpret_cast<GetDpiForWindowFunction>(reinterpret_cast<void*>(found));
}

}  // namespace

int DpiOf(HWND window) noexcept {
    static const GetDpiForWindowFunction getDpiForWindow = FindGetDpiForWindow();
    if (window && getDpiForWindow) {
        if (const UINT dpi = getDpiForWindow(window)) return static_cast<int>(dpi);
    }
    const comkit::WindowDc screen(nullptr);
    const int dpi = GetDeviceCaps(screen.Get(), LOGPIXELSX);
    return dpi > 0 ? dpi : USER_DEFAULT_SCREEN_DPI;
}

int PixelsFromTwips(Twips length, int dpi) noexcept {
    const double pixels = std::floor(length * dpi / TwipsPerInch + 0.5);
    if (std::isnan(pixels)) return 0;
    return static_cast<int>(std::clamp(pixels, -LargestLength, LargestLength));
}

Twips TwipsFromPixels(int pixels, int dpi) noexcept {
    return static_cast<double>(pixels) * TwipsPerInch / dpi;
}

RECT PixelEdges(const Rect& bounds, int dpi) noexcept {
    return {PixelsFromTwips(bounds.left, dpi), PixelsFromTwips(bounds.top, dpi),
            PixelsFromTwips(bounds.left + bounds.width, dpi), PixelsFromTwips(bounds.top + bounds.height, dpi)};
}

}  // namespace kiv::win32
