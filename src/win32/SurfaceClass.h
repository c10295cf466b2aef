// The window class of the controls' own areas.
#pragma once

namespace kiv::win32 {

class SurfaceClass {
public:
    /// Registers the class at the first call; it stays for as long as this module is loaded.
    static const wchar_t* Name() noexcept;
};

}  // namespace kiv::win32
