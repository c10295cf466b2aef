// Raises a control's events and property notifications to all sinks.
//
// Sink lists are copied before firing; the control is held alive until the last sink has returned. While events are
// frozen (freezing nests), events are dropped and property notifications wait for the thaw, each once.
#pragma once

#include <oaidl.h>
#include <ocidl.h>

#include <span>
#include <vector>

#include "comkit/ConnectionPoint.h"

namespace kiv::server {

class EventSource final {
public:
    EventSource(IUnknown& owner, REFIID eventInterface);

    /// args in the order in which they are written; each is VT_BYREF, so that the handlers' changes come back. S_OK, or
    /// the first failure that a handler reported; a sink without a handler for the event does not count.
    HRESULT Fire(DISPID event, std::span<const VARIANT> args);

    void RaiseChanged(DISPID member);
    /// False when a sink refuses.
    bool RequestEdit(DISPID member);
    void Freeze(bool freeze);

    comkit::ConnectionPoint<IDispatch>& Events() noexcept { return m_events; }
    comkit::ConnectionPoint<IPropertyNotifySink>& Notifications() noexcept { return m_notifications; }
    void DropSinks() noexcept;

private:
    void NotifyChanged(DISPID member);

    IUnknown& m_owner;
    comkit::ConnectionPoint<IDispatch> m_events;
    comkit::ConnectionPoint<IPropertyNotifySink> m_notifications;
    unsigned m_lFrozen = 0;
    std::vector<DISPID> m_waiting;
};

/// An argument that a handler may change.
inline VARIANT ByRef(short& value) noexcept {
    VARIANT v;
    VariantInit(&v);
    v.vt = VT_BYREF | VT_I2;
    v.piVal = &value;
    return v;
}
inline VARIANT ByRef(float& value) noexcept {
    VARIANT v;
    VariantInit(&v);
    v.vt = VT_BYREF | VT_R4;
    v.pfltVal = &value;
    return v;
}
inline VARIANT ByRef(VARIANT& value) noexcept {
    VARIANT v;
    VariantInit(&v);
    v.vt = VT_BYREF | VT_VARIANT;
    v.pvarVal = &value;
    return v;
}
inline VARIANT ByRefBool(VARIANT_BOOL& value) noexcept {
    VARIANT v;
    VariantInit(&v);
    v.vt = VT_BYREF | VT_BOOL;
    v.pboolVal = &value;
    return v;
}

}  // namespace kiv::server
