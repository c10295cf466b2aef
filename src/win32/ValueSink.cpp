#include "win32/ValueSink.h"

#include <algorithm>

#include "comkit/Errors.h"
#include "framework/FrameworkNames.h"
#include "win32/VariantConversion.h"

namespace kiv::win32 {

namespace {

constexpr IID ValueEvents = {0x34795669, 0x92DE, 0x4B01, {0x88, 0x7B, 0xF6, 0xA4, 0x71, 0xCA, 0x62, 0x41}};
constexpr UINT ArgumentCount = 2;  // Index, Value: the last one first

}  // namespace

const IID& ValueSink::EventSet() noexcept {
    return ValueEvents;
}

void* ValueSink::FindInterface(REFIID iid) noexcept {
    return IsEqualIID(iid, ValueEvents) ? static_cast<IDispatch*>(this) : nullptr;
}

HRESULT ValueSink::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT ValueSink::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (!info) return E_POINTER;
    *info = nullptr;
    return DISP_E_BADINDEX;
}

HRESULT ValueSink::GetIDsOfNames(REFIID, LPOLESTR*, UINT count, LCID, DISPID* ids) {
    if (!ids) return E_POINTER;
    std::fill_n(ids, count, DISPID_UNKNOWN);
    return DISP_E_UNKNOWNNAME;
}

HRESULT ValueSink::Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT* result, EXCEPINFO*, UINT*) {
    if (result) VariantInit(result);
    if (member != vexa::EventId::ValueReceived) return DISP_E_MEMBERNOTFOUND;
    if (!params || params->cArgs != ArgumentCount) return DISP_E_BADPARAMCOUNT;
    // The listener may let go of the hidden control, and with it of this sink.
    const comkit::ComPtr<ValueSink> held(this);
    return comkit::Guarded([&] { OnValueReceived(*params); });
}

void ValueSink::OnValueReceived(const DISPPARAMS& params) {
    if (!m_pListener) return;
    const comkit::Variant index = ConvertedTo(VT_I2, params.rgvarg[1]);
    const comkit::Variant value = ConvertedTo(VT_BSTR, params.rgvarg[0]);
    m_pListener->OnValueReceived(index.Get().iVal, comkit::ViewOf(value.Get().bstrVal));
}

}  // namespace kiv::win32
