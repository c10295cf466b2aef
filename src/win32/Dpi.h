// Twips (1/1440 inch) and pixels of a window.
#pragma once

#include <windows.h>

#include "platform/Geometry.h"

namespace kiv::win32 {

/// Dots per inch of the window; a null window means the screen.
int DpiOf(HWND window) noexcept;

/// To the nearest pixel. What no window can be as large as is cut off.
int PixelsFromTwips(Twips length, int dpi) noexcept;
Twips TwipsFromPixels(int pixels, int dpi) noexcept;

/// Width and height of a rectangle that may be anything: one that is turned inside out has none, and what no window can
/// be as large as is cut off.
SIZE PixelSizeOf(const RECT& pixels) noexcept;

/// Each edge to its nearest pixel, so that neighbours which share an edge in twips share it in pixels.
RECT PixelEdges(const Rect& bounds, int dpi) noexcept;

}  // namespace kiv::win32
