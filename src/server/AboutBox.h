// The about box of a control.
#pragma once

#include <windows.h>

#include <cstdint>

namespace kiv::server {

/// Texts are those of the string table. Returns when the user has closed the box; parent may be null.
void ShowAboutBox(HWND parent, std::int16_t title, std::int16_t purpose);

}  // namespace kiv::server
