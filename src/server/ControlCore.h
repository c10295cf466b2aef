// What the OLE parts know of the control that they stand for, and what the control gets from them. Both controls of the
// library meet the parts here, and only here.
#pragma once

#include <oaidl.h>
#include <ocidl.h>

#include <functional>
#include <memory>
#include <string_view>

#include "comkit/ComPtr.h"
#include "pages/PageDescription.h"
#include "platform/Container.h"
#include "platform/PropertyBag.h"
#include "win32/HostedSurface.h"

namespace kiv::server {

class EventSource;

/// One control: its dual interface, its surface and its state.
class ControlCore {
public:
    virtual ~ControlCore() = default;

    /// The control's own interfaces: the dual one, IDispatch, and IVexaSupport. The pointer is not counted.
    virtual void* FindInterface(REFIID iid) noexcept = 0;
    virtual win32::HostedSurface& Surface() noexcept = 0;

    virtual void InitProperties() = 0;
    virtual void ReadProperties(const PropertyBag& bag) = 0;
    virtual void WriteProperties(PropertyBag& bag) const = 0;
    /// The control's window became visible.
    virtual void OnShown() = 0;
    virtual void OnUserModeChanged() = 0;
    /// The control's font object was changed in place.
    virtual void OnFontChanged() = 0;
    /// The user's regional and other settings may be other ones.
    virtual void OnSettingsChanged() {}
    virtual void Terminate() noexcept = 0;

    /// The member whose value is kept under a persistence key; DISPID_UNKNOWN where there is none.
    virtual DISPID MemberOfKey(std::u16string_view key) const noexcept = 0;
};

/// The object round a control. Outlives it.
class ControlHost {
public:
    virtual IUnknown& Identity() noexcept = 0;
    virtual Container& ContainerSide() noexcept = 0;
    virtual win32::WindowlessSite& SiteOfSurface() noexcept = 0;
    virtual EventSource& Events() noexcept = 0;
    /// Gives the control its defaults where its container neither loaded it nor asked for a new one.
    virtual void EnsureInitialized() = 0;
    /// Properties were loaded, or given their defaults.
    virtual void OnLoaded() = 0;
    /// False: a container that watches the member does not allow a change now.
    virtual bool RequestEdit(DISPID member) = 0;
    /// Runs a modal dialog of the control. It is given the top-level window that it belongs to; null where there is
    /// none. Meanwhile the container keeps its modeless windows out of the way.
    virtual void RunModal(const std::function<void(HWND owner)>& dialog) = 0;
    /// Null where there is none.
    virtual comkit::ComPtr<IOleClientSite> ContainerSite() const noexcept = 0;

protected:
    ~ControlHost() = default;
};

/// What is fixed about a class of controls.
struct ControlClass {
    const CLSID& clsid;
    const IID& dualInterface;
    const IID& eventInterface;
    const wchar_t* name;      ///< class name, the part of the ProgID behind the dot
    const wchar_t* userType;  ///< for menus and lists
    DWORD miscStatus;
    UINT toolboxBitmap;  ///< resource number
    ControlKind kind;    ///< which property pages are for it
    std::unique_ptr<ControlCore> (*createCore)(ControlHost& host);
};

}  // namespace kiv::server
