// Base of the sinks of the framework's events: an IDispatch without names, answering for one event set.
//
// Derived tells its EventSet() and takes an event in Receive(member, arguments), the last argument first; an argument
// that does not convert is a comkit::ComError.
#pragma once

#include <oaidl.h>

#include <algorithm>

#include "comkit/ComObject.h"
#include "comkit/Errors.h"

namespace kiv::win32 {

template <class Derived>
class FrameworkSink : public comkit::ComObject<Derived, IDispatch> {
public:
    void* FindInterface(REFIID iid) noexcept {
        return IsEqualIID(iid, Derived::EventSet()) ? static_cast<IDispatch*>(this) : nullptr;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (!count) return E_POINTER;
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        if (!info) return E_POINTER;
        *info = nullptr;
        return DISP_E_BADINDEX;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT count, LCID, DISPID* ids) override {
        if (!ids) return E_POINTER;
        std::fill_n(ids, count, DISPID_UNKNOWN);
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT* result, EXCEPINFO*,
                                     UINT*) override {
        if (result) VariantInit(result);
        const UINT wanted = Derived::ArgumentCount(member);
        if (wanted == 0) return DISP_E_MEMBERNOTFOUND;
        if (!params || params->cArgs != wanted) return DISP_E_BADPARAMCOUNT;
        // The listener may let go of the source, and with it of this sink.
        const comkit::ComPtr<Derived> held(static_cast<Derived*>(this));
        return comkit::Guarded([&] { held->Receive(member, params->rgvarg); });
    }
};

}  // namespace kiv::win32
