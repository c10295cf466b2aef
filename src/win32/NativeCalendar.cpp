#include "win32/NativeCalendar.h"

#include <commctrl.h>
#include <oleacc.h>
#include <windowsx.h>

#include "comkit/Bstr.h"
#include "comkit/Handle.h"
#include "platform/HostError.h"
#include "win32/CalendarKeys.h"
#include "win32/CalendarLegibility.h"
#include "win32/CalendarSize.h"
#include "win32/CommonControls.h"
#include "win32/Dpi.h"
#include "win32/ShownColors.h"
#include "win32/SystemClock.h"
#include "win32/SystemTimes.h"

namespace kiv::win32 {

namespace {

constexpr int DaysPerWeek = 7;
// What it is called inside the frame round it, whose caption says what the date is for.
constexpr const wchar_t* AccessName = L"Date";

// Whether a press there chooses a day, which the native calendar then reports with MCN_SELECT.
bool IsDayAt(HWND calendar, LPARAM position) {
    MCHITTESTINFO hit{};
    // The size that the oldest version with this message knows.
    hit.cbSize = MCHITTESTINFO_V1_SIZE;
    hit.pt = {GET_X_LPARAM(position), GET_Y_LPARAM(position)};
    SendMessageW(calendar, MCM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    return (hit.uHit & MCHT_CALENDAR) == MCHT_CALENDAR || (hit.uHit & MCHT_TODAYLINK) == MCHT_TODAYLINK;
}

}  // namespace

NativeCalendar::NativeCalendar(std::shared_ptr<SurfaceContext> context, WidgetWindow& parent)
    : WidgetOf(std::move(context), parent), m_value(SystemClock().Now().date) {}

CivilDate NativeCalendar::Value() const {
    SYSTEMTIME selected{};
    if (Window() && SendMessageW(Window(), MCM_GETCURSEL, 0, reinterpret_cast<LPARAM>(&selected)))
        return DateTimeOf(selected).date;
    return m_value;
}

void NativeCalendar::SetValue(const CivilDate& date) {
    if (!IsValidDate(date) || date.year < MinYear || date.year > MaxYear)
        throw HostError(ErrorNumber::InvalidPropertyValue);
    m_value = date;
    if (Window()) ApplyValue();
}

void NativeCalendar::ApplyValue() const {
    SYSTEMTIME selected = SystemTimeOf({m_value, {}});
    SendMessageW(Window(), MCM_SETCURSEL, 0, reinterpret_cast<LPARAM>(&selected));
}

void NativeCalendar::SetMonthBackColor(OleColor color) {
    m_monthBack = color;
    OnColorChanged();
}

void NativeCalendar::SetTitleBackColor(OleColor color) {
    m_titleBack = color;
    OnColorChanged();
}

void NativeCalendar::SetTitleForeColor(OleColor color) {
    m_titleFore = color;
    OnColorChanged();
}

void NativeCalendar::SetTrailingForeColor(OleColor color) {
    m_trailingFore = color;
    OnColorChanged();
}

void NativeCalendar::ApplyColor(WPARAM part, COLORREF wanted) const {
    // Each set repaints; most colours are what a new calendar has already.
    if (static_cast<COLORREF>(SendMessageW(Window(), MCM_GETCOLOR, part, 0)) != wanted)
        SendMessageW(Window(), MCM_SETCOLOR, part, static_cast<LPARAM>(wanted));
}

void NativeCalendar::OnColorChanged() {
    if (!Window()) return;
    ApplyColor(MCSC_BACKGROUND, ShownColor(GetBack(), ColorUse::Face));
    ApplyColor(MCSC_TEXT, ShownColor(GetFore(), GetEnabled() ? ColorUse::FieldText : ColorUse::GreyedText));
    ApplyColor(MCSC_MONTHBK, ShownColor(m_monthBack, ColorUse::Field));
    ApplyColor(MCSC_TITLEBK, ShownColor(m_titleBack, ColorUse::Title));
    ApplyColor(MCSC_TITLETEXT, ShownColor(m_titleFore, ColorUse::TitleText));
    ApplyColor(MCSC_TRAILINGTEXT, ShownColor(m_trailingFore, ColorUse::GreyedText));
}

void NativeCalendar::SetShowToday(bool show) {
    if (m_bShowToday == show) return;
    m_bShowToday = show;
    if (!Window()) return;
    const auto style = GetWindowLongPtrW(Window(), GWL_STYLE);
    SetWindowLongPtrW(Window(), GWL_STYLE, show ? style & ~MCS_NOTODAY : style | MCS_NOTODAY);
    MoveWindowToBounds();
    InvalidateRect(Window(), nullptr, TRUE);
}

void NativeCalendar::SetStartOfWeek(int day) {
    if (day < 1 || day > DaysPerWeek) throw HostError(ErrorNumber::InvalidPropertyValue);
    m_lStartOfWeek = day;
    if (Window()) ApplyStartOfWeek();
}

void NativeCalendar::ApplyStartOfWeek() const {
    // The native days count from Monday = 0.
    SendMessageW(Window(), MCM_SETFIRSTDAYOFWEEK, 0, (m_lStartOfWeek + DaysPerWeek - 2) % DaysPerWeek);
}

WindowDescription NativeCalendar::Describe() const {
    RegisterDateClasses();
    return {.className = MONTHCAL_CLASSW,
            .text = AccessName,
            .style = m_bShowToday ? 0u : MCS_NOTODAY,
            .extendedStyle = 0,
            .place = {},
            .parent = nullptr,
            .hasInnerWindows = true};
}

void NativeCalendar::OnOpened() {
    m_bPressingDay = m_bChangedWhilePressed = false;
    OnColorChanged();
    ApplyStartOfWeek();
    SYSTEMTIME range[2] = {SystemTimeOf({{MinYear, 1, 1}, {}}), SystemTimeOf({{MaxYear, 12, 31}, {}})};
    SendMessageW(Window(), MCM_SETRANGE, GDTR_MIN | GDTR_MAX, reinterpret_cast<LPARAM>(range));
    ApplyValue();
}

void NativeCalendar::KeepState() {
    m_value = Value();
}

Rect NativeCalendar::EffectiveBounds() const {
    const int dpi = Context()->dpi;
    const SIZE size = CalendarSize(TraitsOrDefault(GetFontObject()), dpi, m_bShowToday);
    return {GetBounds().left, GetBounds().top, TwipsFromPixels(size.cx, dpi), TwipsFromPixels(size.cy, dpi)};
}

AccessibleFacts NativeCalendar::Access() const {
    const SYSTEMTIME chosen = SystemTimeOf({Value(), {}});
    wchar_t text[128] = {};
    GetDateFormatW(LOCALE_USER_DEFAULT, DATE_LONGDATE, &chosen, nullptr, text, static_cast<int>(std::size(text)));
    return {std::u16string(comkit::ToUtf16(AccessName)), ROLE_SYSTEM_TABLE, std::u16string(comkit::ToUtf16(text)), 0};
}

void NativeCalendar::OnNotify(const NMHDR& header) {
    if (header.code == MCN_SELCHANGE) {
        NoteSelectionChange();
    } else if (header.code == MCN_SELECT) {
        m_value = Value();
        m_bChangedWhilePressed = false;
        Note(PendingClick);
    }
}

// Windows repeats the notification from time to time without a change. A pressed day is reported once more when the
// button goes up.
void NativeCalendar::NoteSelectionChange() {
    const CivilDate now = Value();
    if (now == m_value) return;
    m_value = now;
    if (m_bPressingDay) {
        m_bChangedWhilePressed = true;
    } else {
        Note(PendingClick);
    }
}

LRESULT NativeCalendar::RunNative(NativeWindow& native, const Message& message) {
    if (message.window != native.Handle()) return native.CallNative(message);
    if (message.id == WM_LBUTTONDOWN || message.id == WM_LBUTTONDBLCLK)
        m_bPressingDay = IsDayAt(message.window, message.lParam);
    const LRESULT result = native.CallNative(message);
    if ((message.id == WM_PAINT || message.id == WM_PRINTCLIENT) && native.IsLive()) ShowHiddenParts(message);
    return result;
}

void NativeCalendar::ShowHiddenParts(const Message& message) const {
    if (ShownColor(m_titleBack, ColorUse::Title) != ShownColor(m_monthBack, ColorUse::Field)) return;
    const HiddenPartsColors colors{.weekdays = ShownColor(m_titleFore, ColorUse::TitleText),
                                   .chosenDay = ShownColor(GetFore(), ColorUse::FieldText)};
    if (const auto given = reinterpret_cast<HDC>(message.wParam)) {
        DrawHiddenParts(message.window, given, colors);
    } else {
        const comkit::WindowDc dc(message.window);
        DrawHiddenParts(message.window, dc.Get(), colors);
    }
}

void NativeCalendar::AfterNative(const Message& message) {
    if (message.window != Window()) return;
    if (message.id == WM_LBUTTONUP || message.id == WM_CAPTURECHANGED) {
        // A press that ended without being reported again has chosen its day all the same.
        if (message.id == WM_LBUTTONUP && m_bChangedWhilePressed) Note(PendingClick);
        m_bPressingDay = m_bChangedWhilePressed = false;
    } else if (message.id == WM_KEYDOWN) {
        ChooseByKey(message);
    }
}

// Windows' month calendar moves with the keys by itself, Wine's does not: whatever left the date where it was is moved
// here. Where the native calendar could not move any further, neither can this.
void NativeCalendar::ChooseByKey(const Message& message) {
    const CivilDate before = m_value;
    if (Value() != before) {
        NoteSelectionChange();
        return;
    }
    if (SendMessageW(Window(), MCM_GETCURRENTVIEW, 0, 0) != MCMV_MONTH) return;
    const auto chosen = DateAfterKey(before, message.wParam, GetKeyState(VK_CONTROL) < 0);
    if (!chosen || *chosen == before) return;
    m_value = *chosen;
    ApplyValue();
    Note(PendingClick);
}

}  // namespace kiv::win32
