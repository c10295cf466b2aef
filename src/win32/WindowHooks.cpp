#include "win32/WindowHooks.h"

#include <mutex>

#include "comkit/Errors.h"
#include "comkit/WindowNumber.h"

namespace kiv::win32 {

WindowHooks& WindowHooks::Get() noexcept {
    static WindowHooks hooks;
    return hooks;
}

void WindowHooks::Add(HWND window, NativeWindow& owner, WNDPROC procedure) {
    const auto native = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
    // Without it the window could not even end: everything that it holds would stay.
    if (!native) throw comkit::ComError(comkit::LastErrorResult());
    {
        const std::lock_guard guard(m_lock);
        m_hooks.Put(comkit::WindowNumber(window), Hook{&owner, native});
    }
    if (SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure))) return;
    const HRESULT reason = comkit::LastErrorResult();
    const std::lock_guard guard(m_lock);
    m_hooks.Erase(comkit::WindowNumber(window));
    throw comkit::ComError(reason);
}

void WindowHooks::Remove(HWND window, WNDPROC procedure) noexcept {
    const WNDPROC native = Find(window).native;
    if (!native) return;
    if (reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC)) == procedure)
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(native));
    const std::lock_guard guard(m_lock);
    m_hooks.Erase(comkit::WindowNumber(window));
}

WindowHooks::Hook WindowHooks::Find(HWND window) const noexcept {
    const std::lock_guard guard(m_lock);
    const Hook* const found = m_hooks.Find(comkit::WindowNumber(window));
    return found ? *found : Hook{};
}

}  // namespace kiv::win32
