#include "RandomUser.h"

#include <oleacc.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <iterator>

#include "comkit/Bstr.h"
#include "comkit/ComPtr.h"
#include "comkit/Variant.h"

namespace component {

namespace {

constexpr UINT DpiChanged = 0x02E0;
constexpr UINT DpiChangedBeforeParent = 0x02E2;
constexpr UINT DpiChangedAfterParent = 0x02E3;
constexpr UINT ThemeChanged = 0x031A;

/// Messages that the system's own windows are not sent at random, because they take a parameter for the address of
/// something: a wrong one would end any program.
struct Range {
    UINT first;
    UINT last;
};
constexpr Range PointersForNativeWindows[] = {
    {WM_USER + 100, WM_USER + 120},  // up-downs: accelerations, ranges and positions by address
    {0x1000, 0x1FFF},                // calendars, time fields, buttons: dates, ranges, formats, sizes by address
    {0x2000, 0x20FF},                // all common controls: colours and themes by address
};

bool IsWithin(UINT id, const Range& range) {
    return id >= range.first && id <= range.last;
}

bool IsNative(HWND window) {
    constexpr const wchar_t* Classes[] = {L"Button",   L"SysMonthCal32",   L"SysDateTimePick32",
                                          L"Edit",     L"msctls_updown32", L"Static",
                                          L"ComboBox", L"ListBox",         L"ComboLBox"};
    wchar_t name[64] = L"";
    GetClassNameW(window, name, 64);
    return std::ranges::any_of(Classes, [&](const wchar_t* one) { return _wcsicmp(one, name) == 0; });
}

BOOL CALLBACK Collect(HWND window, LPARAM param) {
    reinterpret_cast<std::vector<HWND>*>(param)->push_back(window);
    return TRUE;
}

}  // namespace

const RandomUser::Weighted RandomUser::Kinds[] = {
    {20, &RandomUser::MouseAnywhere}, {20, &RandomUser::Click},       {4, &RandomUser::Drag},
    {3, &RandomUser::Wheel},          {12, &RandomUser::Key},         {6, &RandomUser::PostedKey},
    {6, &RandomUser::Character},      {6, &RandomUser::Focus},        {4, &RandomUser::Capture},
    {6, &RandomUser::WindowState},    {4, &RandomUser::SystemChange}, {4, &RandomUser::Timer},
    {6, &RandomUser::Question},       {3, &RandomUser::Paint},        {6, &RandomUser::ForeignNotification},
    {12, &RandomUser::Raw},
};

void RandomUser::Act(HWND host, HWND root) {
    m_host = host;
    m_root = root;
    PickWindow();
    if (!m_window && !windowless) return;
    unsigned all = 0;
    for (const Weighted& kind : Kinds) all += kind.weight;
    unsigned chosen = m_choices.Below(all);
    for (const Weighted& kind : Kinds) {
        if (chosen < kind.weight) return (this->*kind.act)();
        chosen -= kind.weight;
    }
}

void RandomUser::PickWindow() {
    m_window = nullptr;
    m_bNative = false;
    if (!m_root) return;
    std::vector<HWND> windows{m_root};
    EnumChildWindows(m_root, &Collect, reinterpret_cast<LPARAM>(&windows));
    m_window = m_choices.Of(windows);
    m_bNative = IsNative(m_window);
}

void RandomUser::Send(UINT id, WPARAM wParam, LPARAM lParam) {
    Note({m_window, id, wParam, lParam});
    if (m_window) {
        SendMessageW(m_window, id, wParam, lParam);
    } else if (!m_root && windowless) {
        windowless(id, wParam, lParam);
    }
}

void RandomUser::Note(const Event& event) {
    static const bool says = std::getenv("KIV_TRACE") != nullptr;
    m_recent.push_back(event);
    if (m_recent.size() > EventsRemembered) m_recent.pop_front();
    if (!says) return;
    wchar_t name[64] = L"";
    GetClassNameW(event.window, name, 64);
    std::fprintf(stderr, "%p %ls %04x %llx %llx\n", static_cast<void*>(event.window), name, event.id,
                 static_cast<unsigned long long>(event.wParam), static_cast<unsigned long long>(event.lParam));
}

std::string RandomUser::Recent() const {
    std::string text;
    for (const Event& event : m_recent) {
        char name[64] = "(none)";
        GetClassNameA(event.window, name, 64);
        char line[128] = "";
        std::snprintf(line, std::size(line), "  %s %04x %llx %llx\n", name, event.id,
                      static_cast<unsigned long long>(event.wParam), static_cast<unsigned long long>(event.lParam));
        text += line;
    }
    return text;
}

void RandomUser::Pump() const {
    MSG message{};
    // Some windows always have another message for themselves.
    for (int i = 0; i < 100 && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++i) {
        if (filter && filter(message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

LPARAM RandomUser::Point() {
    RECT area{0, 0, 300, 40};
    if (m_window) GetClientRect(m_window, &area);
    switch (m_choices.Below(8)) {
        case 0:  // beside it, also above and to the left
            return MAKELPARAM(m_choices.Between(-200, 800), m_choices.Between(-200, 800));
        case 1:  // anywhere that a message can say
            return static_cast<LPARAM>(static_cast<LONG>(m_choices.Next()));
        default:
            return MAKELPARAM(m_choices.Between(0, std::max(1L, area.right)),
                              m_choices.Between(0, std::max(1L, area.bottom)));
    }
}

void RandomUser::MouseAnywhere() {
    constexpr UINT Others[] = {WM_MOUSELEAVE, WM_MOUSEHOVER, WM_XBUTTONDOWN, WM_XBUTTONUP, WM_NCMOUSEMOVE};
    const bool moves = m_choices.OneIn(2);
    const UINT id = moves ? WM_MOUSEMOVE : static_cast<UINT>(m_choices.Between(WM_LBUTTONDOWN, WM_MBUTTONDBLCLK));
    Send(m_choices.OneIn(12) ? m_choices.Of(Others) : id, m_choices.Below(0x20), Point());
}

void RandomUser::Click() {
    const UINT down = m_choices.OneIn(4) ? WM_RBUTTONDOWN : WM_LBUTTONDOWN;
    const LPARAM at = Point();
    Send(down, down == WM_LBUTTONDOWN ? MK_LBUTTON : MK_RBUTTON, at);
    Send(down + 1, 0, at);
    if (!m_choices.OneIn(4)) return;
    Send(down + 2, MK_LBUTTON, at);
    Send(down + 1, 0, at);
}

void RandomUser::Drag() {
    Send(WM_LBUTTONDOWN, MK_LBUTTON, Point());
    for (unsigned i = m_choices.Below(4); i > 0; --i) Send(WM_MOUSEMOVE, MK_LBUTTON, Point());
    PickWindow();  // let go of elsewhere
    Send(WM_LBUTTONUP, 0, Point());
}

void RandomUser::Wheel() {
    const UINT id = m_choices.OneIn(4) ? WM_MOUSEHWHEEL : WM_MOUSEWHEEL;
    Send(id, MAKEWPARAM(m_choices.Below(0x20), m_choices.Between(-3, 3) * WHEEL_DELTA), Point());
}

void RandomUser::Key() {
    std::array<BYTE, 256> state{};
    for (const int modifier : {VK_SHIFT, VK_CONTROL, VK_MENU})
        state[static_cast<std::size_t>(modifier)] = m_choices.OneIn(5) ? 0x80 : 0;
    SetKeyboardState(state.data());
    constexpr WPARAM Common[] = {VK_LEFT, VK_RIGHT, VK_UP,     VK_DOWN,   VK_PRIOR,  VK_NEXT, VK_HOME, VK_END,
                                 VK_TAB,  VK_SPACE, VK_RETURN, VK_ESCAPE, VK_DELETE, VK_BACK, '1',     '9'};
    const WPARAM key = m_choices.OneIn(2) ? m_choices.Of(Common) : m_choices.Below(256);
    const bool system = m_choices.OneIn(8);
    const LPARAM repeat = m_choices.OneIn(10) ? static_cast<LONG>(m_choices.Next()) : 1;
    Send(system ? WM_SYSKEYDOWN : WM_KEYDOWN, key, repeat);
    if (key < 0x80 && m_choices.OneIn(2)) Send(system ? WM_SYSCHAR : WM_CHAR, key, repeat);
    if (!m_choices.OneIn(6)) Send(system ? WM_SYSKEYUP : WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
    SetKeyboardState(std::array<BYTE, 256>{}.data());
}

void RandomUser::PostedKey() {
    if (!m_window) return;
    const HWND focus = GetFocus();
    const HWND window = focus && IsChild(m_root, focus) ? focus : m_window;
    const WPARAM key = m_choices.OneIn(3) ? VK_TAB : m_choices.Below(256);
    Note({window, WM_KEYDOWN, key, 1});
    PostMessageW(window, WM_KEYDOWN, key, 1);
    PostMessageW(window, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
    Pump();
}

void RandomUser::Character() {
    Send(m_choices.OneIn(8) ? WM_UNICHAR : WM_CHAR,
         m_choices.OneIn(3) ? m_choices.Below(0x10000) : m_choices.Below(128), 1);
}

void RandomUser::Focus() {
    switch (m_choices.Below(4)) {
        case 0:
            SetFocus(m_host);
            break;
        case 1:
            Send(m_choices.OneIn(2) ? WM_SETFOCUS : WM_KILLFOCUS, reinterpret_cast<WPARAM>(m_host), 0);
            break;
        case 2:
            Send(WM_ACTIVATE, m_choices.Below(3), 0);
            break;
        default:
            Note({m_window, WM_SETFOCUS, 0, 0});
            if (m_window) SetFocus(m_window);
    }
}

void RandomUser::Capture() {
    switch (m_choices.Below(4)) {
        case 0:
            SetCapture(m_window ? m_window : m_host);
            break;
        case 1:
            ReleaseCapture();
            break;
        case 2:
            Send(WM_CAPTURECHANGED, 0, reinterpret_cast<LPARAM>(m_choices.OneIn(2) ? m_host : nullptr));
            break;
        default:
            Send(WM_CANCELMODE, 0, 0);
    }
}

void RandomUser::WindowState() {
    constexpr UINT Ids[] = {WM_SIZE,          WM_MOVE,        WM_ENABLE,   WM_SHOWWINDOW,
                            WM_CHANGEUISTATE, WM_HSCROLL,     WM_VSCROLL,  WM_UPDATEUISTATE,
                            WM_ACTIVATEAPP,   WM_MENUCHAR,    WM_INITMENU, WM_UNINITMENUPOPUP,
                            WM_ENTERIDLE,     WM_EXITSIZEMOVE};
    const UINT id = m_choices.Of(Ids);
    const bool scrolls = id == WM_HSCROLL || id == WM_VSCROLL;
    const WPARAM small = m_choices.Below(5);
    Send(id, id == WM_SIZE || id == WM_SHOWWINDOW || id == WM_ENABLE ? small : m_choices.Next(),
         scrolls || id == WM_SHOWWINDOW ? 0 : static_cast<LPARAM>(m_choices.Next()));
}

void RandomUser::SystemChange() {
    static const wchar_t* const Sections[] = {nullptr, L"intl", L"ImmersiveColorSet", L"", L"WindowMetrics"};
    constexpr UINT Ids[] = {WM_SETTINGCHANGE,      WM_SYSCOLORCHANGE, ThemeChanged,      WM_DISPLAYCHANGE,
                            WM_FONTCHANGE,         WM_TIMECHANGE,     WM_PALETTECHANGED, DpiChangedBeforeParent,
                            DpiChangedAfterParent, DpiChanged};
    const UINT id = m_choices.Of(Ids);
    const RECT place{0, 0, m_choices.Between(0, 900), m_choices.Between(0, 900)};
    if (id == DpiChanged) return Send(id, MAKEWPARAM(144, 144), reinterpret_cast<LPARAM>(&place));
    const bool named = id == WM_SETTINGCHANGE;
    Send(id, named ? m_choices.Below(100) : 0, named ? reinterpret_cast<LPARAM>(m_choices.Of(Sections)) : 0);
}

void RandomUser::Timer() {
    if (m_choices.OneIn(2)) return Pump();
    Send(WM_TIMER, m_choices.OneIn(2) ? m_choices.Below(8) : m_choices.Next(), 0);
}

void RandomUser::ForeignNotification() {
    // With room behind it, since the code may be that of a longer structure.
    struct {
        NMHDR header;
        std::array<char, 256> rest;
    } notification{{m_host, m_choices.Next(), m_choices.OneIn(2) ? m_choices.Next() : 0U - m_choices.Below(2000)}, {}};
    if (m_choices.OneIn(2))
        return Send(WM_COMMAND, m_choices.Next(), reinterpret_cast<LPARAM>(m_choices.OneIn(2) ? m_host : nullptr));
    // Native windows look into what they are told of, whether or not it is there.
    const bool null = !m_bNative && m_choices.OneIn(3);
    Send(WM_NOTIFY, m_choices.Next(), null ? 0 : reinterpret_cast<LPARAM>(&notification));
}

void RandomUser::Question() {
    constexpr UINT Ids[] = {WM_NCHITTEST,    WM_MOUSEACTIVATE, WM_SETCURSOR, WM_GETDLGCODE,
                            WM_QUERYUISTATE, WM_GETTEXTLENGTH, WM_GETFONT,   WM_CONTEXTMENU};
    HELPINFO help{};
    help.cbSize = sizeof(help);
    help.iContextType = m_choices.OneIn(3) ? HELPINFO_MENUITEM : HELPINFO_WINDOW;
    help.hItemHandle = m_window;
    switch (m_choices.Below(8)) {
        case 0:
            return Send(WM_HELP, 0, m_bNative || !m_choices.OneIn(3) ? reinterpret_cast<LPARAM>(&help) : 0);
        case 1:
            return m_window ? AskForAccess() : void();
        default: {
            const UINT id = m_choices.Of(Ids);
            const bool takesWindow = id == WM_SETCURSOR || id == WM_MOUSEACTIVATE || id == WM_CONTEXTMENU;
            Send(id, takesWindow ? reinterpret_cast<WPARAM>(m_window) : 0,
                 id == WM_GETDLGCODE ? 0 : static_cast<LPARAM>(m_choices.Next()));
        }
    }
}

void RandomUser::AskForAccess() {
    static const auto objectOf = reinterpret_cast<LPFNOBJECTFROMLRESULT>(
        reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"oleacc.dll"), "ObjectFromLresult")));
    const LRESULT answer = SendMessageW(m_window, WM_GETOBJECT, 0, OBJID_CLIENT);
    comkit::ComPtr<IAccessible> access;
    if (answer <= 0 || FAILED(objectOf(answer, IID_IAccessible, 0, access.PutVoid()))) return;
    ++m_lAccessAnswers;
    VARIANT child{};
    child.vt = VT_I4;
    child.lVal = m_choices.Between(-1, 7);
    comkit::Bstr name;
    access->get_accName(child, name.Put());
    comkit::Variant hit;
    access->accHitTest(m_choices.Between(-100, 800), m_choices.Between(-100, 800), hit.Put());
}

void RandomUser::Paint() {
    if (m_window && m_choices.OneIn(2)) {
        RedrawWindow(m_window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        return;
    }
    const HDC screen = GetDC(nullptr);
    const HDC dc = CreateCompatibleDC(screen);
    ReleaseDC(nullptr, screen);
    const bool prints = m_choices.OneIn(2);
    Send(prints ? WM_PRINTCLIENT : WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), prints ? PRF_CLIENT : 0);
    DeleteDC(dc);
}

void RandomUser::Raw() {
    const UINT id = m_choices.OneIn(2) ? static_cast<UINT>(m_choices.Between(WM_USER, 0x7FFF))
                                       : static_cast<UINT>(m_choices.Between(0xC000, 0xFFFF));
    if (m_bNative && std::ranges::any_of(PointersForNativeWindows, [&](const Range& r) { return IsWithin(id, r); }))
        return;
    Send(id, m_choices.Next(), static_cast<LPARAM>(m_choices.Next()));
}

}  // namespace component
