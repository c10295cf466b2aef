// The about box of a control: a modal dialog.
#pragma once

#include <windows.h>

#include "pages/PageDescription.h"

namespace kiv::server {

/// Returns when the user has closed the box. owner: a top-level window, or null. control: Set or Show. Throws where the
/// box cannot be shown.
void ShowAboutBox(HWND owner, ControlKind control);

}  // namespace kiv::server
