#include "win32/CommonControls.h"

#include <windows.h>

#include <commctrl.h>

#include "comkit/Errors.h"

namespace kiv::win32 {

void RegisterDateClasses() {
    static const bool registered = [] {
        const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_DATE_CLASSES | ICC_UPDOWN_CLASS};
        return InitCommonControlsEx(&classes) != FALSE;
    }();
    if (!registered) throw comkit::ComError(E_FAIL);
}

}  // namespace kiv::win32
