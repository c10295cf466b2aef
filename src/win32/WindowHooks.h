// Which NativeWindow a window procedure belongs to, and the procedure that was there before it.
//
// Not comctl32's subclassing: under Wine that asks another process for a window property with every message.
#pragma once

#include <windows.h>

#include <cstdint>

#include "comkit/FlatMap.h"
#include "comkit/SlimLock.h"

namespace kiv::win32 {

class NativeWindow;

class WindowHooks {
public:
    struct Hook {
        NativeWindow* owner = nullptr;  ///< null: the window is none of ours
        WNDPROC native = nullptr;
    };

    static WindowHooks& Get() noexcept;

    /// Puts the procedure before the window's own. Throws comkit::ComError.
    void Add(HWND window, NativeWindow& owner, WNDPROC procedure);
    /// The window is ending. Gives back the native procedure; whoever came before ours since then is left alone.
    void Remove(HWND window, WNDPROC procedure) noexcept;
    Hook Find(HWND window) const noexcept;

private:
    WindowHooks() = default;

    mutable comkit::SlimLock m_lock;               ///< controls may live in several apartments
    comkit::FlatMap<std::uint32_t, Hook> m_hooks;  ///< by comkit::WindowNumber
};

}  // namespace kiv::win32
