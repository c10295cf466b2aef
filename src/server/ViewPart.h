// IViewObject2 (and its extension IViewObjectEx): pictures of the control for screens, printers and metafiles, with or
// without windows of its own.
#pragma once

#include <ocidl.h>
#include <oleidl.h>

#include "comkit/ComObject.h"
#include "server/ControlCore.h"

namespace kiv::server {

class ViewPart final : public comkit::ComPart<IViewObjectEx> {
public:
    ViewPart(IUnknown& owner, ControlHost& host) noexcept : ComPart(owner), m_host(host) {}
    void Attach(ControlCore& core) noexcept { m_pCore = &core; }

    /// As ComPart, and IViewObject, IViewObject2.
    void* Find(REFIID iid) noexcept;

    /// Tells the container's view sink that the control looks different.
    void NotifyChanged() noexcept;
    void DropSink() noexcept { m_pSink.Reset(); }

    // IViewObject
    HRESULT STDMETHODCALLTYPE Draw(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device, HDC deviceDc,
                                   HDC dc, LPCRECTL bounds, LPCRECTL windowBounds,
                                   BOOL(STDMETHODCALLTYPE* proceed)(ULONG_PTR), ULONG_PTR proceedArgument) override;
    HRESULT STDMETHODCALLTYPE GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE** out) override;
    HRESULT STDMETHODCALLTYPE Freeze(DWORD, LONG, void*, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Unfreeze(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
    HRESULT STDMETHODCALLTYPE GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override;
    // IViewObject2
    HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, LPSIZEL out) override;
    // IViewObjectEx
    HRESULT STDMETHODCALLTYPE GetRect(DWORD aspect, LPRECTL out) override;
    HRESULT STDMETHODCALLTYPE GetViewStatus(DWORD* out) override;
    HRESULT STDMETHODCALLTYPE QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG closeHint,
                                            DWORD* out) override;
    HRESULT STDMETHODCALLTYPE QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT rect, LONG closeHint,
                                           DWORD* out) override;
    HRESULT STDMETHODCALLTYPE GetNaturalExtent(DWORD, LONG, DVTARGETDEVICE*, HDC, DVEXTENTINFO*, LPSIZEL) override {
        return E_NOTIMPL;
    }

private:
    ControlHost& m_host;
    ControlCore* m_pCore = nullptr;
    comkit::ComPtr<IAdviseSink> m_pSink;
    DWORD m_lAspects = 0;
    DWORD m_lFlags = 0;
};

}  // namespace kiv::server
