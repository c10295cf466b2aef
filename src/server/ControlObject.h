// The COM object round a control: one identity over the parts, which share what is here.
//
// Lives as long as somebody holds a reference, and during every event that it raises. Its end stops the control and
// ends its windows, whatever state the container left it in.
#pragma once

#include <objidl.h>
#include <ocidl.h>

#include <memory>

#include "comkit/ComObject.h"
#include "platform/Container.h"
#include "server/Activation.h"
#include "server/BrowsePart.h"
#include "server/ClientSite.h"
#include "server/ConnectionPart.h"
#include "server/ControlCore.h"
#include "server/ControlPart.h"
#include "server/DataPart.h"
#include "server/EventSource.h"
#include "server/FontWatch.h"
#include "server/InPlacePart.h"
#include "server/OleObjectPart.h"
#include "server/PersistPart.h"
#include "server/QuickActivatePart.h"
#include "server/ViewPart.h"

namespace kiv::server {

class ControlObject final : public comkit::ComObject<ControlObject, IProvideClassInfo2, ISupportErrorInfo>,
                            private ControlHost,
                            private Container,
                            private win32::WindowlessSite,
                            private SiteListener {
public:
    explicit ControlObject(const ControlClass& controlClass);
    ~ControlObject() override;

    void* FindInterface(REFIID iid) noexcept;

    // IProvideClassInfo2
    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** out) override;
    HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* out) override;
    // ISupportErrorInfo
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override;

private:
    // ControlHost
    IUnknown& Identity() noexcept override { return *ComObject::Identity(); }
    Container& ContainerSide() noexcept override { return *this; }
    win32::WindowlessSite& SiteOfSurface() noexcept override { return *this; }
    EventSource& Events() noexcept override { return m_events; }
    void EnsureInitialized() override { m_persist.EnsureInitialized(); }
    void OnLoaded() override;
    bool RequestEdit(DISPID member) override;
    void RunModal(const std::function<void(HWND owner)>& dialog) override;
    comkit::ComPtr<IOleClientSite> ContainerSite() const noexcept override { return m_site.Get(); }

    // Container
    bool UserMode() const override { return m_site.UserMode(); }
    FontPtr AmbientFont() const override;
    std::u16string InstanceName() const override { return m_site.InstanceName(); }
    void PropertyChanged(std::u16string_view key) override;
    void MarkDirty() override;
    void SetExtenderNumber(std::u16string_view name, std::int32_t value) override {
        m_site.SetExtenderNumber(name, value);
    }
    Point ToContainerPosition(const Point& twips) const override { return m_site.ToContainerPosition(twips); }

    // win32::WindowlessSite
    void OnSizeChanged(const Size& twips) override;
    void OnFocus(bool gained) override;
    void OnMouseActivate() override;
    void OnInvalidate(const RECT& pixels) override;
    bool OnDraw(const RECT& pixels, const Drawing& draw) override;
    void OnCapture(bool wanted) override;
    void OnSettingsChanged() override;

    // SiteListener
    void OnAmbientsChanged() override;
    void OnClosing() noexcept override;

    /// The window that a dialog belongs to; null where there is none.
    HWND DialogOwner() const noexcept;
    /// The control looks different.
    void TellPictureChanged() noexcept;

    const ControlClass& m_class;
    EventSource m_events;
    ClientSite m_site;
    Activation m_activation;
    std::unique_ptr<ControlCore> m_pCore;
    FontWatch m_font;
    PersistPart m_persist;
    ConnectionPart m_connections;
    ControlPart m_control;
    OleObjectPart m_oleObject;
    InPlacePart m_inPlace;
    ViewPart m_view;
    DataPart m_data;
    BrowsePart m_browse;
    QuickActivatePart m_quickActivate;
};

}  // namespace kiv::server
