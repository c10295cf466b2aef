// IOleObject: client site, verbs, extent, advise sinks.
#pragma once

#include <oleidl.h>

#include "comkit/ComObject.h"
#include "server/Activation.h"
#include "server/ClientSite.h"
#include "server/ControlCore.h"

namespace kiv::server {

class OleObjectPart final : public comkit::ComPart<IOleObject> {
public:
    OleObjectPart(IUnknown& owner, const ControlClass& controlClass, ControlHost& host, ClientSite& site,
                  Activation& activation, SiteListener& listener) noexcept
        : ComPart(owner),
          m_class(controlClass),
          m_host(host),
          m_site(site),
          m_activation(activation),
          m_listener(listener) {}
    void Attach(ControlCore& core) noexcept { m_pCore = &core; }

    HRESULT STDMETHODCALLTYPE SetClientSite(IOleClientSite* site) override;
    HRESULT STDMETHODCALLTYPE GetClientSite(IOleClientSite** out) override;
    HRESULT STDMETHODCALLTYPE SetHostNames(LPCOLESTR, LPCOLESTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Close(DWORD saveOption) override;
    HRESULT STDMETHODCALLTYPE SetMoniker(DWORD, IMoniker*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD assign, DWORD which, IMoniker** out) override;
    HRESULT STDMETHODCALLTYPE InitFromData(IDataObject*, BOOL, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetClipboardData(DWORD, IDataObject** out) override;
    HRESULT STDMETHODCALLTYPE DoVerb(LONG verb, LPMSG message, IOleClientSite* activeSite, LONG index, HWND parent,
                                     LPCRECT position) override;
    HRESULT STDMETHODCALLTYPE EnumVerbs(IEnumOLEVERB** out) override;
    HRESULT STDMETHODCALLTYPE Update() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE IsUpToDate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetUserClassID(CLSID* out) override;
    HRESULT STDMETHODCALLTYPE GetUserType(DWORD form, LPOLESTR* out) override;
    HRESULT STDMETHODCALLTYPE SetExtent(DWORD aspect, SIZEL* size) override;
    HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, SIZEL* out) override;
    HRESULT STDMETHODCALLTYPE Advise(IAdviseSink* sink, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumAdvise(IEnumSTATDATA** out) override;
    HRESULT STDMETHODCALLTYPE GetMiscStatus(DWORD aspect, DWORD* out) override;
    HRESULT STDMETHODCALLTYPE SetColorScheme(LOGPALETTE*) override { return E_NOTIMPL; }

private:
    HRESULT RunVerb(LONG verb);
    HRESULT ShowPropertyFrame();
    bool SaveFirst(DWORD saveOption);

    const ControlClass& m_class;
    ControlHost& m_host;
    ClientSite& m_site;
    Activation& m_activation;
    SiteListener& m_listener;
    ControlCore* m_pCore = nullptr;
    comkit::ComPtr<IOleAdviseHolder> m_pAdvise;
};

}  // namespace kiv::server
