// What a control sees of its container: client site, in-place site, control site, ambient properties, and the sink for
// its property changes.
//
// The site belongs to one control and may outlive the host's side of it; after Detach every call fails politely.
#pragma once

#include <ocidl.h>
#include <olectl.h>
#include <oleidl.h>

#include "comkit/ComObject.h"
#include "comkit/Variant.h"

namespace screenhost {

/// The host's side of a site.
class SiteOwner {
public:
    virtual HWND ViewWindow() const = 0;
    virtual IOleInPlaceFrame& Frame() const = 0;
    /// The control's place in the view's client pixels.
    virtual RECT PixelRect() const = 0;
    virtual void OnPosRectChange(const RECT& pixels) = 0;
    virtual void OnUIActivated(bool active) = 0;
    virtual void OnInPlaceActivated(bool active) = 0;
    virtual void OnAccelerators() = 0;
    /// Not while a screen is laid out: then nothing on it has the keyboard.
    virtual bool MayUIActivate() const = 0;
    /// False when there is no frame to be had.
    virtual bool OnShowPropertyFrame() = 0;
    virtual void OnPropertyChanged(DISPID id) = 0;
    virtual IDispatch& Extender() const = 0;
    /// Empty for an ambient property that the host does not offer.
    virtual comkit::Variant Ambient(DISPID id) const = 0;

protected:
    ~SiteOwner() = default;
};

/// The ambient properties, late-bound, as controls ask for them.
class AmbientProperties final : public comkit::ComPart<IDispatch> {
public:
    AmbientProperties(IUnknown& site, SiteOwner* const& owner) noexcept : ComPart(site), m_owner(owner) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** out) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                     UINT*) override;

private:
    SiteOwner* const& m_owner;
};

class ControlSite final
    : public comkit::ComObject<ControlSite, IOleClientSite, IOleInPlaceSiteEx, IOleControlSite, IPropertyNotifySink> {
public:
    explicit ControlSite(SiteOwner& owner) noexcept : m_owner(&owner), m_ambients(*Identity(), m_owner) {}
    void Detach() noexcept { m_owner = nullptr; }

    void* FindInterface(REFIID iid) noexcept;

    // IOleClientSite
    HRESULT STDMETHODCALLTYPE SaveObject() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker** out) override;
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** out) override;
    HRESULT STDMETHODCALLTYPE ShowObject() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }

    // IOleWindow, IOleInPlaceSite, IOleInPlaceSiteEx
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override { return m_owner ? S_OK : S_FALSE; }
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override;
    HRESULT STDMETHODCALLTYPE OnUIActivate() override;
    HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, RECT* place,
                                               RECT* clip, OLEINPLACEFRAMEINFO* info) override;
    HRESULT STDMETHODCALLTYPE Scroll(SIZE) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL) override;
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override;
    HRESULT STDMETHODCALLTYPE DiscardUndoState() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnPosRectChange(const RECT* place) override;
    HRESULT STDMETHODCALLTYPE OnInPlaceActivateEx(BOOL* noRedraw, DWORD flags) override;
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivateEx(BOOL noRedraw) override;
    HRESULT STDMETHODCALLTYPE RequestUIActivate() override {
        return m_owner && m_owner->MayUIActivate() ? S_OK : S_FALSE;
    }

    // IOleControlSite
    HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override;
    HRESULT STDMETHODCALLTYPE LockInPlaceActive(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetExtendedControl(IDispatch** out) override;
    HRESULT STDMETHODCALLTYPE TransformCoords(POINTL* himetric, POINTF* container, DWORD flags) override;
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG*, DWORD) override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE OnFocus(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ShowPropertyFrame() override;

    // IPropertyNotifySink
    HRESULT STDMETHODCALLTYPE OnChanged(DISPID id) override;
    HRESULT STDMETHODCALLTYPE OnRequestEdit(DISPID) override { return S_OK; }

private:
    template <class Body>
    HRESULT WithOwner(Body&& body) noexcept;

    SiteOwner* m_owner;
    AmbientProperties m_ambients;
};

}  // namespace screenhost
