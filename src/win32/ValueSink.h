// The sink of the hidden control's events: hands arriving values to a listener until it is detached.
#pragma once

#include <oaidl.h>

#include "comkit/ComObject.h"
#include "platform/Framework.h"

namespace kiv::win32 {

class ValueSink final : public comkit::ComObject<ValueSink, IDispatch> {
public:
    explicit ValueSink(DeviceValueListener& listener) noexcept : m_pListener(&listener) {}
    ~ValueSink() = default;

    static const IID& EventSet() noexcept;
    void Detach() noexcept { m_pListener = nullptr; }
    void* FindInterface(REFIID iid) noexcept;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT* result, EXCEPINFO*,
                                     UINT*) override;

private:
    void OnValueReceived(const DISPPARAMS& params);

    DeviceValueListener* m_pListener;
};

}  // namespace kiv::win32
