#include "server/InPlacePart.h"

#include "server/Boundary.h"

namespace kiv::server {

namespace {

/// Shift, Ctrl and Alt as the container's TranslateAccelerator wants them.
DWORD KeyModifiers() noexcept {
    constexpr DWORD Shift = 1;
    constexpr DWORD Control = 2;
    constexpr DWORD Alt = 4;
    DWORD modifiers = 0;
    if (GetKeyState(VK_SHIFT) < 0) modifiers |= Shift;
    if (GetKeyState(VK_CONTROL) < 0) modifiers |= Control;
    if (GetKeyState(VK_MENU) < 0) modifiers |= Alt;
    return modifiers;
}

}  // namespace

void* InPlacePart::Find(REFIID iid) noexcept {
    if (IsEqualIID(iid, IID_IOleWindow) || IsEqualIID(iid, IID_IOleInPlaceObject))
        return static_cast<IOleInPlaceObject*>(this);
    const bool asksForNoWindow = IsEqualIID(iid, IID_IOleInPlaceObjectWindowless);
    return asksForNoWindow && !m_pCore->Surface().CanBeWindowless() ? nullptr : ComPart::Find(iid);
}

HRESULT InPlacePart::GetWindow(HWND* out) {
    if (!out) return E_POINTER;
    *out = m_pCore->Surface().Window();
    return *out ? S_OK : E_FAIL;
}

HRESULT InPlacePart::InPlaceDeactivate() {
    return AtBoundaryOf(Owner(), [&] { m_activation.Deactivate(); });
}

HRESULT InPlacePart::UIDeactivate() {
    return AtBoundaryOf(Owner(), [&] { m_activation.UiDeactivate(); });
}

HRESULT InPlacePart::SetObjectRects(LPCRECT position, LPCRECT clip) {
    if (!position) return E_POINTER;
    return AtBoundaryOf(Owner(), [&] { m_activation.SetRects(*position, clip ? *clip : *position); });
}

HRESULT InPlacePart::OnWindowMessage(UINT id, WPARAM wParam, LPARAM lParam, LRESULT* out) {
    if (!out) return E_POINTER;
    *out = 0;
    return AtBoundaryOf(Owner(), [&] {
        const bool isInput = (id >= WM_MOUSEFIRST && id <= WM_MOUSELAST) || (id >= WM_KEYFIRST && id <= WM_KEYLAST);
        if (isInput && m_activation.IsUiDead()) return S_FALSE;
        const auto result = m_pCore->Surface().OnWindowMessage(id, wParam, lParam);
        *out = result.value_or(0);
        return result ? S_OK : S_FALSE;
    });
}

HRESULT InPlacePart::GetDropTarget(IDropTarget** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    return E_NOTIMPL;  // nothing can be dropped here
}

HRESULT InPlacePart::TranslateAccelerator(LPMSG message) {
    if (!message) return E_POINTER;
    return AtBoundaryOf(Owner(), [&] {
        if (m_pCore->Surface().TranslateKey(*message)) return S_OK;
        const auto site = m_site.Control();
        return site ? site->TranslateAccelerator(message, KeyModifiers()) : S_FALSE;
    });
}

}  // namespace kiv::server
