#include "server/QuickActivatePart.h"

#include <oleidl.h>

#include "comkit/ComPtr.h"
#include "comkit/Errors.h"
#include "server/Boundary.h"

namespace kiv::server {

HRESULT QuickActivatePart::QuickActivate(QACONTAINER* container, QACONTROL* control) {
    if (!container || !control || container->cbSize < sizeof(*container) || control->cbSize < sizeof(*control))
        return E_INVALIDARG;
    const ULONG size = control->cbSize;
    *control = {};
    control->cbSize = size;
    return AtBoundaryOf(Owner(), [&] {
        const auto object = comkit::ComPtr<IOleObject>::From(&Owner());
        comkit::ThrowIfFailed(object->SetClientSite(container->pClientSite));
        if (container->pAdviseSink)
            if (const auto view = object.As<IViewObject>())
                view->SetAdvise(DVASPECT_CONTENT, 0, container->pAdviseSink);
        if (container->pPropertyNotifySink)
            comkit::ThrowIfFailed(
                m_events.Notifications().Advise(container->pPropertyNotifySink, &control->dwPropNotifyCookie));
        if (container->pUnkEventSink)
            comkit::ThrowIfFailed(m_events.Events().Advise(container->pUnkEventSink, &control->dwEventCookie));
        control->dwMiscStatus = m_class.miscStatus;
        control->dwViewStatus = VIEWSTATUS_OPAQUE;
    });
}

HRESULT QuickActivatePart::SetContentExtent(LPSIZEL size) {
    const auto object = comkit::ComPtr<IOleObject>::From(&Owner());
    return object->SetExtent(DVASPECT_CONTENT, size);
}

HRESULT QuickActivatePart::GetContentExtent(LPSIZEL out) {
    const auto object = comkit::ComPtr<IOleObject>::From(&Owner());
    return object->GetExtent(DVASPECT_CONTENT, out);
}

}  // namespace kiv::server
