#include "server/ControlPart.h"

#include <string>
#include <vector>

#include "server/Boundary.h"

namespace kiv::server {

namespace {

/// The character behind the "&" of a caption, in upper case; 0 where there is none.
wchar_t AccessKey(std::wstring_view caption) noexcept {
    for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
        if (caption[i] != L'&') continue;
        if (caption[i + 1] != L'&')
            return static_cast<wchar_t>(reinterpret_cast<ULONG_PTR>(
                CharUpperW(reinterpret_cast<LPWSTR>(static_cast<ULONG_PTR>(caption[i + 1])))));
        ++i;
    }
    return 0;
}

BOOL CALLBACK AddAccessKey(HWND window, LPARAM keys) noexcept {
    wchar_t caption[128];
    const int length = GetWindowTextW(window, caption, static_cast<int>(std::size(caption)));
    const bool reachable = (GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) && IsWindowEnabled(window);
    const wchar_t key = AccessKey({caption, static_cast<std::size_t>(length)});
    AtBoundary([&] {
        if (reachable && key) reinterpret_cast<std::wstring*>(keys)->push_back(key);
    });
    return TRUE;
}

std::vector<ACCEL> AccessKeys(HWND window) {
    std::wstring keys;
    EnumChildWindows(window, &AddAccessKey, reinterpret_cast<LPARAM>(&keys));
    std::vector<ACCEL> result;
    for (const wchar_t key : keys) {
        const SHORT code = VkKeyScanW(static_cast<wchar_t>(
            reinterpret_cast<ULONG_PTR>(CharLowerW(reinterpret_cast<LPWSTR>(static_cast<ULONG_PTR>(key))))));
        if (code == -1) continue;
        ACCEL accel{};
        accel.fVirt = FVIRTKEY | FALT;
        accel.key = static_cast<WORD>(code & 0xFF);
        result.push_back(accel);
    }
    return result;
}

}  // namespace

HRESULT ControlPart::GetControlInfo(CONTROLINFO* info) {
    if (!info) return E_POINTER;
    info->hAccel = nullptr;
    info->cAccel = 0;
    info->dwFlags = 0;
    return AtBoundary([&] {
        m_accelerators.Reset();
        const HWND window = m_pCore->Surface().Window();
        auto keys = window ? AccessKeys(window) : std::vector<ACCEL>();
        if (keys.empty()) return;
        m_accelerators.Reset(CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size())));
        if (!m_accelerators) return;
        info->hAccel = m_accelerators.Get();
        info->cAccel = static_cast<USHORT>(keys.size());
    });
}

HRESULT ControlPart::OnMnemonic(LPMSG message) {
    if (!message) return E_POINTER;
    return AtBoundaryOf(Owner(), [&] {
        const bool done = m_pCore->Surface().PressMnemonic(static_cast<wchar_t>(message->wParam));
        return done ? S_OK : S_FALSE;
    });
}

HRESULT ControlPart::OnAmbientPropertyChange(DISPID id) {
    return AtBoundaryOf(Owner(), [&] {
        const bool matters = id == DISPID_AMBIENT_USERMODE || id == DISPID_AMBIENT_UIDEAD || id == DISPID_UNKNOWN;
        if (matters) m_listener.OnAmbientsChanged();
    });
}

HRESULT ControlPart::FreezeEvents(BOOL freeze) {
    return AtBoundaryOf(Owner(), [&] { m_events.Freeze(freeze != FALSE); });
}

}  // namespace kiv::server
