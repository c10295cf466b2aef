// The simulated device as an automation object. Any number of these stand for the one device of the process.
#pragma once

#include "comkit/ComObject.h"
#include "comkit/ComPtr.h"
#include "VexaSimulator.h"

namespace vexa {

class DeviceObject final : public comkit::ComObject<DeviceObject, IVexaSimulatorDevice, ISupportErrorInfo> {
public:
    /// Throws ComError when the module's type library cannot be loaded.
    DeviceObject();

    void* FindInterface(REFIID iid) noexcept;

    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** out) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* params,
                                     VARIANT* result, EXCEPINFO* info, UINT* argument) override;

    HRESULT STDMETHODCALLTYPE get_Now(DATE* value) override;
    HRESULT STDMETHODCALLTYPE put_Now(DATE value) override;
    HRESULT STDMETHODCALLTYPE get_Value(BSTR name, BSTR* value) override;
    HRESULT STDMETHODCALLTYPE put_Value(BSTR name, BSTR value) override;
    HRESULT STDMETHODCALLTYPE get_Offline(VARIANT_BOOL* value) override;
    HRESULT STDMETHODCALLTYPE put_Offline(VARIANT_BOOL value) override;
    HRESULT STDMETHODCALLTYPE Refresh() override;
    HRESULT STDMETHODCALLTYPE get_LogCount(LONG* value) override;
    HRESULT STDMETHODCALLTYPE get_LogLine(LONG index, BSTR* value) override;
    HRESULT STDMETHODCALLTYPE ClearLog() override;
    HRESULT STDMETHODCALLTYPE get_RefuseWrites(VARIANT_BOOL* value) override;
    HRESULT STDMETHODCALLTYPE put_RefuseWrites(VARIANT_BOOL value) override;
    HRESULT STDMETHODCALLTYPE get_FailNext(LONG* value) override;
    HRESULT STDMETHODCALLTYPE put_FailNext(LONG value) override;
    HRESULT STDMETHODCALLTYPE get_PollInterval(LONG* value) override;
    HRESULT STDMETHODCALLTYPE put_PollInterval(LONG value) override;
    HRESULT STDMETHODCALLTYPE get_HiddenControlCount(LONG* value) override;
    HRESULT STDMETHODCALLTYPE Reset() override;
    HRESULT STDMETHODCALLTYPE get_ClockPaused(VARIANT_BOOL* value) override;
    HRESULT STDMETHODCALLTYPE put_ClockPaused(VARIANT_BOOL value) override;
    HRESULT STDMETHODCALLTYPE get_ResponseTime(LONG* value) override;
    HRESULT STDMETHODCALLTYPE put_ResponseTime(LONG value) override;
    HRESULT STDMETHODCALLTYPE get_VariableCount(LONG* value) override;
    HRESULT STDMETHODCALLTYPE get_VariableName(LONG index, BSTR* value) override;
    HRESULT STDMETHODCALLTYPE get_VariableType(LONG index, LONG* value) override;

private:
    comkit::ComPtr<ITypeInfo> m_typeInfo;
};

}  // namespace vexa
