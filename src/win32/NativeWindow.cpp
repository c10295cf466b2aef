#include "win32/NativeWindow.h"

#include <commctrl.h>

#include "comkit/Errors.h"
#include "comkit/Handle.h"
#include "win32/ModuleInstance.h"

namespace kiv::win32 {

namespace {
constexpr UINT_PTR SubclassId = 0x4B49;

// Asked of any window: ours answer with their NativeWindow, all others with 0. Cheaper to have than a window property.
UINT WhoAreYou() noexcept {
    static const UINT id = RegisterWindowMessageW(L"KivDateTime.NativeWindow");
    return id;
}

}  // namespace

std::shared_ptr<NativeWindow> NativeWindow::Create(Owner& owner, const WindowDescription& description) {
    // Before the window's owner, so that it is still there if the window ends again here.
    const std::shared_ptr<NativeWindow> result(new NativeWindow(owner, description.hasInnerWindows));
    const RECT& place = description.place;
    comkit::UniqueWindow window(CreateWindowExW(
        description.extendedStyle, description.className, description.text, description.style, place.left, place.top,
        place.right - place.left, place.bottom - place.top, description.parent, nullptr, ModuleInstance(), nullptr));
    if (!window) throw comkit::ComError(comkit::LastErrorResult());
    result->m_window = window.Get();
    result->Hook(window.Get());
    result->m_pSelf = result;
    if (description.hasInnerWindows) result->HookInnerWindows();
    window.Detach();
    return result;
}

void NativeWindow::Hook(HWND window) {
    if (!SetWindowSubclass(window, &Procedure, SubclassId, reinterpret_cast<DWORD_PTR>(this)))
        throw comkit::ComError(E_OUTOFMEMORY);
}

void NativeWindow::HookInnerWindows() {
    for (HWND inner = GetWindow(m_window, GW_CHILD); inner; inner = GetWindow(inner, GW_HWNDNEXT))
        if (!OwnerOf(inner)) Hook(inner);
}

LRESULT NativeWindow::CallNative(const Message& message) noexcept {
    ++m_lDepth;
    const LRESULT result = DefSubclassProc(message.window, message.id, message.wParam, message.lParam);
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
    // A window of another thread is none of ours, and would make this one wait.
    if (GetWindowThreadProcessId(window, nullptr) != GetCurrentThreadId()) return nullptr;
    const auto* const native = reinterpret_cast<const NativeWindow*>(SendMessageW(window, WhoAreYou(), 0, 0));
    return native ? native->m_pOwner : nullptr;
}

LRESULT NativeWindow::Dispatch(const Message& message) {
    if (message.id == WM_PARENTNOTIFY && LOWORD(message.wParam) == WM_CREATE && m_bHasInnerWindows) {
        const HWND inner = reinterpret_cast<HWND>(message.lParam);
        if (!OwnerOf(inner)) Hook(inner);
    }
    if (m_pOwner) return m_pOwner->OnMessage(*this, message);
    return CallNative(message);
}

LRESULT CALLBACK NativeWindow::Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                         DWORD_PTR reference) noexcept {
    if (id == WhoAreYou()) return static_cast<LRESULT>(reference);
    const std::shared_ptr<NativeWindow> self = reinterpret_cast<NativeWindow*>(reference)->shared_from_this();
    const Message message{window, id, wParam, lParam};
    LRESULT result = 0;
    if (id == WM_NCDESTROY) {
        RemoveWindowSubclass(window, &Procedure, SubclassId);
        result = self->CallNative(message);
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
