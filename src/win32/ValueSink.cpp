#include "win32/ValueSink.h"

#include "framework/FrameworkNames.h"
#include "win32/VariantConversion.h"

namespace kiv::win32 {

namespace {

constexpr IID ValueEvents = {0x34795669, 0x92DE, 0x4B01, {0x88, 0x7B, 0xF6, 0xA4, 0x71, 0xCA, 0x62, 0x41}};

}  // namespace

const IID& ValueSink::EventSet() noexcept {
    return ValueEvents;
}

UINT ValueSink::ArgumentCount(DISPID member) noexcept {
    return member == vexa::EventId::ValueReceived ? 2 : 0;  // Index, Value
}

void ValueSink::Receive(DISPID, const VARIANT* arguments) {
    if (!m_pListener) return;
    const comkit::Variant index = ConvertedTo(VT_I2, arguments[1]);
    const comkit::Variant value = ConvertedTo(VT_BSTR, arguments[0]);
    m_pListener->OnValueReceived(index.Get().iVal, comkit::ViewOf(value.Get().bstrVal));
}

}  // namespace kiv::win32
