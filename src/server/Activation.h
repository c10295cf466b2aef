// A control's way through the states of embedding: loaded, in-place active (its windows exist, or it lives in the
// container's), UI active (it has the keyboard and the container's frame knows it).
//
// A control that can do without a window gets none where the container offers as much. A class of controls that is
// never UI active is in-place active instead. Holds the container's in-place site and frame only while active. Every
// call to the container may re-enter.
#pragma once

#include <ocidl.h>
#include <oleidl.h>

#include "comkit/ComPtr.h"
#include "platform/Geometry.h"
#include "server/ClientSite.h"
#include "server/ControlCore.h"

namespace kiv::server {

class Activation final {
public:
    Activation(ControlHost& host, const ClientSite& site, const ControlClass& controlClass) noexcept
        : m_host(host), m_site(site), m_class(controlClass) {}
    Activation(const Activation&) = delete;
    Activation& operator=(const Activation&) = delete;

    /// The control, and what the container's frame is given while the control is UI active.
    void Attach(ControlCore& core, IOleInPlaceActiveObject& activeObject) noexcept {
        m_pCore = &core;
        m_pActiveObject = &activeObject;
    }

    bool IsActive() const noexcept { return m_bActive; }
    bool IsUiActive() const noexcept { return m_bUiActive; }
    /// The container's; null while inactive, and where it has none.
    const comkit::ComPtr<IOleInPlaceFrame>& Frame() const noexcept { return m_pFrame; }

    /// Brings the control's windows up where the container wants them. Throws comkit::ComError when the container
    /// refuses or a window cannot be made; then nothing is left active.
    void Activate();
    /// Activates first where needed. With takeFocus, the focus goes to the first child unless a child has it.
    void UiActivate(bool takeFocus);
    void UiDeactivate() noexcept;
    void Deactivate() noexcept;
    void Show(bool visible);

    /// The container's answer to a place: throws what resizing throws.
    void SetRects(const RECT& position, const RECT& clip);
    /// The control has another size: asks an active control's container for the place.
    void RequestSize(const Size& twips);

    /// Without a window: a part of the control, in pixels from its corner, is to be drawn anew. False: it has a window,
    /// or is not active.
    bool Invalidate(const RECT& pixels) noexcept;
    /// False where the container has no device context for a control without a window of its own.
    bool DrawAtOnce(const RECT& pixels, const win32::WindowlessSite::Drawing& draw);
    /// Without a window: the mouse belongs to the control, or no longer does.
    void Capture(bool wanted) noexcept;

    /// An active control of a container whose user interface is dead takes no input.
    void FollowUiDead() noexcept;
    bool IsUiDead() const noexcept { return m_bUiDead; }
    /// Which access keys there are depends on captions, on what is visible and on what is enabled.
    void TellKeysChanged() noexcept;

private:
    void EnterPlace();
    comkit::ComPtr<IOleInPlaceSiteWindowless> OfferOfNoWindow(const comkit::ComPtr<IOleInPlaceSite>& place) const;
    HRESULT TellInPlace(BOOL& noRedraw) const;
    void OpenWindows(IOleInPlaceSite& place, unsigned visit);
    void LeavePlace() noexcept;
    void ForgetPlace() noexcept;
    /// Still in the place that was entered then: any call to the container may have ended it, and begun another.
    bool IsVisit(unsigned visit) const noexcept { return m_bActive && m_lVisits == visit; }
    void TakeFocus();
    /// Limits a window to what its container leaves visible.
    void ClipWindow(HWND window, const RECT& clip) noexcept;
    void TellFrame(IOleInPlaceActiveObject* object) noexcept;

    ControlHost& m_host;
    const ClientSite& m_site;
    const ControlClass& m_class;
    ControlCore* m_pCore = nullptr;
    IOleInPlaceActiveObject* m_pActiveObject = nullptr;
    comkit::ComPtr<IOleInPlaceSite> m_pPlace;
    comkit::ComPtr<IOleInPlaceSiteWindowless> m_pWindowlessPlace;  ///< null while it has a window of its own
    comkit::ComPtr<IOleInPlaceFrame> m_pFrame;
    comkit::ComPtr<IOleInPlaceUIWindow> m_pDocument;
    RECT m_position{};
    unsigned m_lVisits = 0;
    unsigned m_lLeaving = 0;  ///< ends that are under way: none can be turned round from within it
    bool m_bActive = false;
    bool m_bUiActive = false;
    bool m_bClipped = false;
    bool m_bCaptured = false;
    bool m_bUiDead = false;
};

}  // namespace kiv::server
