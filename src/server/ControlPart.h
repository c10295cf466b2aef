// IOleControl: access keys, ambient properties, freezing of events.
#pragma once

#include <ocidl.h>

#include "comkit/ComObject.h"
#include "comkit/Handle.h"
#include "server/ClientSite.h"
#include "server/ControlCore.h"
#include "server/EventSource.h"

namespace kiv::server {

namespace detail {
inline void DestroyAccelerators(HACCEL table) noexcept {
    DestroyAcceleratorTable(table);
}
}  // namespace detail
using UniqueAccelerators = comkit::UniqueHandle<HACCEL, &detail::DestroyAccelerators>;

class ControlPart final : public comkit::ComPart<IOleControl> {
public:
    ControlPart(IUnknown& owner, EventSource& events, SiteListener& listener) noexcept
        : ComPart(owner), m_events(events), m_listener(listener) {}
    void Attach(ControlCore& core) noexcept { m_pCore = &core; }

    /// The table stays valid until the next call. Only an active control has access keys.
    HRESULT STDMETHODCALLTYPE GetControlInfo(CONTROLINFO* info) override;
    HRESULT STDMETHODCALLTYPE OnMnemonic(LPMSG message) override;
    HRESULT STDMETHODCALLTYPE OnAmbientPropertyChange(DISPID id) override;
    HRESULT STDMETHODCALLTYPE FreezeEvents(BOOL freeze) override;

private:
    EventSource& m_events;
    SiteListener& m_listener;
    ControlCore* m_pCore = nullptr;
    UniqueAccelerators m_accelerators;
};

}  // namespace kiv::server
