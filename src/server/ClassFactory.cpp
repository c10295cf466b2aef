#include "server/ClassFactory.h"

#include "server/Boundary.h"

namespace kiv::server {

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    return AtBoundary([&] { return m_make()->QueryInterface(iid, out); });
}

HRESULT ClassFactory::LockServer(BOOL lock) {
    comkit::g_liveObjects += lock ? 1 : -1;
    return S_OK;
}

}  // namespace kiv::server
