#include "server/DataPart.h"

#include <vector>

#include "comkit/Enumerator.h"
#include "comkit/Errors.h"
#include "server/Boundary.h"
#include "server/MetafilePicture.h"

namespace kiv::server {

namespace {

struct Offer {
    CLIPFORMAT format;
    DWORD medium;
    void (*make)(win32::HostedSurface& surface, STGMEDIUM& out);
};

constexpr Offer Offers[] = {
    {CF_ENHMETAFILE, TYMED_ENHMF, &MakeEnhancedMetafile},
    {CF_METAFILEPICT, TYMED_MFPICT, &MakeMetafilePicture},
};

FORMATETC FormatOf(const Offer& offer) noexcept {
    return {offer.format, nullptr, DVASPECT_CONTENT, -1, offer.medium};
}

/// The offer that answers a format, or why none does.
HRESULT FindOffer(const FORMATETC& wanted, const Offer*& found) noexcept {
    found = nullptr;
    for (const Offer& offer : Offers)
        if (offer.format == wanted.cfFormat) found = &offer;
    if (!found) return DV_E_FORMATETC;
    if (wanted.dwAspect != DVASPECT_CONTENT && wanted.dwAspect != DVASPECT_DOCPRINT) return DV_E_DVASPECT;
    if (wanted.lindex != -1) return DV_E_LINDEX;
    return wanted.tymed & found->medium ? S_OK : DV_E_TYMED;
}

void CopyFormat(const FORMATETC& item, FORMATETC& out) {
    out = item;
}
void DropFormat(FORMATETC&) noexcept {}

}  // namespace

void DataPart::NotifyChanged() noexcept {
    if (const auto advise = m_pAdvise) advise->SendOnDataChange(this, 0, 0);
}

HRESULT DataPart::GetData(FORMATETC* format, STGMEDIUM* medium) {
    if (!format || !medium) return E_POINTER;
    *medium = {};
    const Offer* offer = nullptr;
    const HRESULT hr = FindOffer(*format, offer);
    if (FAILED(hr)) return hr;
    return AtBoundaryOf(Owner(), [&] {
        m_host.EnsureInitialized();
        offer->make(m_pCore->Surface(), *medium);
    });
}

HRESULT DataPart::QueryGetData(FORMATETC* format) {
    const Offer* offer = nullptr;
    return format ? FindOffer(*format, offer) : E_POINTER;
}

HRESULT DataPart::GetCanonicalFormatEtc(FORMATETC* format, FORMATETC* out) {
    if (!format || !out) return E_POINTER;
    // The picture does not depend on the device that it is for.
    *out = *format;
    out->ptd = nullptr;
    return format->ptd ? S_OK : DATA_S_SAMEFORMATETC;
}

HRESULT DataPart::EnumFormatEtc(DWORD direction, IEnumFORMATETC** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (direction != DATADIR_GET) return E_NOTIMPL;
    return AtBoundary([&] {
        using List = comkit::Enumerator<IEnumFORMATETC, FORMATETC, FORMATETC, &CopyFormat, &DropFormat>;
        std::vector<FORMATETC> formats;
        for (const Offer& offer : Offers) formats.push_back(FormatOf(offer));
        *out = comkit::MakeObject<List>(std::move(formats)).Detach();
    });
}

HRESULT DataPart::DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink, DWORD* cookie) {
    if (!format || !cookie) return E_POINTER;
    *cookie = 0;
    const Offer* offer = nullptr;
    // A sink may ask for all formats, by none.
    if (const HRESULT hr = format->cfFormat ? FindOffer(*format, offer) : S_OK; FAILED(hr)) return hr;
    return AtBoundaryOf(Owner(), [&] {
        if (!m_pAdvise) comkit::ThrowIfFailed(CreateDataAdviseHolder(m_pAdvise.Put()));
        const auto advise = m_pAdvise;
        comkit::ThrowIfFailed(advise->Advise(this, format, flags, sink, cookie));
    });
}

HRESULT DataPart::DUnadvise(DWORD cookie) {
    const auto advise = m_pAdvise;
    return advise ? advise->Unadvise(cookie) : OLE_E_NOCONNECTION;
}

HRESULT DataPart::EnumDAdvise(IEnumSTATDATA** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    const auto advise = m_pAdvise;
    return advise ? advise->EnumAdvise(out) : OLE_E_ADVISENOTSUPPORTED;
}

}  // namespace kiv::server
