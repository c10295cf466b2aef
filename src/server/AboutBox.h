// The about box of a control: a modal dialog.
#pragma once

#include <windows.h>

#include "pages/PageDescription.h"

namespace kiv::server {

/// Returns when the user has closed the box. The box belongs to the window that parent lies in; null: to the calling
/// thread's active window, if it has one. control: Set or Show. Throws where the box cannot be shown.
void ShowAboutBox(HWND parent, ControlKind control);

}  // namespace kiv::server
