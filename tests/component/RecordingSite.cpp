#include "RecordingSite.h"

#include <algorithm>

namespace component {

namespace {

/// The container's wrapper round a control, with the one member that controls ask for.
class Extender final : public comkit::ComObject<Extender, IDispatch> {
public:
    Extender(std::wstring name, std::function<HRESULT(VARIANT&)> onName)
        : m_name(std::move(name)), m_onName(std::move(onName)) {}
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* out) override {
        *out = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** out) override {
        *out = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        if (_wcsicmp(names[0], L"Name") != 0) return DISP_E_UNKNOWNNAME;
        ids[0] = 0x10000;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                     UINT*) override {
        if (id != 0x10000) return DISP_E_MEMBERNOTFOUND;
        if (m_onName) return m_onName(*result);
        *result = comkit::Variant(m_name.c_str()).Detach();
        return S_OK;
    }

private:
    std::wstring m_name;
    std::function<HRESULT(VARIANT&)> m_onName;
};

}  // namespace

RecordingSite::RecordingSite()
    : m_window(CreateWindowExW(0, L"STATIC", L"container", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_VISIBLE, 0, 0,
                               700, 600, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr)),
      m_frame(comkit::MakeObject<RecordingFrame>(m_window.Get())) {}

HRESULT RecordingSite::Note(const char* call) {
    calls.emplace_back(call);
    return Intercept(call).value_or(S_OK);
}

std::optional<HRESULT> RecordingSite::Intercept(const char* call) const {
    if (!onCall) return std::nullopt;
    const auto handler = onCall;  // a copy: it may take itself away
    return handler(call);
}

HRESULT RecordingSite::QueryInterface(REFIID iid, void** out) {
    const bool forNoWindow = IsEqualIID(iid, IID_IOleInPlaceSiteEx) || IsEqualIID(iid, IID_IOleInPlaceSiteWindowless);
    const bool hidden = std::any_of(missing.begin(), missing.end(), [&](const IID& m) { return IsEqualIID(m, iid); });
    const bool untold = IsEqualIID(iid, __uuidof(IAccessibleWindowlessSite)) && !accessibleParent;
    if (!hidden && !untold && (offersNoWindow || !forNoWindow)) return ComObject::QueryInterface(iid, out);
    *out = nullptr;
    return E_NOINTERFACE;
}

void* RecordingSite::FindInterface(REFIID iid) noexcept {
    const bool isOlder = IsEqualIID(iid, IID_IOleWindow) || IsEqualIID(iid, IID_IOleInPlaceSite) ||
                         IsEqualIID(iid, IID_IOleInPlaceSiteEx);
    return isOlder ? static_cast<IOleInPlaceSiteWindowless*>(this) : nullptr;
}

HRESULT RecordingSite::OnInPlaceActivateEx(BOOL* noRedraw, DWORD flags) {
    *noRedraw = FALSE;
    return Note(flags & ACTIVATE_WINDOWLESS ? "OnInPlaceActivateEx(windowless)" : "OnInPlaceActivateEx");
}

HRESULT RecordingSite::InvalidateRect(LPCRECT rect, BOOL) {
    outdated.push_back(rect ? *rect : RECT{});
    return Intercept("InvalidateRect").value_or(S_OK);
}

HRESULT RecordingSite::GetDC(LPCRECT rect, DWORD, HDC* out) {
    *out = nullptr;
    if (!lent) return E_NOTIMPL;
    drawn.push_back(rect ? *rect : RECT{});
    const HRESULT answer = Note("GetDC");
    if (SUCCEEDED(answer)) *out = lent;
    return answer;
}

HRESULT RecordingSite::CanInPlaceActivate() {
    return Intercept("CanInPlaceActivate").value_or(allowsInPlace ? S_OK : S_FALSE);
}

HRESULT RecordingSite::ShowPropertyFrame() {
    return Note("ShowPropertyFrame");
}

HRESULT RecordingSite::GetParentAccessible(IAccessible** out) {
    *out = nullptr;
    calls.emplace_back("GetParentAccessible");
    if (const auto answer = Intercept("GetParentAccessible")) return *answer;
    accessibleParent.CopyTo(out);
    return S_OK;
}

int RecordingSite::Count(const char* call) const {
    return static_cast<int>(std::count(calls.begin(), calls.end(), call));
}

HRESULT RecordingSite::GetMoniker(DWORD, DWORD, IMoniker** out) {
    *out = nullptr;
    return Intercept("GetMoniker").value_or(E_NOTIMPL);
}

HRESULT RecordingSite::GetContainer(IOleContainer** out) {
    *out = nullptr;
    return E_NOINTERFACE;
}

HRESULT RecordingSite::GetWindow(HWND* out) {
    *out = nullptr;
    if (const auto answer = Intercept("GetWindow")) return *answer;
    *out = parent.value_or(m_window.Get());
    return S_OK;
}

HRESULT RecordingSite::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT rect,
                                        LPRECT clipped, LPOLEINPLACEFRAMEINFO info) {
    *frame = nullptr;
    *document = nullptr;
    *rect = {};
    *clipped = {};
    if (const auto answer = Intercept("GetWindowContext")) return *answer;
    if (hasFrame) *frame = comkit::ComPtr<RecordingFrame>(m_frame).Detach();
    if (documentWindow) *document = comkit::ComPtr<RecordingFrame>(documentWindow).Detach();
    *rect = position;
    GetClientRect(m_window.Get(), clipped);
    if (clip) *clipped = *clip;
    info->fMDIApp = FALSE;
    info->hwndFrame = m_window.Get();
    info->haccel = nullptr;
    info->cAccelEntries = 0;
    return S_OK;
}

HRESULT RecordingSite::OnPosRectChange(LPCRECT rect) {
    calls.emplace_back("OnPosRectChange");
    if (const auto answer = Intercept("OnPosRectChange")) return *answer;
    if (onPosRectChange) onPosRectChange();
    if (!followsPlace) return S_OK;
    position = *rect;
    RECT whole{};
    GetClientRect(m_window.Get(), &whole);
    if (const auto object = comkit::ComPtr<IOleInPlaceObject>::From(m_pControl)) object->SetObjectRects(rect, &whole);
    return S_OK;
}

HRESULT RecordingSite::GetExtendedControl(IDispatch** out) {
    *out = nullptr;
    if (const auto answer = Intercept("GetExtendedControl")) return *answer;
    if (extenderName.empty()) return E_NOTIMPL;
    *out = comkit::MakeObject<Extender>(extenderName, onExtenderName).Detach();
    return S_OK;
}

HRESULT RecordingSite::TransformCoords(POINTL* himetric, POINTF* container, DWORD flags) {
    *container = {};
    if (const auto answer = Intercept("TransformCoords")) return *answer;
    if (flags != (XFORMCOORDS_POSITION | XFORMCOORDS_HIMETRICTOCONTAINER)) return E_INVALIDARG;
    container->x = static_cast<float>(himetric->x * unitsPerHimetric);
    container->y = static_cast<float>(himetric->y * unitsPerHimetric);
    return S_OK;
}

HRESULT RecordingSite::TranslateAccelerator(MSG*, DWORD modifiers) {
    calls.emplace_back("TranslateAccelerator");
    keyModifiers = modifiers;
    return Intercept("TranslateAccelerator").value_or(S_FALSE);
}

HRESULT RecordingSite::GetTypeInfoCount(UINT* out) {
    *out = 0;
    return S_OK;
}

HRESULT RecordingSite::GetTypeInfo(UINT, LCID, ITypeInfo** out) {
    *out = nullptr;
    return E_NOTIMPL;
}

HRESULT RecordingSite::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) {
    if (const auto answer = Intercept("Ambient")) return *answer;
    if (onAmbient && onAmbient(id, *result)) return S_OK;
    switch (id) {
        case DISPID_AMBIENT_UIDEAD:
            *result = comkit::Variant(uiDead).Detach();
            return S_OK;
        case DISPID_AMBIENT_USERMODE:
            if (!userMode) return DISP_E_MEMBERNOTFOUND;
            *result = comkit::Variant(*userMode).Detach();
            return S_OK;
        case DISPID_AMBIENT_DISPLAYNAME:
            *result = comkit::Variant(displayName.c_str()).Detach();
            return S_OK;
        case DISPID_AMBIENT_FONT:
            // Some containers have the property and nothing in it.
            *result = comkit::Variant(font.Get()).Detach();
            return S_OK;
        default:
            return DISP_E_MEMBERNOTFOUND;
    }
}

}  // namespace component
