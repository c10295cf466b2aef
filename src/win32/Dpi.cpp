#include "win32/Dpi.h"

#include <algorithm>
#include <cmath>

#include "win32/SystemAnswers.h"

namespace kiv::win32 {

namespace {

constexpr int TwipsPerInch = 1440;
constexpr double LargestLength = 32767;  // window coordinates have 16 bits in many messages

}  // namespace

int DpiOf(HWND window) noexcept {
    return SystemAnswers::Current().dpiOf(window);
}

int PixelsFromTwips(Twips length, int dpi) noexcept {
    const double pixels = length * dpi / TwipsPerInch + 0.5;
    if (std::isnan(pixels)) return 0;
    const double within = std::clamp(pixels, -LargestLength, LargestLength);
    // Rounded down by hand: the library's own way takes ten times as long, and labels are placed often.
    const auto whole = static_cast<int>(within);
    return whole > within ? whole - 1 : whole;
}

Twips TwipsFromPixels(int pixels, int dpi) noexcept {
    return static_cast<double>(pixels) * TwipsPerInch / dpi;
}

SIZE PixelSizeOf(const RECT& pixels) noexcept {
    const auto length = [](LONG from, LONG to) {
        return static_cast<LONG>(std::clamp(static_cast<double>(to) - from, 0.0, LargestLength));
    };
    return {length(pixels.left, pixels.right), length(pixels.top, pixels.bottom)};
}

RECT PixelEdges(const Rect& bounds, int dpi) noexcept {
    return {PixelsFromTwips(bounds.left, dpi), PixelsFromTwips(bounds.top, dpi),
            PixelsFromTwips(bounds.left + bounds.width, dpi), PixelsFromTwips(bounds.top + bounds.height, dpi)};
}

}  // namespace kiv::win32
