// The module (server or test program) that this code is linked into.
#pragma once

#include <windows.h>

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace kiv::win32 {

inline HINSTANCE ModuleInstance() noexcept {
    return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

}  // namespace kiv::win32
