// Pictures of windows for the documents, left in the folder that KIV_PICTURES names; nothing where it names none.
#pragma once

#include <windows.h>

#include <string>

namespace component {

/// A bitmap file of what the window shows, frame and all.
void LeavePicture(HWND window, const std::string& name);

}  // namespace component
