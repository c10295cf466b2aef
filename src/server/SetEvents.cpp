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

constexpr EventNumbers Numbers{
    .click = SetEvent::Click,
    .dblClick = SetEvent::DblClick,
    .keyUp = SetEvent::KeyUp,
    .keyPress = SetEvent::KeyPress,
    .keyDown = SetEvent::KeyDown,
    .mouseDown = SetEvent::MouseDown,
    .mouseMove = SetEvent::MouseMove,
    .mouseUp = SetEvent::MouseUp,
};

}  // namespace

SetEvents::SetEvents(EventSource& events) noexcept : FiredEvents(events, Numbers) {}

void SetEvents::GetDeviceDateTime(Value& dtNow, bool& bEnableDST) {
    comkit::Variant now = VariantOf(dtNow);
    VARIANT_BOOL enable = bEnableDST ? VARIANT_TRUE : VARIANT_FALSE;
    const std::array args{ByRef(now.Get()), ByRefBool(enable)};
    comkit::ThrowIfFailed(Source().Fire(SetEvent::GetDeviceDateTime, args));
    dtNow = DateValue(now.Get());
    bEnableDST = enable != VARIANT_FALSE;
}

}  // namespace kiv::server
