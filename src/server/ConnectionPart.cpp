#include "server/ConnectionPart.h"

#include <vector>

#include "comkit/Enumerator.h"
#include "server/Boundary.h"

namespace kiv::server {

HRESULT ConnectionPart::EnumConnectionPoints(IEnumConnectionPoints** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    return AtBoundary([&] {
        std::vector<comkit::ComPtr<IConnectionPoint>> points;
        points.emplace_back(&m_events.Events());
        points.emplace_back(&m_events.Notifications());
        using List = comkit::PointerEnumerator<IEnumConnectionPoints, IConnectionPoint>;
        *out = comkit::MakeObject<List>(std::move(points)).Detach();
    });
}

HRESULT ConnectionPart::FindConnectionPoint(REFIID iid, IConnectionPoint** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (IsEqualIID(iid, m_events.Events().Iid())) {
        *out = &m_events.Events();
    } else if (IsEqualIID(iid, IID_IPropertyNotifySink)) {
        *out = &m_events.Notifications();
    } else {
        return CONNECT_E_NOCONNECTION;
    }
    (*out)->AddRef();
    return S_OK;
}

}  // namespace kiv::server
