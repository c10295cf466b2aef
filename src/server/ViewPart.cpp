#include "server/ViewPart.h"

#include "server/Boundary.h"
#include "server/Extent.h"

namespace kiv::server {

namespace {

constexpr DWORD Drawn = DWORD{DVASPECT_CONTENT} | DWORD{DVASPECT_OPAQUE} | DWORD{DVASPECT_DOCPRINT};

}  // namespace

void* ViewPart::Find(REFIID iid) noexcept {
    if (IsEqualIID(iid, IID_IViewObject) || IsEqualIID(iid, IID_IViewObject2)) return static_cast<IViewObjectEx*>(this);
    return ComPart::Find(iid);
}

void ViewPart::NotifyChanged() noexcept {
    const auto sink = m_pSink;
    if (!sink) return;
    if (m_lFlags & ADVF_ONLYONCE) m_pSink.Reset();
    sink->OnViewChange(m_lAspects, -1);
}

HRESULT ViewPart::Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC dc, LPCRECTL bounds, LPCRECTL,
                       BOOL(STDMETHODCALLTYPE*)(ULONG_PTR), ULONG_PTR) {
    if (!(aspect & Drawn)) return DV_E_DVASPECT;
    if (!dc) return E_INVALIDARG;
    return AtBoundaryOf(Owner(), [&] {
        m_host.EnsureInitialized();
        win32::HostedSurface& surface = m_pCore->Surface();
        // What lives in the container's window is drawn there without further words.
        const auto place =
            bounds ? RECT{bounds->left, bounds->top, bounds->right, bounds->bottom} : surface.WindowlessPlace();
        if (!place) return E_INVALIDARG;
        surface.Draw(dc, *place);
        return S_OK;
    });
}

HRESULT ViewPart::GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    return S_FALSE;
}

HRESULT ViewPart::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
    return AtBoundaryOf(Owner(), [&] {
        m_pSink = comkit::ComPtr<IAdviseSink>(sink);
        m_lAspects = aspects;
        m_lFlags = flags;
        if (sink && (flags & ADVF_PRIMEFIRST)) NotifyChanged();
    });
}

HRESULT ViewPart::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
    if (aspects) *aspects = m_lAspects;
    if (flags) *flags = m_lFlags;
    if (sink) m_pSink.CopyTo(sink);
    return S_OK;
}

HRESULT ViewPart::GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, LPSIZEL out) {
    if (!out) return E_POINTER;
    *out = {};
    if (!(aspect & Drawn)) return DV_E_DVASPECT;
    return AtBoundaryOf(Owner(), [&] {
        m_host.EnsureInitialized();
        const Rect bounds = m_pCore->Surface().Area().Bounds();
        *out = HimetricOf(Size{bounds.width, bounds.height});
    });
}

HRESULT ViewPart::GetRect(DWORD aspect, LPRECTL out) {
    if (!out) return E_POINTER;
    *out = {};
    SIZEL extent{};
    const HRESULT hr = GetExtent(aspect, -1, nullptr, &extent);
    if (SUCCEEDED(hr)) *out = {0, 0, extent.cx, extent.cy};
    return hr;
}

HRESULT ViewPart::GetViewStatus(DWORD* out) {
    if (!out) return E_POINTER;
    *out = VIEWSTATUS_OPAQUE;
    return S_OK;
}

HRESULT ViewPart::QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG, DWORD* out) {
    if (!out || !bounds) return E_POINTER;
    *out = HITRESULT_OUTSIDE;
    if (!(aspect & Drawn)) return DV_E_DVASPECT;
    if (PtInRect(bounds, point)) *out = HITRESULT_HIT;
    return S_OK;
}

HRESULT ViewPart::QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT rect, LONG, DWORD* out) {
    if (!out || !bounds || !rect) return E_POINTER;
    *out = HITRESULT_OUTSIDE;
    if (!(aspect & Drawn)) return DV_E_DVASPECT;
    RECT common{};
    if (IntersectRect(&common, bounds, rect)) *out = HITRESULT_HIT;
    return S_OK;
}

}  // namespace kiv::server
