// IDataObject: the control's picture as a metafile, plain and enhanced, for containers that keep a picture of an
// object or paste one. Nothing can be put in.
#pragma once

#include <objidl.h>

#include "comkit/ComObject.h"
#include "server/ControlCore.h"

namespace kiv::server {

class DataPart final : public comkit::ComPart<IDataObject> {
public:
    DataPart(IUnknown& owner, ControlHost& host) noexcept : ComPart(owner), m_host(host) {}
    void Attach(ControlCore& core) noexcept { m_pCore = &core; }

    /// Tells the container's data sinks that the picture is another one.
    void NotifyChanged() noexcept;
    void DropSinks() noexcept { m_pAdvise.Reset(); }

    HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) override;
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return DATA_E_FORMATETC; }
    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) override;
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC* format, FORMATETC* out) override;
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD direction, IEnumFORMATETC** out) override;
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA** out) override;

private:
    ControlHost& m_host;
    ControlCore* m_pCore = nullptr;
    comkit::ComPtr<IDataAdviseHolder> m_pAdvise;
};

}  // namespace kiv::server
