// Sinks that record what a control tells.
#pragma once

#include <KivDateTime.h>
#include <ocidl.h>

#include <functional>
#include <vector>

#include "comkit/ComObject.h"

namespace component {

/// Event set of either control.
class EventSink final : public comkit::ComObject<EventSink, IDispatch> {
public:
    std::vector<DISPID> events;
    /// Called for each event; what it returns is what the control gets.
    std::function<HRESULT(DISPID, DISPPARAMS&, EXCEPINFO*)> onEvent;

    void* FindInterface(REFIID iid) noexcept {
        const bool isEventSet = IsEqualIID(iid, DIID___KivSetDateTime) || IsEqualIID(iid, DIID___KivShowDateTime);
        return isEventSet ? static_cast<IDispatch*>(this) : nullptr;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* out) override {
        *out = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** out) override {
        *out = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*, EXCEPINFO* info,
                                     UINT*) override {
        events.push_back(id);
        return onEvent ? onEvent(id, *params, info) : S_OK;
    }
};

class NotifySink final : public comkit::ComObject<NotifySink, IPropertyNotifySink> {
public:
    std::vector<DISPID> changed;
    std::vector<DISPID> requested;
    DISPID refuses = DISPID_UNKNOWN;
    /// Called for each change; what it returns is what the control gets.
    std::function<HRESULT(DISPID)> onChanged;
    /// Called for each question; what it returns is the answer.
    std::function<HRESULT(DISPID)> onRequested;

    HRESULT STDMETHODCALLTYPE OnChanged(DISPID id) override {
        changed.push_back(id);
        return onChanged ? onChanged(id) : S_OK;
    }
    HRESULT STDMETHODCALLTYPE OnRequestEdit(DISPID id) override {
        requested.push_back(id);
        if (onRequested) return onRequested(id);
        return id == refuses ? S_FALSE : S_OK;
    }
};

}  // namespace component
