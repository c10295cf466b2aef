#include "screenhost/ControlSite.h"

#include <array>
#include <string_view>

#include "comkit/Errors.h"
#include "screenhost/Units.h"

namespace screenhost {

namespace {

struct AmbientName {
    std::wstring_view name;
    DISPID id;
};

constexpr AmbientName AmbientNames[] = {
    {L"BackColor", DISPID_AMBIENT_BACKCOLOR},
    {L"DisplayName", DISPID_AMBIENT_DISPLAYNAME},
    {L"Font", DISPID_AMBIENT_FONT},
    {L"ForeColor", DISPID_AMBIENT_FORECOLOR},
    {L"LocaleID", DISPID_AMBIENT_LOCALEID},
    {L"ScaleUnits", DISPID_AMBIENT_SCALEUNITS},
    {L"TextAlign", DISPID_AMBIENT_TEXTALIGN},
    {L"UserMode", DISPID_AMBIENT_USERMODE},
    {L"UIDead", DISPID_AMBIENT_UIDEAD},
    {L"ShowGrabHandles", DISPID_AMBIENT_SHOWGRABHANDLES},
    {L"ShowHatching", DISPID_AMBIENT_SHOWHATCHING},
    {L"DisplayAsDefault", DISPID_AMBIENT_DISPLAYASDEFAULT},
    {L"SupportsMnemonics", DISPID_AMBIENT_SUPPORTSMNEMONICS},
    {L"AutoClip", DISPID_AMBIENT_AUTOCLIP},
};

bool SameName(std::wstring_view a, const wchar_t* b) noexcept {
    return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b, -1, TRUE) == CSTR_EQUAL;
}

}  // namespace

HRESULT AmbientProperties::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT AmbientProperties::GetTypeInfo(UINT, LCID, ITypeInfo** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    return DISP_E_BADINDEX;
}

HRESULT AmbientProperties::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (!names || !ids || count == 0) return E_INVALIDARG;
    for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
    for (const auto& [name, id] : AmbientNames)
        if (SameName(name, names[0])) ids[0] = id;
    return ids[0] != DISPID_UNKNOWN && count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
}

HRESULT AmbientProperties::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                  UINT*) {
    if (result) VariantInit(result);
    if (!(flags & DISPATCH_PROPERTYGET) || !m_owner) return DISP_E_MEMBERNOTFOUND;
    return comkit::Guarded([&] {
        comkit::Variant value = m_owner->Ambient(id);
        if (value.Type() == VT_EMPTY) return DISP_E_MEMBERNOTFOUND;
        if (result) *result = value.Detach();
        return S_OK;
    });
}

/// Every call from the control passes here: the owner may be gone, and no exception may get out.
template <class Body>
HRESULT ControlSite::WithOwner(Body&& body) noexcept {
    if (!m_owner) return E_UNEXPECTED;
    const comkit::ComPtr<IOleClientSite> alive(this);  // the owner may let go of us meanwhile
    return comkit::Guarded([&] { return body(*m_owner); });
}

void* ControlSite::FindInterface(REFIID iid) noexcept {
    if (IsEqualIID(iid, __uuidof(IOleInPlaceSite)) || IsEqualIID(iid, __uuidof(IOleWindow)))
        return static_cast<IOleInPlaceSiteEx*>(this);
    return m_ambients.Find(iid);
}

HRESULT ControlSite::GetMoniker(DWORD, DWORD, IMoniker** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    return E_NOTIMPL;
}

HRESULT ControlSite::GetContainer(IOleContainer** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    return E_NOINTERFACE;
}

HRESULT ControlSite::GetWindow(HWND* window) {
    if (!window) return E_POINTER;
    *window = nullptr;
    return WithOwner([&](SiteOwner& owner) {
        *window = owner.ViewWindow();
        return S_OK;
    });
}

HRESULT ControlSite::OnInPlaceActivate() {
    return WithOwner([](SiteOwner& owner) { owner.OnInPlaceActivated(true); });
}

HRESULT ControlSite::OnInPlaceActivateEx(BOOL* noRedraw, DWORD) {
    if (noRedraw) *noRedraw = FALSE;
    return OnInPlaceActivate();
}

HRESULT ControlSite::OnInPlaceDeactivate() {
    return WithOwner([](SiteOwner& owner) { owner.OnInPlaceActivated(false); });
}

HRESULT ControlSite::OnInPlaceDeactivateEx(BOOL) {
    return OnInPlaceDeactivate();
}

HRESULT ControlSite::OnUIActivate() {
    return WithOwner([](SiteOwner& owner) {
        if (!owner.MayUIActivate()) return E_FAIL;
        owner.OnUIActivated(true);
        return S_OK;
    });
}

HRESULT ControlSite::OnUIDeactivate(BOOL) {
    return WithOwner([](SiteOwner& owner) { owner.OnUIActivated(false); });
}

HRESULT ControlSite::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, RECT* place, RECT* clip,
                                      OLEINPLACEFRAMEINFO* info) {
    if (frame) *frame = nullptr;
    if (document) *document = nullptr;
    if (!frame || !document || !place || !clip || !info) return E_POINTER;
    return WithOwner([&](SiteOwner& owner) {
        comkit::ComPtr<IOleInPlaceFrame>(&owner.Frame()).CopyTo(frame);
        *place = owner.PixelRect();
        GetClientRect(owner.ViewWindow(), clip);
        UnionRect(clip, clip, place);
        info->fMDIApp = FALSE;
        owner.Frame().GetWindow(&info->hwndFrame);
        info->haccel = nullptr;
        info->cAccelEntries = 0;
        return S_OK;
    });
}

HRESULT ControlSite::OnPosRectChange(const RECT* place) {
    if (!place) return E_POINTER;
    return WithOwner([&](SiteOwner& owner) { owner.OnPosRectChange(*place); });
}

HRESULT ControlSite::OnControlInfoChanged() {
    return WithOwner([](SiteOwner& owner) { owner.OnAccelerators(); });
}

HRESULT ControlSite::GetExtendedControl(IDispatch** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    return WithOwner([&](SiteOwner& owner) {
        comkit::ComPtr<IDispatch>(&owner.Extender()).CopyTo(out);
        return S_OK;
    });
}

HRESULT ControlSite::TransformCoords(POINTL* himetric, POINTF* container, DWORD flags) {
    if (!himetric || !container) return E_POINTER;
    // The screen counts in twips. A size and a position scale alike, since both start at the control's own corner.
    constexpr float Factor = static_cast<float>(TwipsPerInch) / HimetricPerInch;
    if (flags & XFORMCOORDS_HIMETRICTOCONTAINER) {
        container->x = static_cast<float>(himetric->x) * Factor;
        container->y = static_cast<float>(himetric->y) * Factor;
    } else if (flags & XFORMCOORDS_CONTAINERTOHIMETRIC) {
        himetric->x = std::lround(container->x / Factor);
        himetric->y = std::lround(container->y / Factor);
    } else {
        return E_INVALIDARG;
    }
    return S_OK;
}

HRESULT ControlSite::ShowPropertyFrame() {
    return WithOwner([](SiteOwner& owner) { return owner.OnShowPropertyFrame() ? S_OK : E_NOTIMPL; });
}

HRESULT ControlSite::OnChanged(DISPID id) {
    return WithOwner([&](SiteOwner& owner) { owner.OnPropertyChanged(id); });
}

}  // namespace screenhost
