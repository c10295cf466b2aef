// What the children tell when real messages arrive, and that they keep silent when the program changes them.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include "win32_SurfaceFixture.h"

namespace kiv::win32::test {

namespace {

using Lines = std::vector<std::string>;

class NotificationTest : public SurfaceTest {
protected:
    void SetUp() override {
        SurfaceTest::SetUp();
        parts->calendar->SetValue({2026, 2, 14});
        parts->time->SetFormat(u"HH:mm");
        parts->time->SetValue({{2026, 2, 14}, {10, 30, 0}});
        Activate();
    }

    /// A point on a day of the shown month, found by asking the calendar itself.
    POINT PointOnDay(int day) const {
        RECT area{};
        GetClientRect(CalendarWindow(), &area);
        for (int y = 0; y < area.bottom; y += 3) {
            for (int x = 0; x < area.right; x += 3) {
                MCHITTESTINFO hit{};
                hit.cbSize = sizeof hit;
                hit.pt = {x, y};
                SendMessageW(CalendarWindow(), MCM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
                if (hit.uHit == MCHT_CALENDARDATE && hit.st.wDay == day) return {x + 2, y + 2};
            }
        }
        ADD_FAILURE() << "no point on day " << day;
        return {};
    }
    POINT PointOn(UINT part) const {
        RECT area{};
        GetClientRect(CalendarWindow(), &area);
        for (int y = 0; y < area.bottom; y += 3) {
            for (int x = 0; x < area.right; x += 3) {
                MCHITTESTINFO hit{};
                hit.cbSize = sizeof hit;
                hit.pt = {x, y};
                SendMessageW(CalendarWindow(), MCM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
                if (hit.uHit == part) return {x, y};
            }
        }
        ADD_FAILURE() << "no such part " << part;
        return {};
    }
    void ClickDay(int day) {
        const POINT point = PointOnDay(day);
        Click(CalendarWindow(), point.x, point.y);
    }
};

TEST_F(NotificationTest, ClickingADayTellsOneClickAfterTheMouse) {
    ClickDay(20);
    EXPECT_EQ(parts->calendar->Value(), (CivilDate{2026, 2, 20}));
    const Lines expected{"down calendar 1 0", "up calendar 1 0", "click calendar"};
    Lines heard = log.lines;
    std::erase(heard, "focus 1");
    EXPECT_EQ(heard, expected);

    log.lines.clear();
    Sleep(GetDoubleClickTime() + 50);
    ClickDay(20);
    EXPECT_EQ(log.TakeCount("click calendar"), 1u) << "the chosen day clicked once more";
}

TEST_F(NotificationTest, PagingToAnotherMonthByTheTitleIsAClick) {
    const POINT next = PointOn(MCHT_TITLEBTNNEXT);
    Press(CalendarWindow(), next.x, next.y);
    const CivilDate paged = parts->calendar->Value();
    EXPECT_EQ(paged.month, 3);
    EXPECT_EQ(log.TakeCount("click calendar"), 1u);
    Release(CalendarWindow(), next.x, next.y);
    EXPECT_EQ(log.TakeCount("click calendar"), 0u);
}

TEST_F(NotificationTest, KeysMoveTheDateAndCountAsClicks) {
    const struct {
        WPARAM key;
        CivilDate from;
        CivilDate to;
    } cases[] = {
        {VK_LEFT, {2026, 3, 1}, {2026, 2, 28}},   {VK_RIGHT, {2023, 12, 31}, {2024, 1, 1}},
        {VK_UP, {2024, 3, 5}, {2024, 2, 27}},     {VK_DOWN, {2026, 2, 27}, {2026, 3, 6}},
        {VK_PRIOR, {2024, 3, 31}, {2024, 2, 29}}, {VK_NEXT, {2023, 12, 31}, {2024, 1, 31}},
        {VK_HOME, {2026, 2, 14}, {2026, 2, 1}},   {VK_END, {2024, 2, 14}, {2024, 2, 29}},
        {VK_LEFT, {1753, 1, 1}, {1753, 1, 1}},    {VK_DOWN, {9999, 12, 31}, {9999, 12, 31}},
        {VK_PRIOR, {1753, 1, 20}, {1753, 1, 20}}, {'X', {2026, 2, 14}, {2026, 2, 14}},
    };
    SetFocus(CalendarWindow());
    for (const auto& c : cases) {
        parts->calendar->SetValue(c.from);
        log.lines.clear();
        Key(CalendarWindow(), c.key);
        EXPECT_EQ(parts->calendar->Value(), c.to) << "key " << c.key;
        EXPECT_EQ(log.TakeCount("click calendar"), c.from == c.to ? 0u : 1u) << "key " << c.key;
    }
}

TEST_F(NotificationTest, ASwallowedOrAlteredKeyIsWhatTheNativeChildGets) {
    log.alterKey = [](std::int16_t) { return std::int16_t{0}; };
    Key(CalendarWindow(), VK_RIGHT);
    EXPECT_EQ(parts->calendar->Value(), (CivilDate{2026, 2, 14}));
    EXPECT_EQ(log.TakeCount("click calendar"), 0u);

    log.alterKey = [](std::int16_t) { return std::int16_t{VK_DOWN}; };
    Key(CalendarWindow(), VK_RIGHT);
    EXPECT_EQ(parts->calendar->Value(), (CivilDate{2026, 2, 21}));

    log.alterKey = [](std::int16_t) { return std::int16_t{0}; };
    log.lines.clear();
    SendMessageW(TimeWindow(), WM_KEYDOWN, '1', 1);
    SendMessageW(TimeWindow(), WM_CHAR, '1', 1);
    EXPECT_EQ(log.lines, Lines{"keydown time 49 0"}) << "the character of a swallowed key is swallowed with it";
}

TEST_F(NotificationTest, CheckBoxesChangeByMouseAndBySpace) {
    const struct {
        int button;
        CheckBox& box;
        const char* name;
    } cases[] = {{1, *parts->useSystem, "system"}, {3, *parts->daylight, "daylight"}};
    for (const auto& c : cases) {
        const std::string click = std::string("click ") + c.name;
        Click(ButtonWindow(c.button), 5, 5);
        EXPECT_EQ(c.box.Value(), 1) << c.name;
        EXPECT_EQ(log.TakeCount(click), 1u);
        SetFocus(ButtonWindow(c.button));
        Key(ButtonWindow(c.button), VK_SPACE);
        EXPECT_EQ(c.box.Value(), 0) << c.name;
        EXPECT_EQ(log.TakeCount(click), 1u);
        Press(ButtonWindow(c.button), 5, 5);
        Release(ButtonWindow(c.button), -50, -50);
        EXPECT_EQ(c.box.Value(), 0) << "let go outside";
        EXPECT_EQ(log.TakeCount(click), 0u);
    }
}

TEST_F(NotificationTest, AccessKeysPressTheCheckBoxTheyBelongTo) {
    EXPECT_TRUE(parts->surface.PressMnemonic(L'a'));
    EXPECT_EQ(parts->daylight->Value(), 1);
    EXPECT_EQ(GetFocus(), ButtonWindow(3));
    EXPECT_EQ(log.TakeCount("click daylight"), 1u);
    EXPECT_FALSE(parts->surface.PressMnemonic(L'z'));
    parts->daylight->SetEnabled(false);
    EXPECT_FALSE(parts->surface.PressMnemonic(L'a'));
    EXPECT_EQ(parts->daylight->Value(), 1);
}

TEST_F(NotificationTest, TheTimeChangesBySpinningByArrowsAndByTyping) {
    SetFocus(TimeWindow());
    log.lines.clear();
    Key(TimeWindow(), VK_UP);
    EXPECT_EQ(parts->time->Value().time.hour, 11);
    EXPECT_EQ(log.TakeCount("change time"), 1u);

    RECT spin{};
    GetClientRect(SpinWindow(), &spin);
    Click(SpinWindow(), spin.right / 2, spin.bottom * 3 / 4);
    EXPECT_EQ(parts->time->Value().time.hour, 10);
    EXPECT_EQ(std::count(log.lines.begin(), log.lines.end(), "down time 1 0"), 1) << "the buttons are the time field";
    EXPECT_EQ(log.TakeCount("change time"), 1u);

    for (const char digit : {'0', '7'}) SendMessageW(TimeWindow(), WM_CHAR, static_cast<WPARAM>(digit), 1);
    EXPECT_EQ(parts->time->Value().time.hour, 7);
    EXPECT_EQ(log.TakeCount("change time"), 1u);
}

TEST_F(NotificationTest, ALoneDigitCountsWhenTheFocusLeaves) {
    SetFocus(TimeWindow());
    log.lines.clear();
    SendMessageW(TimeWindow(), WM_CHAR, '9', 1);
    SetFocus(ButtonWindow(1));
    EXPECT_EQ(parts->time->Value().time.hour, 9);
    EXPECT_EQ(log.TakeCount("change time"), 1u);
}

TEST_F(NotificationTest, TheSpinButtonsWorkBeforeTheFieldHasTheFocus) {
    SetFocus(host);
    RECT spin{};
    GetClientRect(SpinWindow(), &spin);
    Click(SpinWindow(), spin.right / 2, spin.bottom / 4);
    EXPECT_EQ(parts->time->Value().time.hour, 11);
    EXPECT_EQ(log.TakeCount("change time"), 1u);
}

TEST_F(NotificationTest, ProgramChangesTellNothing) {
    parts->calendar->SetValue({2024, 2, 29});
    parts->calendar->SetShowToday(false);
    parts->calendar->SetShowToday(true);
    parts->calendar->SetStartOfWeek(4);
    parts->calendar->SetMonthBackColor(0x00FFFFFF);
    parts->time->SetValue({{2024, 2, 29}, {23, 59, 59}});
    parts->time->SetFormat(u"hh:mm:ss tt");
    parts->useSystem->SetValue(1);
    parts->useSystem->SetCaption(u"&Other");
    parts->daylight->SetValue(1);
    for (Widget* widget : {static_cast<Widget*>(parts->inner.get()), static_cast<Widget*>(parts->calendar.get()),
                           static_cast<Widget*>(parts->time.get())}) {
        widget->SetEnabled(false);
        widget->SetVisible(false);
        widget->SetVisible(true);
        widget->SetEnabled(true);
    }
    Pump();
    EXPECT_EQ(log.lines, Lines{});
    EXPECT_EQ(parts->calendar->Value(), (CivilDate{2024, 2, 29}));
    EXPECT_EQ(parts->time->Value(), (DateTime{{2024, 2, 29}, {23, 59, 59}}));
}

TEST_F(NotificationTest, MousePositionsAreTwipsFromTheSource) {
    const double twips = parts->surface.TwipsPerPixel();
    // The middle button: the right one opens menus of the native children.
    const struct {
        HWND window;
        const char* line;
    } cases[] = {{parts->surface.Window(), "down surface 4 0"},
                 {ButtonWindow(0), "down outer 4 0"},
                 {ButtonWindow(2), "down inner 4 0"},
                 {CalendarWindow(), "down calendar 4 0"},
                 {TimeWindow(), "down time 4 0"},
                 {ButtonWindow(3), "down daylight 4 0"}};
    for (const auto& c : cases) {
        SendMessageW(c.window, WM_MBUTTONDOWN, MK_MBUTTON, MAKELPARAM(11, 7));
        SendMessageW(c.window, WM_MBUTTONUP, 0, MAKELPARAM(11, 7));
        EXPECT_EQ(log.TakeCount(c.line), 1u) << c.line;
        EXPECT_EQ(log.lastMouse.position, (Point{11 * twips, 7 * twips})) << c.line;
    }
    POINT inTime{0, 0};
    MapWindowPoints(SpinWindow(), TimeWindow(), &inTime, 1);
    SendMessageW(SpinWindow(), WM_MBUTTONDOWN, MK_MBUTTON | MK_SHIFT | MK_CONTROL, MAKELPARAM(2, 3));
    EXPECT_EQ(log.TakeCount("down time 4 3"), 1u);
    EXPECT_EQ(log.lastMouse.position, (Point{(inTime.x + 2) * twips, (inTime.y + 3) * twips}));
}

TEST_F(NotificationTest, FramesAndSurfaceClickWhenTheButtonIsLetGoInside) {
    const struct {
        HWND window;
        const char* click;
    } cases[] = {{parts->surface.Window(), "click surface"},
                 {ButtonWindow(0), "click outer"},
                 {ButtonWindow(2), "click inner"},
                 {TimeWindow(), "click time"}};
    for (const auto& c : cases) {
        Press(c.window, 3, 3);
        EXPECT_EQ(log.TakeCount(c.click), 0u);
        Release(c.window, 3, 3);
        EXPECT_EQ(log.TakeCount(c.click), 1u);
        Press(c.window, 3, 3);
        Release(c.window, -9, 3);
        EXPECT_EQ(log.TakeCount(c.click), 0u) << "let go outside";
    }
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(NotificationTest, ADoublePressIsADoubleClickEvenWhereTheClassKnowsNone) {
    const POINT day = PointOnDay(11);
    Click(CalendarWindow(), day.x, day.y);
    Click(CalendarWindow(), day.x, day.y);
    EXPECT_EQ(log.TakeCount("dblclick calendar"), 1u);
    Click(CalendarWindow(), day.x, day.y);
    EXPECT_EQ(log.TakeCount("dblclick calendar"), 0u) << "the third press begins anew";
    SendMessageW(ButtonWindow(2), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(3, 3));
    EXPECT_EQ(log.TakeCount("dblclick inner"), 1u);
}

TEST_F(NotificationTest, FocusIsToldOnceForTheWholeSurface) {
    SetFocus(host);
    log.lines.clear();
    SetFocus(ButtonWindow(1));
    SetFocus(TimeWindow());
    SetFocus(CalendarWindow());
    EXPECT_EQ(log.TakeCount("focus 1"), 1u);
    SetFocus(host);
    EXPECT_EQ(log.TakeCount("focus 0"), 1u);
}

TEST_F(NotificationTest, TabWalksTheChildrenAndThenLeaves) {
    EXPECT_EQ(parts->surface.FirstTabStop(), ButtonWindow(1));
    EXPECT_EQ(parts->surface.LastTabStop(), TimeWindow());
    MSG tab{};
    tab.message = WM_KEYDOWN;
    tab.wParam = VK_TAB;
    SetFocus(ButtonWindow(1));
    parts->calendar->SetEnabled(false);
    EXPECT_TRUE(parts->surface.TranslateKey(tab));
    EXPECT_EQ(GetFocus(), ButtonWindow(3));
    EXPECT_TRUE(parts->surface.TranslateKey(tab));
    EXPECT_EQ(GetFocus(), TimeWindow()) << "a disabled child is passed over";
    EXPECT_FALSE(parts->surface.TranslateKey(tab));
    EXPECT_EQ(GetFocus(), TimeWindow());
}

}  // namespace

}  // namespace kiv::win32::test
