// A picture of a window, frame and all, as a PNG file.
#pragma once

#include <windows.h>

#include <string>

namespace screenhost {

/// Throws TextError.
void SaveWindowPicture(HWND window, const std::string& file);

}  // namespace screenhost
