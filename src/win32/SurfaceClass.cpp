#include "win32/SurfaceClass.h"

#include <windows.h>

#include "comkit/Errors.h"
#include "win32/ModuleInstance.h"

namespace kiv::win32 {

namespace {

/// Windows does not remove a module's classes by itself.
class Registration {
public:
    Registration(const wchar_t* name, UINT style) : m_name(name) {
        WNDCLASSEXW description{};
        description.cbSize = sizeof description;
        description.style = CS_DBLCLKS | style;
        description.lpfnWndProc = &DefWindowProcW;
        description.hInstance = ModuleInstance();
        description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        description.lpszClassName = name;
        if (!RegisterClassExW(&description)) throw comkit::ComError(comkit::LastErrorResult());
    }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration() { UnregisterClassW(m_name, ModuleInstance()); }
    const wchar_t* Name() const noexcept { return m_name; }

private:
    const wchar_t* m_name;
};

}  // namespace

const wchar_t* SurfaceClass::Name() {
    static const Registration registration(L"KivDateTimeSurface", 0);
    return registration.Name();
}

const wchar_t* SurfaceClass::NameForDrawing() {
    static const Registration registration(L"KivDateTimeDrawing", CS_OWNDC);
    return registration.Name();
}

}  // namespace kiv::win32
