// IQuickActivate: what a container would otherwise ask for in a dozen calls, in one.
#pragma once

#include <ocidl.h>

#include "comkit/ComObject.h"
#include "server/ControlCore.h"
#include "server/EventSource.h"

namespace kiv::server {

class QuickActivatePart final : public comkit::ComPart<IQuickActivate> {
public:
    QuickActivatePart(IUnknown& owner, const ControlClass& controlClass, EventSource& events) noexcept
        : ComPart(owner), m_class(controlClass), m_events(events) {}

    HRESULT STDMETHODCALLTYPE QuickActivate(QACONTAINER* container, QACONTROL* control) override;
    HRESULT STDMETHODCALLTYPE SetContentExtent(LPSIZEL size) override;
    HRESULT STDMETHODCALLTYPE GetContentExtent(LPSIZEL out) override;

private:
    const ControlClass& m_class;
    EventSource& m_events;
};

}  // namespace kiv::server
