// The window class of the controls' own areas.
#pragma once

namespace kiv::win32 {

class SurfaceClass {
public:
    /// Registers the class at the first call that can; it stays for as long as this module is loaded. Throws
    /// comkit::ComError.
    static const wchar_t* Name();
};

}  // namespace kiv::win32
