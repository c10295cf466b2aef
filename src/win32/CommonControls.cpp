#include "win32/CommonControls.h"

#include <windows.h>

#include <commctrl.h>

#include "comkit/Errors.h"

namespace kiv::win32 {

void RegisterDateClasses() {
    [[maybe_unused]] static const bool registered = [] {
        const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_DATE_CLASSES | ICC_UPDOWN_CLASS};
        if (!InitCommonControlsEx(&classes)) throw comkit::ComError(E_FAIL);
        return true;
    }();
}

}  // namespace kiv::win32
