#include "server/SetEvents.h"

#include <array>

#include "comkit/Errors.h"
#include "comkit/Variant.h"
#include "server/SetMembers.h"
#include "server/ValueConversion.h"

namespace kiv::server {

namespace {

/// What a handler left in a VARIANT that stands for a date: text that the system reads as a date counts as one.
Value DateValue(const VARIANT& variant) {
    if (variant.vt != VT_BSTR) return ValueOf(variant);
    comkit::Variant date;
    if (FAILED(date.ConvertFrom(variant, VT_DATE))) return ValueOf(variant);
    return OleDate{date.Get().date};
}

}  // namespace

void SetEvents::FireKey(DISPID event, std::int16_t& keyCode, std::int16_t& shift) {
    const std::array args{ByRef(keyCode), ByRef(shift)};
    m_events.Fire(event, args);
}

void SetEvents::FireMouse(DISPID event, std::int16_t& button, std::int16_t& shift, float& x, float& y) {
    const std::array args{ByRef(button), ByRef(shift), ByRef(x), ByRef(y)};
    m_events.Fire(event, args);
}

void SetEvents::Click() {
    m_events.Fire(SetEvent::Click, {});
}

void SetEvents::DblClick() {
    m_events.Fire(SetEvent::DblClick, {});
}

void SetEvents::KeyUp(std::int16_t& keyCode, std::int16_t& shift) {
    FireKey(SetEvent::KeyUp, keyCode, shift);
}

void SetEvents::KeyPress(std::int16_t& keyAscii) {
    const std::array args{ByRef(keyAscii)};
    m_events.Fire(SetEvent::KeyPress, args);
}

void SetEvents::KeyDown(std::int16_t& keyCode, std::int16_t& shift) {
    FireKey(SetEvent::KeyDown, keyCode, shift);
}

void SetEvents::MouseDown(std::int16_t& button, std::int16_t& shift, float& x, float& y) {
    FireMouse(SetEvent::MouseDown, button, shift, x, y);
}

void SetEvents::MouseMove(std::int16_t& button, std::int16_t& shift, float& x, float& y) {
    FireMouse(SetEvent::MouseMove, button, shift, x, y);
}

void SetEvents::MouseUp(std::int16_t& button, std::int16_t& shift, float& x, float& y) {
    FireMouse(SetEvent::MouseUp, button, shift, x, y);
}

void SetEvents::GetDeviceDateTime(Value& dtNow, bool& bEnableDST) {
    comkit::Variant now = VariantOf(dtNow);
    VARIANT_BOOL enable = bEnableDST ? VARIANT_TRUE : VARIANT_FALSE;
    const std::array args{ByRef(now.Get()), ByRefBool(enable)};
    comkit::ThrowIfFailed(m_events.Fire(SetEvent::GetDeviceDateTime, args));
    dtNow = DateValue(now.Get());
    bEnableDST = enable != VARIANT_FALSE;
}

}  // namespace kiv::server
