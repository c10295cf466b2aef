// The window classes of the controls' own areas. Each is registered at the first call that can, and stays for as long
// as this module is loaded.
#pragma once

namespace kiv::win32 {

class SurfaceClass {
public:
    /// Of an area with child windows. Throws comkit::ComError.
    static const wchar_t* Name();
    /// Of one that is drawn whenever a value arrives: its windows keep a device context each, because to get one for
    /// each value takes as long as all the rest. Throws comkit::ComError.
    static const wchar_t* NameForDrawing();
};

}  // namespace kiv::win32
