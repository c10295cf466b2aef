#include "screenhost/Units.h"

#include "comkit/Handle.h"

namespace screenhost {

int HostDpi() noexcept {
    static const int dpi = [] {
        const comkit::WindowDc screen(nullptr);
        const int found = GetDeviceCaps(screen.Get(), LOGPIXELSX);
        return found > 0 ? found : USER_DEFAULT_SCREEN_DPI;
    }();
    return dpi;
}

}  // namespace screenhost
