#include "server/OleObjectPart.h"

#include <olectl.h>

#include <string_view>
#include <vector>

#include "comkit/Enumerator.h"
#include "comkit/Errors.h"
#include "server/Boundary.h"
#include "server/Extent.h"
#include "server/TaskMemory.h"

namespace kiv::server {

namespace {

struct Verb {
    LONG id;
    const wchar_t* menuText;
};

constexpr Verb MenuVerbs[] = {{OLEIVERB_PRIMARY, L"&Edit"}};

void CopyVerb(const Verb& verb, OLEVERB& out) {
    out = {verb.id, TaskString(verb.menuText), 0, OLEVERBATTRIB_ONCONTAINERMENU};
}

void DropVerb(OLEVERB& verb) noexcept {
    CoTaskMemFree(verb.lpszVerbName);
    verb.lpszVerbName = nullptr;
}

}  // namespace

HRESULT OleObjectPart::SetClientSite(IOleClientSite* site) {
    return AtBoundaryOf(Owner(), [&] {
        // Windows belong to the site that they were made for.
        if (m_site.Get().Get() != site) m_activation.Deactivate();
        if (!site) m_listener.OnClosing();
        m_site.Set(site);
        if (site) m_listener.OnAmbientsChanged();
    });
}

HRESULT OleObjectPart::GetClientSite(IOleClientSite** out) {
    if (!out) return E_POINTER;
    m_site.Get().CopyTo(out);
    return S_OK;
}

bool OleObjectPart::SaveFirst(DWORD saveOption) {
    const auto persist = comkit::ComPtr<IPersistStreamInit>::From(&Owner());
    const auto site = m_site.Get();
    if (saveOption == OLECLOSE_NOSAVE || !site || !persist || persist->IsDirty() != S_OK) return true;
    return SUCCEEDED(site->SaveObject());
}

HRESULT OleObjectPart::Close(DWORD saveOption) {
    return AtBoundaryOf(Owner(), [&] {
        SaveFirst(saveOption);
        m_activation.Deactivate();
        if (const auto advise = m_pAdvise) advise->SendOnClose();
        m_listener.OnClosing();
    });
}

HRESULT OleObjectPart::GetMoniker(DWORD assign, DWORD which, IMoniker** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    const auto site = m_site.Get();
    return site ? site->GetMoniker(assign, which, out) : E_UNEXPECTED;
}

HRESULT OleObjectPart::GetClipboardData(DWORD, IDataObject** out) {
    if (out) *out = nullptr;
    return E_NOTIMPL;
}

HRESULT OleObjectPart::DoVerb(LONG verb, LPMSG, IOleClientSite*, LONG, HWND, LPCRECT) {
    return AtBoundaryOf(Owner(), [&] { return RunVerb(verb); });
}

HRESULT OleObjectPart::RunVerb(LONG verb) {
    switch (verb) {
        case OLEIVERB_PRIMARY:
        case OLEIVERB_UIACTIVATE:
        case OLEIVERB_OPEN:
            m_activation.UiActivate(true);
            m_activation.Show(true);
            return S_OK;
        case OLEIVERB_SHOW:
        case OLEIVERB_INPLACEACTIVATE:
            m_activation.Activate();
            m_activation.Show(true);
            return S_OK;
        case OLEIVERB_HIDE:
            m_activation.UiDeactivate();
            m_activation.Show(false);
            return S_OK;
        case OLEIVERB_PROPERTIES:
            return ShowPropertyFrame();
        case OLEIVERB_DISCARDUNDOSTATE:
            return S_OK;
        default:
            break;
    }
    if (verb < 0) return E_NOTIMPL;
    const HRESULT hr = RunVerb(OLEIVERB_PRIMARY);
    return FAILED(hr) ? hr : OLEOBJ_S_INVALIDVERB;
}

HRESULT OleObjectPart::ShowPropertyFrame() {
    // Containers that wrap the control show pages of their own beside the control's.
    const auto site = m_site.Control();
    return site && SUCCEEDED(site->ShowPropertyFrame()) ? S_OK : OLEOBJ_S_CANNOT_DOVERB_NOW;
}

HRESULT OleObjectPart::EnumVerbs(IEnumOLEVERB** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    return AtBoundary([&] {
        using List = comkit::Enumerator<IEnumOLEVERB, OLEVERB, Verb, &CopyVerb, &DropVerb>;
        std::vector<Verb> verbs(std::begin(MenuVerbs), std::end(MenuVerbs));
        *out = comkit::MakeObject<List>(std::move(verbs)).Detach();
    });
}

HRESULT OleObjectPart::GetUserClassID(CLSID* out) {
    if (!out) return E_POINTER;
    *out = m_class.clsid;
    return S_OK;
}

HRESULT OleObjectPart::GetUserType(DWORD form, LPOLESTR* out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    return AtBoundary([&] { *out = TaskString(form == USERCLASSTYPE_SHORT ? m_class.name : m_class.userType); });
}

HRESULT OleObjectPart::SetExtent(DWORD aspect, SIZEL* size) {
    if (!size) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    if (size->cx < 0 || size->cy < 0) return E_INVALIDARG;
    return AtBoundaryOf(Owner(), [&] {
        m_host.EnsureInitialized();
        m_pCore->Surface().SetSizeFromContainer(TwipsOf(*size));
    });
}

HRESULT OleObjectPart::GetExtent(DWORD aspect, SIZEL* out) {
    if (!out) return E_POINTER;
    *out = {};
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    return AtBoundaryOf(Owner(), [&] {
        m_host.EnsureInitialized();
        const Rect bounds = m_pCore->Surface().Area().Bounds();
        *out = HimetricOf(Size{bounds.width, bounds.height});
    });
}

HRESULT OleObjectPart::Advise(IAdviseSink* sink, DWORD* cookie) {
    if (!cookie) return E_POINTER;
    *cookie = 0;
    if (!m_pAdvise) {
        const HRESULT hr = CreateOleAdviseHolder(m_pAdvise.Put());
        if (FAILED(hr)) return hr;
    }
    return m_pAdvise->Advise(sink, cookie);
}

HRESULT OleObjectPart::Unadvise(DWORD cookie) {
    return m_pAdvise ? m_pAdvise->Unadvise(cookie) : OLE_E_NOCONNECTION;
}

HRESULT OleObjectPart::EnumAdvise(IEnumSTATDATA** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    return m_pAdvise ? m_pAdvise->EnumAdvise(out) : E_FAIL;
}

HRESULT OleObjectPart::GetMiscStatus(DWORD aspect, DWORD* out) {
    if (!out) return E_POINTER;
    *out = aspect == DVASPECT_CONTENT ? m_class.miscStatus : 0;
    return S_OK;
}

}  // namespace kiv::server
