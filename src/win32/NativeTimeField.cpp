#include "win32/NativeTimeField.h"

#include <commctrl.h>

#include "comkit/Bstr.h"
#include "platform/HostError.h"
#include "win32/CommonControls.h"
#include "win32/SystemClock.h"
#include "win32/SystemTimes.h"

namespace kiv::win32 {

NativeTimeField::NativeTimeField(std::shared_ptr<SurfaceContext> context, WidgetWindow& parent,
                                 std::u16string_view name)
    : WidgetOf(std::move(context), parent, name), m_value(SystemClock().Now()) {}

DateTime NativeTimeField::Value() const {
    SYSTEMTIME shown{};
    if (Window() && SendMessageW(Window(), DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&shown)) == GDT_VALID)
        return DateTimeOf(shown);
    return m_value;
}

void NativeTimeField::SetValue(const DateTime& value) {
    if (!IsValidDate(value.date) || !IsValidTime(value.time) || value.date.year < Calendar::MinYear)
        throw HostError(ErrorNumber::InvalidPropertyValue);
    m_value = value;
    if (Window()) ApplyValue();
}

void NativeTimeField::ApplyValue() const {
    SYSTEMTIME value = SystemTimeOf(m_value);
    SendMessageW(Window(), DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&value));
}

void NativeTimeField::SetFormat(std::u16string_view format) {
    if (m_strFormat == format) return;
    m_strFormat = format;
    if (Window()) ApplyFormat();
}

void NativeTimeField::ApplyFormat() const {
    SendMessageW(Window(), DTM_SETFORMATW, 0, reinterpret_cast<LPARAM>(comkit::ToWide(m_strFormat).data()));
}

WindowDescription NativeTimeField::Describe() const {
    RegisterDateClasses();
    return {.className = DATETIMEPICK_CLASSW,
            .text = L"",
            .style = DTS_TIMEFORMAT,  // includes the spin buttons
            .extendedStyle = 0,
            .place = {},
            .parent = nullptr,
            .hasInnerWindows = true};
}

void NativeTimeField::OnOpened() {
    ApplyFormat();
    ApplyValue();
}

void NativeTimeField::KeepState() {
    m_value = Value();
}

// The native field notifies more often than its value changes.
void NativeTimeField::OnNotify(const NMHDR& header) {
    if (header.code != DTN_DATETIMECHANGE) return;
    const DateTime now = Value();
    if (now == m_value) return;
    m_value = now;
    Note(PendingChange);
}

}  // namespace kiv::win32
