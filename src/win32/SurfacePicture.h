// A picture of a window and all that is visible inside it, taken from the windows themselves: they need not be on the
// screen.
#pragma once

#include <windows.h>

namespace kiv::win32 {

/// Draws the window, at its own size, into a rectangle of a device context, stretched where that has another size.
void DrawWindowTree(HWND window, HDC dc, const RECT& bounds);

}  // namespace kiv::win32
