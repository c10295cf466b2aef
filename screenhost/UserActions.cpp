#include "screenhost/UserActions.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <optional>
#include <vector>

#include "screenhost/ResourceIds.h"
#include "screenhost/Units.h"
#include "screenhost/WideText.h"
#include "screenhost/WindowSearch.h"

namespace screenhost {

namespace {

constexpr int MostMonths = 12 * 300;
constexpr int CalendarScanStep = 3;  // pixels; less than any arrow or day
constexpr std::chrono::milliseconds ReactionTime{1500};

struct Hit {
    UINT what = 0;
    SYSTEMTIME day{};
};

Hit HitCalendar(HWND calendar, POINT point) {
    MCHITTESTINFO test{};
    test.cbSize = sizeof(test);
    test.pt = point;
    SendMessageW(calendar, MCM_HITTEST, 0, reinterpret_cast<LPARAM>(&test));
    return {test.uHit, test.st};
}

/// The middle of the area in which every hit satisfies the condition.
template <class Condition>
std::optional<POINT> FindInCalendar(HWND calendar, Condition&& condition) {
    RECT client{};
    GetClientRect(calendar, &client);
    RECT found{client.right, client.bottom, -1, -1};
    for (LONG y = 1; y < client.bottom; y += CalendarScanStep) {
        for (LONG x = 1; x < client.right; x += CalendarScanStep) {
            if (!condition(HitCalendar(calendar, {x, y}))) continue;
            found = {std::min(found.left, x), std::min(found.top, y), std::max(found.right, x),
                     std::max(found.bottom, y)};
        }
    }
    if (found.right < 0) return std::nullopt;
    return POINT{(found.left + found.right) / 2, (found.top + found.bottom) / 2};
}

/// Months from year 0, of the first month that the calendar shows.
int ShownMonth(HWND calendar) {
    std::array<SYSTEMTIME, 2> range{};
    SendMessageW(calendar, MCM_GETMONTHRANGE, GMR_VISIBLE, reinterpret_cast<LPARAM>(range.data()));
    return range[0].wYear * 12 + range[0].wMonth - 1;
}

struct NamedKey {
    const char* name;
    WORD key;
};

constexpr NamedKey NamedKeys[] = {
    {"Tab", VK_TAB},      {"Enter", VK_RETURN},  {"Escape", VK_ESCAPE}, {"Space", VK_SPACE},    {"Left", VK_LEFT},
    {"Right", VK_RIGHT},  {"Up", VK_UP},         {"Down", VK_DOWN},     {"Home", VK_HOME},      {"End", VK_END},
    {"PageUp", VK_PRIOR}, {"PageDown", VK_NEXT}, {"Delete", VK_DELETE}, {"Backspace", VK_BACK}, {"F5", VK_F5},
    {"F1", VK_F1},        {"F4", VK_F4},         {"F6", VK_F6},         {"F7", VK_F7},          {"F8", VK_F8},
    {"F9", VK_F9},        {"F2", VK_F2},
};

/// The state of a key that is held down for a while, as the thread sees it.
class HeldKey {
public:
    HeldKey(WPARAM key, bool held) noexcept : m_key(key), m_bHeld(held) { Set(0x80); }
    HeldKey(const HeldKey&) = delete;
    HeldKey& operator=(const HeldKey&) = delete;
    ~HeldKey() { Set(0); }

private:
    void Set(BYTE state) const noexcept {
        std::array<BYTE, 256> keys{};
        if (!m_bHeld || !GetKeyboardState(keys.data())) return;
        keys[m_key] = state;
        SetKeyboardState(keys.data());
    }
    WPARAM m_key;
    bool m_bHeld;
};

bool TakePrefix(std::string& text, std::string_view prefix) {
    if (text.size() <= prefix.size() || !EqualWithoutCase(text.substr(0, prefix.size()), prefix)) return false;
    text.erase(0, prefix.size());
    return true;
}

}  // namespace

/// Two single clicks must not be taken for a double click.
void UserActions::WaitOutDoubleClick(HWND window, POINT point) {
    using std::chrono::steady_clock;
    const auto single = m_lastClick + std::chrono::milliseconds(GetDoubleClickTime() + 20);
    const bool isNear = std::abs(point.x - m_lastPoint.x) <= GetSystemMetrics(SM_CXDOUBLECLK) &&
                        std::abs(point.y - m_lastPoint.y) <= GetSystemMetrics(SM_CYDOUBLECLK);
    const auto now = steady_clock::now();
    if (window == m_lastWindow && isNear && now < single)
        m_pump.RunFor(std::chrono::duration_cast<std::chrono::milliseconds>(single - now));
    m_lastWindow = window;
    m_lastPoint = point;
    m_lastClick = steady_clock::now();
}

/// The window that a press at the point would really meet, or the reason why not.
void UserActions::PrepareClick(HWND window, POINT screen) const {
    if (!IsReallyEnabled(window)) throw TextError(DescribeWindow(window) + " is disabled");
    const HWND met = WindowAt(GetAncestor(window, GA_ROOT), screen);
    if (met != window) throw TextError(DescribeWindow(window) + " is covered by " + DescribeWindow(met));
    // What the system itself sends before the button's message.
    const LPARAM how = MAKELPARAM(HTCLIENT, WM_LBUTTONDOWN);
    SendMessageW(window, WM_MOUSEACTIVATE, reinterpret_cast<WPARAM>(m_main), how);
    SendMessageW(window, WM_SETCURSOR, reinterpret_cast<WPARAM>(window), how);
}

void UserActions::Click(HWND window, POINT point, WPARAM keys) {
    Drag(window, point, point, keys);
}

void UserActions::Drag(HWND window, POINT from, POINT to, WPARAM keys) {
    POINT screen = from;
    ClientToScreen(window, &screen);
    PrepareClick(window, screen);
    const LPARAM at = MAKELPARAM(from.x, from.y);
    PostMessageW(window, WM_MOUSEMOVE, keys, at);
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON | keys, at);
    m_pump.RunFor(std::chrono::milliseconds(30));
    // What follows goes to whoever has captured the mouse.
    const auto post = [window](UINT message, WPARAM buttons, POINT point) {
        const HWND receiver = GetCapture() ? GetCapture() : window;
        MapWindowPoints(window, receiver, &point, 1);
        PostMessageW(receiver, message, buttons, MAKELPARAM(point.x, point.y));
    };
    if (from.x != to.x || from.y != to.y) {
        post(WM_MOUSEMOVE, MK_LBUTTON | keys, {(from.x + to.x) / 2, (from.y + to.y) / 2});
        post(WM_MOUSEMOVE, MK_LBUTTON | keys, to);
        m_pump.RunFor(std::chrono::milliseconds(0));
    }
    post(WM_LBUTTONUP, keys, to);
    m_pump.Settle();
}

void UserActions::ClickCaption(HWND root, const std::string& caption) {
    ClickText(FindCaption(Descendants(root), caption));
}

void UserActions::ClickButton(const std::string& caption) {
    std::vector<HWND> own = Descendants(m_main);
    const HWND screen = GetDlgItem(m_main, ID_VIEW);
    std::erase_if(own, [screen](HWND window) { return IsChild(screen, window) || !IsOfClass(window, WC_BUTTONW); });
    ClickText(FindCaption(own, caption));
}

void UserActions::ClickText(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    // Near the left edge: a check box may be much wider than its text.
    Click(window, {std::min<LONG>(client.right / 2, Scaled(12)), client.bottom / 2});
}

void UserActions::TurnToMonth(HWND calendar, const CivilDate& date) {
    const int wanted = date.year * 12 + date.month - 1;
    std::optional<POINT> point;
    for (int turned = 0; ShownMonth(calendar) != wanted; ++turned) {
        const int shown = ShownMonth(calendar);
        if (turned >= MostMonths) throw TextError("the calendar does not reach that month");
        const UINT arrow = shown < wanted ? MCHT_TITLEBTNNEXT : MCHT_TITLEBTNPREV;
        const auto isArrow = [arrow](const Hit& hit) { return hit.what == arrow; };
        if (!point || !isArrow(HitCalendar(calendar, *point))) point = FindInCalendar(calendar, isArrow);
        if (!point) throw TextError("the calendar has no arrow in its title");
        Click(calendar, *point);
        if (!m_pump.RunUntil([&] { return ShownMonth(calendar) != shown; }, ReactionTime))
            throw TextError("the calendar does not turn its page");
    }
}

void UserActions::PickDay(HWND root, const CivilDate& date) {
    const HWND calendar = ChildOfClass(root, MONTHCAL_CLASSW);
    if (!IsReallyEnabled(calendar)) throw TextError("the calendar is disabled");
    TurnToMonth(calendar, date);
    const auto day = FindInCalendar(calendar, [&](const Hit& hit) {
        return hit.what == MCHT_CALENDARDATE && hit.day.wYear == date.year && hit.day.wMonth == date.month &&
               hit.day.wDay == date.day;
    });
    if (!day) throw TextError("the day is not on the calendar's page");
    Click(calendar, *day);
    SYSTEMTIME chosen{};
    SendMessageW(calendar, MCM_GETCURSEL, 0, reinterpret_cast<LPARAM>(&chosen));
    if (chosen.wYear != date.year || chosen.wMonth != date.month || chosen.wDay != date.day)
        throw TextError("the click chose another day");
}

void UserActions::Tap(WPARAM key) {
    const HWND focus = GetFocus();
    if (!focus) throw TextError("no window has the focus");
    const LPARAM scan = static_cast<LPARAM>(MapVirtualKeyW(static_cast<UINT>(key), MAPVK_VK_TO_VSC)) << 16;
    PostMessageW(focus, WM_KEYDOWN, key, 1 | scan);
    m_pump.RunFor(std::chrono::milliseconds(0));
    PostMessageW(GetFocus() ? GetFocus() : focus, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001u) | scan);
    m_pump.RunFor(std::chrono::milliseconds(0));
}

/// Every part is reached from the first one, because fields differ in whether a full part moves on by itself.
void UserActions::ChooseTimePart(HWND field, int part) {
    // The text stands at the top, however tall the field is.
    RECT client{};
    GetClientRect(field, &client);
    const POINT point{Scaled(7), std::min<LONG>(client.bottom / 2, Scaled(9))};
    WaitOutDoubleClick(field, point);
    Click(field, point);
    for (int i = 0; i < part; ++i) Tap(VK_RIGHT);
}

void UserActions::TypeTime(HWND root, const TimeOfDay& time) {
    const HWND field = ChildOfClass(root, DATETIMEPICK_CLASSW);
    const auto shown = [field] {
        SYSTEMTIME st{};
        SendMessageW(field, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&st));
        return TimeOfDay{st.wHour, st.wMinute, st.wSecond};
    };
    const std::string text = CaptionOf(field);
    const bool hasSeconds = std::ranges::count(text, ':') == 2;
    const bool hasHalves = std::ranges::any_of(text, [](unsigned char c) { return std::isalpha(c) != 0; });
    const int hour = hasHalves ? (time.hour + 11) % 12 + 1 : time.hour;
    const std::array<int, 3> parts{hour, time.minute, time.second};
    for (int part = 0; part < (hasSeconds ? 3 : 2); ++part) {
        ChooseTimePart(field, part);
        const int number = parts[static_cast<std::size_t>(part)];
        for (const int digit : {number / 10, number % 10}) {
            PostMessageW(field, WM_CHAR, static_cast<WPARAM>(L'0' + digit), 1);
            m_pump.RunFor(std::chrono::milliseconds(0));
        }
    }
    // Leaving the part makes the field take the last digits.
    ChooseTimePart(field, 1);
    if (hasHalves && shown().hour != time.hour) {
        ChooseTimePart(field, hasSeconds ? 3 : 2);
        Tap(VK_UP);
    }
    const TimeOfDay result = shown();
    if (result.hour != time.hour || result.minute != time.minute || (hasSeconds && result.second != time.second))
        throw TextError("the field shows " + CaptionOf(field) + " instead");
}

void UserActions::PressKey(const std::string& key) {
    std::string rest = key;
    const bool alt = TakePrefix(rest, "Alt+");
    const bool control = TakePrefix(rest, "Ctrl+");
    const bool shift = TakePrefix(rest, "Shift+");
    const auto* const named =
        std::ranges::find_if(NamedKeys, [&](const NamedKey& k) { return EqualWithoutCase(k.name, rest); });
    const auto wide = Wide(rest);
    if (named == std::end(NamedKeys) && wide.size() != 1) throw TextError("there is no key \"" + key + "\"");
    const HeldKey heldShift(VK_SHIFT, shift);
    const HeldKey heldControl(VK_CONTROL, control);
    const HeldKey heldAlt(VK_MENU, alt);
    const HWND focus = GetFocus() ? GetFocus() : m_main;
    if (named != std::end(NamedKeys)) {
        Tap(named->key);
    } else if (alt) {
        PostMessageW(focus, WM_SYSCHAR, wide[0], 0x20000001);
    } else if (control) {
        Tap(LOBYTE(VkKeyScanW(wide[0])));
    } else {
        PostMessageW(focus, WM_CHAR, wide[0], 1);
    }
    m_pump.Settle();
}

}  // namespace screenhost
