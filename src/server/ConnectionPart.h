// IConnectionPointContainer: the control's event set and IPropertyNotifySink.
#pragma once

#include <ocidl.h>

#include "comkit/ComObject.h"
#include "server/EventSource.h"

namespace kiv::server {

class ConnectionPart final : public comkit::ComPart<IConnectionPointContainer> {
public:
    ConnectionPart(IUnknown& owner, EventSource& events) noexcept : ComPart(owner), m_events(events) {}

    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** out) override;
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** out) override;

private:
    EventSource& m_events;
};

}  // namespace kiv::server
