// The children as an accessibility client and a keyboard user find them, and the colours of a user who needs contrast.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>
#include <oleacc.h>

#include <array>

#include "comkit/Bstr.h"
#include "comkit/ComPtr.h"
#include "win32_SurfaceFixture.h"
#include "win32_TestAnswers.h"

namespace kiv::win32::test {

namespace {

using comkit::ComPtr;

class AccessTest : public SurfaceTest {
protected:
    void SetUp() override {
        ASSERT_TRUE(SUCCEEDED(OleInitialize(nullptr)));
        SurfaceTest::SetUp();
    }
    void TearDown() override {
        SurfaceTest::TearDown();
        OleUninitialize();
    }

    static ComPtr<IAccessible> AccessibleOf(HWND window) {
        using Function = HRESULT(WINAPI*)(HWND, DWORD, REFIID, void**);
        const auto ask = reinterpret_cast<Function>(
            reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"oleacc.dll"), "AccessibleObjectFromWindow")));
        ComPtr<IAccessible> found;
        if (ask) ask(window, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible, found.PutVoid());
        return found;
    }
    static VARIANT Self() {
        VARIANT self{};
        V_VT(&self) = VT_I4;
        V_I4(&self) = CHILDID_SELF;
        return self;
    }
    static std::u16string NameOf(HWND window) {
        const auto object = AccessibleOf(window);
        comkit::Bstr name;
        if (object) object->get_accName(Self(), name.Put());
        return std::u16string(name.View());
    }
    static std::u16string ValueOf(HWND window) {
        const auto object = AccessibleOf(window);
        comkit::Bstr value;
        if (object) object->get_accValue(Self(), value.Put());
        return std::u16string(value.View());
    }
    static long RoleOf(HWND window) {
        VARIANT role{};
        const auto object = AccessibleOf(window);
        return object && object->get_accRole(Self(), &role) == S_OK && V_VT(&role) == VT_I4 ? V_I4(&role) : -1;
    }
    static long StateOf(HWND window) {
        VARIANT state{};
        const auto object = AccessibleOf(window);
        return object && object->get_accState(Self(), &state) == S_OK && V_VT(&state) == VT_I4 ? V_I4(&state) : -1;
    }
};

TEST_F(AccessTest, EachChildTellsItsNameAndItsRole) {
    Activate();
    struct Expected {
        HWND window;
        const char16_t* name;
        long role;
    };
    const std::array all{
        Expected{ButtonWindow(0), u"Set Date/Time", ROLE_SYSTEM_GROUPING},
        Expected{ButtonWindow(1), u"Use PC System Date/Time?", ROLE_SYSTEM_CHECKBUTTON},
        Expected{ButtonWindow(2), u"Custom Date/Time", ROLE_SYSTEM_GROUPING},
        Expected{ButtonWindow(3), u"Automatically Adjust for Daylight Savings Time?", ROLE_SYSTEM_CHECKBUTTON},
        Expected{CalendarWindow(), u"Date", ROLE_SYSTEM_TABLE},
        Expected{TimeWindow(), u"Time", ROLE_SYSTEM_SPINBUTTON},
    };
    for (const Expected& e : all) {
        EXPECT_EQ(NameOf(e.window), e.name);
        EXPECT_EQ(RoleOf(e.window), e.role) << testing::PrintToString(std::u16string(e.name));
    }
    parts->inner->SetCaption(u"Salt && Pepper");
    EXPECT_EQ(NameOf(ButtonWindow(2)), u"Salt & Pepper");
}

TEST_F(AccessTest, ValuesAndStatesAreThePresentOnes) {
    parts->time->SetFormat(u"HH:mm:ss");
    parts->time->SetValue({{2024, 2, 29}, {21, 5, 9}});
    parts->calendar->SetValue({2024, 2, 29});
    Activate();
    EXPECT_EQ(ValueOf(TimeWindow()), u"21:05:09");
    EXPECT_NE(ValueOf(CalendarWindow()).find(u"2024"), std::u16string::npos);
    parts->calendar->SetValue({2031, 7, 4});
    EXPECT_NE(ValueOf(CalendarWindow()).find(u"2031"), std::u16string::npos);

    EXPECT_FALSE(StateOf(ButtonWindow(1)) & STATE_SYSTEM_CHECKED);
    parts->useSystem->SetValue(1);
    EXPECT_TRUE(StateOf(ButtonWindow(1)) & STATE_SYSTEM_CHECKED);
    EXPECT_FALSE(StateOf(TimeWindow()) & STATE_SYSTEM_UNAVAILABLE);
    parts->time->SetEnabled(false);
    EXPECT_TRUE(StateOf(TimeWindow()) & STATE_SYSTEM_UNAVAILABLE);
}

TEST_F(AccessTest, AnObjectThatOutlivesItsChildAnswersWithAnError) {
    Activate();
    const auto calendar = AccessibleOf(CalendarWindow());
    ASSERT_TRUE(calendar);
    parts->surface.Deactivate();
    comkit::Bstr name;
    EXPECT_TRUE(FAILED(calendar->get_accName(Self(), name.Put())));
    EXPECT_EQ(name.Get(), nullptr);
    parts.reset();
    EXPECT_TRUE(FAILED(calendar->get_accName(Self(), name.Put())));
}

class KeyboardTest : public SurfaceTest {
protected:
    void TearDown() override {
        HoldShift(false);
        SurfaceTest::TearDown();
    }
    static void HoldShift(bool down) {
        BYTE keys[256] = {};
        GetKeyboardState(keys);
        keys[VK_SHIFT] = down ? 0x80 : 0;
        SetKeyboardState(keys);
    }
    bool Tab() {
        return parts->surface.TranslateKey(
            {.hwnd = GetFocus(), .message = WM_KEYDOWN, .wParam = VK_TAB, .lParam = 1, .time = 0, .pt = {}});
    }
    std::string Focused() const {
        const HWND focus = GetFocus();
        if (focus == ButtonWindow(1)) return "system";
        if (focus == ButtonWindow(3)) return "daylight";
        if (focus == CalendarWindow()) return "calendar";
        if (focus == TimeWindow()) return "time";
        return focus == parts->surface.Window() ? "surface" : "outside";
    }
    /// Where the focus goes with each Tab, until the walk leaves.
    std::vector<std::string> Walk(HWND start, bool back) {
        SetFocus(start);
        HoldShift(back);
        std::vector<std::string> places{Focused()};
        while (places.size() < 10 && Tab()) places.push_back(Focused());
        HoldShift(false);
        return places;
    }
    using Places = std::vector<std::string>;
};

TEST_F(KeyboardTest, TabWalksTheChildrenInOrderAndLeavesAtBothEnds) {
    Activate();
    EXPECT_EQ(Walk(parts->surface.FirstTabStop(), false), (Places{"system", "daylight", "calendar", "time"}));
    EXPECT_EQ(Walk(parts->surface.LastTabStop(), true), (Places{"time", "calendar", "daylight", "system"}));
    // From the surface itself, and from the spin buttons, which belong to the time field.
    EXPECT_EQ(Walk(parts->surface.Window(), false), (Places{"surface", "system", "daylight", "calendar", "time"}));
    EXPECT_EQ(Walk(parts->surface.Window(), true), (Places{"surface"}));
    EXPECT_EQ(Walk(SpinWindow(), true), (Places{"outside", "calendar", "daylight", "system"}));
}

TEST_F(KeyboardTest, TabPassesOverWhatIsDisabledOrHidden) {
    Activate();
    parts->daylight->SetVisible(false);
    parts->calendar->SetEnabled(false);
    EXPECT_EQ(Walk(parts->surface.FirstTabStop(), false), (Places{"system", "time"}));
    parts->time->SetEnabled(false);
    EXPECT_EQ(Walk(parts->surface.LastTabStop(), true), (Places{"system"}));
    // Inside a frame that is disabled nothing can be reached either.
    parts->time->SetEnabled(true);
    parts->inner->SetEnabled(false);
    EXPECT_EQ(Walk(parts->surface.FirstTabStop(), false), (Places{"system"}));
    parts->useSystem->SetEnabled(false);
    EXPECT_EQ(parts->surface.FirstTabStop(), nullptr);
    EXPECT_EQ(parts->surface.LastTabStop(), nullptr);
    EXPECT_EQ(Walk(parts->surface.Window(), false), (Places{"surface"}));
}

TEST_F(KeyboardTest, TabIsLeftToTheContainerWhileTheFocusIsElsewhere) {
    EXPECT_FALSE(Tab()) << "there are no windows yet";
    Activate();
    EXPECT_EQ(Walk(host, false), (Places{"outside"}));
    SetFocus(parts->surface.FirstTabStop());
    EXPECT_FALSE(parts->surface.TranslateKey(
        {.hwnd = GetFocus(), .message = WM_KEYDOWN, .wParam = VK_RETURN, .lParam = 1, .time = 0, .pt = {}}));
    parts->surface.Deactivate();
    EXPECT_FALSE(Tab());
}

TEST_F(KeyboardTest, AccessKeysPressTheirBoxWhileItCanBePressed) {
    Activate();
    EXPECT_TRUE(parts->surface.PressMnemonic(L'u'));
    EXPECT_EQ(parts->useSystem->Value(), 1);
    EXPECT_EQ(Focused(), "system");
    EXPECT_EQ(log.TakeCount("click system"), 1u);
    EXPECT_TRUE(parts->surface.PressMnemonic(L'A'));
    EXPECT_EQ(parts->daylight->Value(), 1);

    EXPECT_FALSE(parts->surface.PressMnemonic(L'Q'));
    EXPECT_FALSE(parts->surface.PressMnemonic(0));
    parts->inner->SetEnabled(false);
    EXPECT_FALSE(parts->surface.PressMnemonic(L'A'));
    parts->useSystem->SetVisible(false);
    EXPECT_FALSE(parts->surface.PressMnemonic(L'U'));
    parts->useSystem->SetVisible(true);
    parts->useSystem->SetCaption(u"R&&D &Box");
    EXPECT_TRUE(parts->surface.PressMnemonic(L'b'));
    EXPECT_EQ(parts->useSystem->Value(), 0);
}

class ContrastTest : public SurfaceTest {
protected:
    /// The colour in the middle of a place near a window's top left corner, where only its background shows.
    COLORREF Painted(POINT place) const {
        const comkit::WindowDc screen(nullptr);
        const comkit::UniqueMemoryDc dc(CreateCompatibleDC(screen.Get()));
        const comkit::UniqueBitmap bitmap(CreateCompatibleBitmap(screen.Get(), 700, 500));
        const comkit::GdiSelection selection(dc.Get(), bitmap.Get());
        parts->surface.Draw(dc.Get(), PixelSize());
        return GetPixel(dc.Get(), place.x, place.y);
    }
    COLORREF CalendarColor(int part) const {
        return static_cast<COLORREF>(SendMessageW(CalendarWindow(), MCM_GETCOLOR, static_cast<WPARAM>(part), 0));
    }
    std::vector<COLORREF> CalendarColors() const {
        std::vector<COLORREF> all;
        for (const int part :
             {MCSC_BACKGROUND, MCSC_TEXT, MCSC_MONTHBK, MCSC_TITLEBK, MCSC_TITLETEXT, MCSC_TRAILINGTEXT})
            all.push_back(CalendarColor(part));
        return all;
    }
    static constexpr COLORREF Own = RGB(10, 200, 30);
    TestAnswers answers;
};

TEST_F(ContrastTest, TheUsersContrastColorsWinOverTheControlsAndGoAgain) {
    for (Widget* const w : {static_cast<Widget*>(parts->outer.get()), static_cast<Widget*>(parts->useSystem.get()),
                            static_cast<Widget*>(parts->inner.get()), static_cast<Widget*>(parts->calendar.get())}) {
        w->SetBackColor(Own);
        w->SetForeColor(Own);
    }
    parts->calendar->SetMonthBackColor(Own);
    parts->calendar->SetTitleBackColor(Own);
    parts->calendar->SetTitleForeColor(Own);
    parts->calendar->SetTrailingForeColor(Own);
    Activate();
    const std::vector<COLORREF> own(6, Own);
    const POINT inFrame{4, 60};
    RECT box{};
    GetWindowRect(ButtonWindow(1), &box);
    MapWindowPoints(nullptr, parts->surface.Window(), reinterpret_cast<POINT*>(&box), 2);
    const POINT behindBox{box.right - 2, box.top + 2};
    EXPECT_EQ(CalendarColors(), own);
    EXPECT_EQ(Painted(inFrame), Own);
    EXPECT_EQ(Painted(behindBox), Own);

    for (const UINT message : {UINT{WM_SETTINGCHANGE}, UINT{WM_SYSCOLORCHANGE}}) {
        TestAnswers::UseHighContrast(true);
        SendMessageW(parts->surface.Window(), message, 0, 0);
        EXPECT_EQ(CalendarColors(),
                  (std::vector<COLORREF>{GetSysColor(COLOR_BTNFACE), GetSysColor(COLOR_WINDOWTEXT),
                                         GetSysColor(COLOR_WINDOW), GetSysColor(COLOR_ACTIVECAPTION),
                                         GetSysColor(COLOR_CAPTIONTEXT), GetSysColor(COLOR_GRAYTEXT)}));
        EXPECT_EQ(Painted(inFrame), GetSysColor(COLOR_BTNFACE));
        EXPECT_EQ(Painted(behindBox), GetSysColor(COLOR_BTNFACE));
        parts->calendar->SetEnabled(false);
        EXPECT_EQ(CalendarColor(MCSC_TEXT), GetSysColor(COLOR_GRAYTEXT));
        parts->calendar->SetTitleBackColor(Own);
        EXPECT_EQ(CalendarColor(MCSC_TITLEBK), GetSysColor(COLOR_ACTIVECAPTION)) << "set while contrast is wanted";
        parts->calendar->SetEnabled(true);

        TestAnswers::UseHighContrast(false);
        SendMessageW(parts->surface.Window(), message, 0, 0);
        EXPECT_EQ(CalendarColors(), own);
        EXPECT_EQ(Painted(inFrame), Own);
        EXPECT_EQ(parts->calendar->BackColor(), Own) << "the properties stay what they were all the while";
    }
}

}  // namespace

}  // namespace kiv::win32::test
