#include "win32/SurfaceClass.h"

#include <windows.h>

#include "comkit/Errors.h"
#include "win32/ModuleInstance.h"

namespace kiv::win32 {

namespace {

constexpr const wchar_t* ClassName = L"KivDateTimeSurface";

/// Windows does not remove a module's classes by itself.
class Registration {
public:
    Registration() {
        WNDCLASSEXW description{};
        description.cbSize = sizeof description;
        description.style = CS_DBLCLKS;
        description.lpfnWndProc = &DefWindowProcW;
        description.hInstance = ModuleInstance();
        description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        description.lpszClassName = ClassName;
        if (!RegisterClassExW(&description)) throw comkit::ComError(comkit::LastErrorResult());
    }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration() { UnregisterClassW(ClassName, ModuleInstance()); }
};

}  // namespace

const wchar_t* SurfaceClass::Name() {
    static const Registration registration;
    return ClassName;
}

}  // namespace kiv::win32
