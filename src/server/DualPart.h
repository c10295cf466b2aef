// A dual interface whose IDispatch goes through its type information. A class derived from it has the members.
#pragma once

#include <oaidl.h>

#include <memory>

#include "comkit/ComObject.h"
#include "server/Boundary.h"
#include "server/ControlCore.h"
#include "server/DispatchInfo.h"
#include "server/Module.h"

namespace kiv::server {

template <class Dual>
class DualPart : public comkit::ComPart<Dual> {
public:
    explicit DualPart(ControlHost& host)
        : comkit::ComPart<Dual>(host.Identity()), m_host(host), m_pInfo(Module::Dispatch(__uuidof(Dual))) {}

    // IDispatch
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* out) final {
        if (!out) return E_POINTER;
        *out = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** out) final {
        return m_pInfo->GetTypeInfo(index, out);
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* ids) final {
        if (!names || !ids) return E_POINTER;
        if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
        return m_pInfo->GetIDsOfNames(names, count, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                                     EXCEPINFO* info, UINT* argument) final {
        if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
        if (!params) return E_POINTER;
        return AtBoundaryOf(this->Owner(), [&] {
            return m_pInfo->Invoke(static_cast<Dual*>(this), id, flags, *params, result, info, argument);
        });
    }

protected:
    ~DualPart() = default;
    ControlHost& Host() const noexcept { return m_host; }

private:
    ControlHost& m_host;
    std::shared_ptr<const DispatchInfo> m_pInfo;
};

}  // namespace kiv::server
