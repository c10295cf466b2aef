#include "win32/NativeTimeField.h"

#include <commctrl.h>
#include <oleacc.h>

#include <iterator>

#include "comkit/Bstr.h"
#include "platform/HostError.h"
#include "win32/CommonControls.h"
#include "win32/SystemClock.h"
#include "win32/SystemTimes.h"

namespace kiv::win32 {

namespace {

// Wine says so itself; asking beats guessing from behaviour where a wrong guess would change the time.
bool IsWine() noexcept {
    static const bool wine = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
    return wine;
}

}  // namespace

NativeTimeField::NativeTimeField(std::shared_ptr<SurfaceContext> context, WidgetWindow& parent)
    : WidgetOf(std::move(context), parent), m_value(SystemClock().Now()) {}

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

LRESULT NativeTimeField::RunNative(NativeWindow& native, const Message& message) {
    // Windows' picker takes the focus when its spin buttons are pressed, Wine's does not.
    if (message.id == WM_LBUTTONDOWN && message.window != native.Handle() && GetFocus() != native.Handle())
        SetFocus(native.Handle());
    if (!native.IsLive()) return 0;  // whoever was told of the focus ended it
    const LRESULT result = native.CallNative(message);
    // With the focus Windows' picker selects its first field, so that keys and spin buttons have something to change.
    // Wine's has nothing selected, and comes to the first field with the first step to the right.
    if (message.id == WM_SETFOCUS && message.window == native.Handle() && IsWine())
        native.CallNative({message.window, WM_KEYDOWN, VK_RIGHT, 1});
    return result;
}

AccessibleFacts NativeTimeField::Access() const {
    const SYSTEMTIME shown = SystemTimeOf(Value());
    wchar_t text[128] = {};
    GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &shown, comkit::ToWide(m_strFormat).data(), text,
                   static_cast<int>(std::size(text)));
    // The native field's text is its value, so its name has to be told.
    return {u"Time", ROLE_SYSTEM_SPINBUTTON, std::u16string(comkit::ToUtf16(text)), 0};
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
