#include "win32/NativeWindow.h"

#include "comkit/Errors.h"
#include "comkit/Handle.h"
#include "win32/Dpi.h"
#include "win32/ModuleInstance.h"
#include "win32/WindowHooks.h"

namespace kiv::win32 {

std::shared_ptr<NativeWindow> NativeWindow::Create(Owner& owner, const WindowDescription& description) {
    // Before the window's owner, so that it is still there if the window ends again here.
    std::shared_ptr<NativeWindow> result(new NativeWindow(owner, description.hasInnerWindows));
    const RECT& place = description.place;
    const SIZE size = PixelSizeOf(place);
    comkit::UniqueWindow window(CreateWindowExW(description.extendedStyle, description.className, description.text,
                                                description.style, place.left, place.top, size.cx, size.cy,
                                                description.parent, nullptr, ModuleInstance(), nullptr));
    if (!window) throw comkit::ComError(comkit::LastErrorResult());
    result->m_window = window.Get();
    result->Hook(window.Get());
    result->m_pSelf = result;
    if (description.hasInnerWindows) result->HookInnerWindows();
    window.Detach();
    return result;
}

void NativeWindow::Hook(HWND window) {
    WindowHooks::Get().Add(window, *this, &Procedure);
}

void NativeWindow::HookInnerWindows() {
    for (HWND inner = GetWindow(m_window, GW_CHILD); inner; inner = GetWindow(inner, GW_HWNDNEXT))
        if (!OwnerOf(inner)) Hook(inner);
}

LRESULT NativeWindow::CallNative(const Message& message) noexcept {
    const WNDPROC native = WindowHooks::Get().Find(message.window).native;
    if (!native) return 0;
    return CallNative(native, message);
}

LRESULT NativeWindow::CallNative(WNDPROC native, const Message& message) noexcept {
    ++m_lDepth;
    const LRESULT result = CallWindowProcW(native, message.window, message.id, message.wParam, message.lParam);
    --m_lDepth;
    return result;
}

void NativeWindow::Retire() noexcept {
    if (!m_pOwner) return;
    m_pOwner = nullptr;
    if (!m_window) return;
    if (m_lDepth > 0) {
        ShowWindow(m_window, SW_HIDE);
        SetParent(m_window, HWND_MESSAGE);
    }
    DestroyIfDue();
}

void NativeWindow::DestroyIfDue() noexcept {
    if (m_pOwner || !m_window || m_lDepth > 0 || m_bDestroying) return;
    m_bDestroying = true;
    DestroyWindow(m_window);
}

NativeWindow::Owner* NativeWindow::OwnerOf(HWND window) noexcept {
    const NativeWindow* const native = WindowHooks::Get().Find(window).owner;
    // A window of another thread is none of ours to speak to.
    if (!native || GetWindowThreadProcessId(window, nullptr) != GetCurrentThreadId()) return nullptr;
    return native->m_pOwner;
}

LRESULT NativeWindow::Dispatch(const Message& message) {
    if (message.id == WM_PARENTNOTIFY && LOWORD(message.wParam) == WM_CREATE && m_bHasInnerWindows) {
        const HWND inner = reinterpret_cast<HWND>(message.lParam);
        if (!OwnerOf(inner)) Hook(inner);
    }
    if (m_pOwner) return m_pOwner->OnMessage(*this, message);
    return CallNative(message);
}

LRESULT CALLBACK NativeWindow::Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) noexcept {
    const WindowHooks::Hook hook = WindowHooks::Get().Find(window);
    if (!hook.owner) return DefWindowProcW(window, id, wParam, lParam);
    const std::shared_ptr<NativeWindow> self = hook.owner->weak_from_this().lock();
    if (!self) return DefWindowProcW(window, id, wParam, lParam);
    const Message message{window, id, wParam, lParam};
    LRESULT result = 0;
    if (id == WM_NCDESTROY) {
        WindowHooks::Get().Remove(window, &Procedure);
        result = self->CallNative(hook.native, message);
        if (window == self->m_window) {
            self->m_window = nullptr;
            self->m_pSelf.reset();
        }
        return result;
    }
    try {
        result = self->Dispatch(message);
    } catch (...) {
        result = 0;
    }
    self->DestroyIfDue();
    return result;
}

}  // namespace kiv::win32
