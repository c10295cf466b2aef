// What the surface and its children share. The surface fills it in and empties it when it ends; children may outlive
// the surface's windows, and then find no window and nobody to tell.
#pragma once

#include <windows.h>

#include <vector>

#include "platform/Widgets.h"
#include "win32/HostedSurface.h"

namespace kiv::win32 {

class ChildWidget;

struct SurfaceContext {
    WidgetListener* listener = nullptr;
    SurfaceSite* site = nullptr;
    HWND window = nullptr;  ///< the surface's, while active
    int dpi = USER_DEFAULT_SCREEN_DPI;
    std::vector<ChildWidget*> children;  ///< in the order of their creation, so parents before their children

    HWND focus = nullptr;       ///< where the keyboard focus went last, as far as the windows here were told
    bool focusTold = false;     ///< what the site was told last
    bool deactivating = false;  ///< the windows are being ended: nobody is told anything

    bool HasFocus() const noexcept { return focus && window && (focus == window || IsChild(window, focus)); }
};

}  // namespace kiv::win32
