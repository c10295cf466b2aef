// Listeners that end the control, or its windows, from inside a call.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "win32_SurfaceFixture.h"

namespace kiv::win32::test {

namespace {

struct UserAct {
    const char* name;  ///< of the line at which the listener strikes
    std::function<void(HWND calendar, HWND time, HWND spin, HWND box, HWND frame)> act;
};

void PressAndRelease(HWND window, int x, int y) {
    SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    SendMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}

void SpinOnce(HWND spin) {
    RECT area{};
    GetClientRect(spin, &area);
    PressAndRelease(spin, area.right / 2, 3);
}

/// Each call that a listener gets, and a user's act that leads to it.
const UserAct Acts[] = {
    {"down calendar 1 0", [](HWND calendar, HWND, HWND, HWND, HWND) { PressAndRelease(calendar, 60, 80); }},
    {"up calendar 1 0", [](HWND calendar, HWND, HWND, HWND, HWND) { PressAndRelease(calendar, 60, 80); }},
    {"click calendar", [](HWND calendar, HWND, HWND, HWND, HWND) { PressAndRelease(calendar, 60, 80); }},
    {"click calendar", [](HWND calendar, HWND, HWND, HWND, HWND) { SendMessageW(calendar, WM_KEYDOWN, VK_LEFT, 1); }},
    {"dblclick calendar",
     [](HWND calendar, HWND, HWND, HWND, HWND) {
         PressAndRelease(calendar, 60, 80);
         PressAndRelease(calendar, 60, 80);
     }},
    {"keydown calendar 37 0",
     [](HWND calendar, HWND, HWND, HWND, HWND) { SendMessageW(calendar, WM_KEYDOWN, VK_LEFT, 1); }},
    {"change time",
     [](HWND, HWND time, HWND, HWND, HWND) {
         SetFocus(time);
         SendMessageW(time, WM_KEYDOWN, VK_UP, 1);
     }},
    {"change time", [](HWND, HWND, HWND spin, HWND, HWND) { SpinOnce(spin); }},
    {"down time 1 0", [](HWND, HWND, HWND spin, HWND, HWND) { SpinOnce(spin); }},
    {"click time", [](HWND, HWND, HWND spin, HWND, HWND) { SpinOnce(spin); }},
    {"keypress time 49", [](HWND, HWND time, HWND, HWND, HWND) { SendMessageW(time, WM_CHAR, '1', 1); }},
    {"keyup time 49 0", [](HWND, HWND time, HWND, HWND, HWND) { SendMessageW(time, WM_KEYUP, '1', 1); }},
    {"click system", [](HWND, HWND, HWND, HWND box, HWND) { PressAndRelease(box, 5, 5); }},
    {"click system",
     [](HWND, HWND, HWND, HWND box, HWND) {
         SendMessageW(box, WM_KEYDOWN, VK_SPACE, 1);
         SendMessageW(box, WM_KEYUP, VK_SPACE, static_cast<LPARAM>(0xC0000001));
     }},
    {"click system", [](HWND, HWND, HWND, HWND box, HWND) { SendMessageW(box, BM_CLICK, 0, 0); }},
    {"click inner", [](HWND, HWND, HWND, HWND, HWND frame) { PressAndRelease(frame, 3, 3); }},
    {"focus 1", [](HWND, HWND, HWND spin, HWND, HWND) { SpinOnce(spin); }},
    {"focus 1", [](HWND calendar, HWND, HWND, HWND, HWND) { SetFocus(calendar); }},
    {"focus 0",
     [](HWND calendar, HWND, HWND, HWND, HWND) {
         SetFocus(calendar);
         SetFocus(GetAncestor(calendar, GA_ROOT));
     }},
};

class ReentrancyTest : public SurfaceTest {
protected:
    /// Runs every act, with strike called at the line that it leads to.
    void StrikeAtEach(const std::function<void()>& strike) {
        for (const UserAct& act : Acts) {
            SCOPED_TRACE(act.name);
            parts = std::make_unique<Arrangement>(log);
            SetFocus(host);
            Activate();
            bool struck = false;
            log.then = [&](const std::string& line) {
                if (struck || line != act.name) return;
                struck = true;
                strike();
            };
            act.act(CalendarWindow(), TimeWindow(), SpinWindow(), ButtonWindow(1), ButtonWindow(2));
            Pump();
            EXPECT_TRUE(struck);
            log.then = nullptr;
        }
    }
};

TEST_F(ReentrancyTest, AListenerMayDestroyTheControlInAnyCall) {
    StrikeAtEach([this] { parts.reset(); });
}

TEST_F(ReentrancyTest, AListenerMayEndTheWindowsInAnyCall) {
    StrikeAtEach([this] { parts->surface.Deactivate(); });
}

TEST_F(ReentrancyTest, AListenerMayMakeTheWindowsAnewInAnyCall) {
    StrikeAtEach([this] {
        parts->surface.Deactivate();
        parts->surface.Activate(host, PixelSize());
        EXPECT_NE(CalendarWindow(), nullptr);
    });
}

TEST_F(ReentrancyTest, AContainerMayDestroyItsWindowInAnyCall) {
    StrikeAtEach([this] { DestroyWindow(parts->surface.Window()); });
}

TEST_F(ReentrancyTest, AnExceptionInAListenerEndsWithTheMessage) {
    StrikeAtEach([] { throw std::runtime_error("listener"); });
}

TEST_F(ReentrancyTest, ResizingMayDestroyTheControlBeforeItsWindowsAreMade) {
    log.then = [this](const std::string& line) {
        if (line == "resize") parts.reset();
    };
    parts->surface.Activate(host, {0, 0, 700, 600});
    EXPECT_EQ(parts, nullptr);
    EXPECT_EQ(GetWindow(host, GW_CHILD), nullptr);

    parts = std::make_unique<Arrangement>(log);
    Activate();
    parts->surface.SetPixelRect({0, 0, 700, 600});
    EXPECT_EQ(parts, nullptr);
}

/// Strikes inside the message loop that the native calendar's own menu runs.
struct MenuStrike {
    static inline std::unique_ptr<Arrangement>* control = nullptr;
    static inline HWND window = nullptr;
    static inline bool aliveInside = false;
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR id, DWORD) {
        KillTimer(nullptr, id);
        control->reset();
        aliveInside = IsWindow(window) != FALSE;
        EndMenu();
    }
};

TEST_F(ReentrancyTest, WindowsEndedWhileNativeCodeRunsGoWhenItHasReturned) {
    Activate();
    const HWND calendar = CalendarWindow();
    MenuStrike::control = &parts;
    MenuStrike::window = calendar;
    MenuStrike::aliveInside = false;
    const UINT_PTR timer = SetTimer(nullptr, 0, 100, &MenuStrike::OnTimer);
    ASSERT_NE(timer, 0u);
    SetFocus(calendar);
    SendMessageW(calendar, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(10, 10));
    if (parts) SendMessageW(calendar, WM_RBUTTONUP, 0, MAKELPARAM(10, 10));
    if (parts) {
        KillTimer(nullptr, timer);
        GTEST_SKIP() << "the native calendar shows no menu here";
    }
    EXPECT_TRUE(MenuStrike::aliveInside) << "its own code was still running";
    EXPECT_FALSE(IsWindow(calendar)) << "and now it has returned";
}

}  // namespace

}  // namespace kiv::win32::test
