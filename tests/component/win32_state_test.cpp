// The children's state before, during and after the life of their windows.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

#include "platform/HostError.h"
#include "win32/OleFont.h"
#include "win32/WindowHooks.h"
#include "win32_SurfaceFixture.h"

namespace kiv::win32::test {

namespace {

class StateTest : public SurfaceTest {
protected:
    static std::wstring TextOf(HWND window) {
        wchar_t text[128] = {};
        GetWindowTextW(window, text, 128);
        return text;
    }
    RECT PlaceOf(HWND window) const {
        RECT place{};
        GetWindowRect(window, &place);
        MapWindowPoints(nullptr, GetParent(window), reinterpret_cast<POINT*>(&place), 2);
        return place;
    }
    COLORREF CalendarColor(int part) const {
        return static_cast<COLORREF>(SendMessageW(CalendarWindow(), MCM_GETCOLOR, static_cast<WPARAM>(part), 0));
    }
};

TEST_F(StateTest, WhatWasSetBeforeActivationIsWhatTheWindowsShow) {
    parts->useSystem->SetValue(1);
    parts->daylight->SetEnabled(false);
    parts->time->SetVisible(false);
    parts->calendar->SetValue({1899, 12, 30});
    parts->calendar->SetStartOfWeek(2);
    parts->calendar->SetForeColor(0x00102030);
    parts->calendar->SetBackColor(0x00112233);
    parts->calendar->SetMonthBackColor(0x00445566);
    parts->calendar->SetTitleBackColor(SystemColor::ButtonShadow);
    parts->calendar->SetTitleForeColor(0x00778899);
    parts->calendar->SetTrailingForeColor(0x00AABBCC);
    Activate();

    EXPECT_EQ(TextOf(ButtonWindow(0)), L"Set Date/Time");
    EXPECT_EQ(TextOf(ButtonWindow(1)), L"&Use PC System Date/Time?");
    EXPECT_EQ(SendMessageW(ButtonWindow(1), BM_GETCHECK, 0, 0), BST_CHECKED);
    EXPECT_FALSE(IsWindowEnabled(ButtonWindow(3)));
    EXPECT_FALSE(IsWindowVisible(TimeWindow()));
    SYSTEMTIME shown{};
    SendMessageW(CalendarWindow(), MCM_GETCURSEL, 0, reinterpret_cast<LPARAM>(&shown));
    EXPECT_EQ(shown.wYear, 1899);
    EXPECT_EQ(LOWORD(SendMessageW(CalendarWindow(), MCM_GETFIRSTDAYOFWEEK, 0, 0)), 0) << "Monday";
    EXPECT_EQ(CalendarColor(MCSC_TEXT), 0x00102030u);
    EXPECT_EQ(CalendarColor(MCSC_BACKGROUND), 0x00112233u);
    EXPECT_EQ(CalendarColor(MCSC_MONTHBK), 0x00445566u);
    EXPECT_EQ(CalendarColor(MCSC_TITLEBK), GetSysColor(COLOR_BTNSHADOW));
    EXPECT_EQ(CalendarColor(MCSC_TITLETEXT), 0x00778899u);
    EXPECT_EQ(CalendarColor(MCSC_TRAILINGTEXT), 0x00AABBCCu);
}

TEST_F(StateTest, ChangesWhileActiveReachTheWindowsAtOnce) {
    Activate();
    const HWND calendar = CalendarWindow();
    parts->calendar->SetStartOfWeek(1);
    EXPECT_EQ(LOWORD(SendMessageW(calendar, MCM_GETFIRSTDAYOFWEEK, 0, 0)), 6);
    parts->calendar->SetMonthBackColor(0x00010203);
    EXPECT_EQ(CalendarColor(MCSC_MONTHBK), 0x00010203u);
    parts->inner->SetCaption(u"Custom Date");
    EXPECT_EQ(TextOf(ButtonWindow(2)), L"Custom Date");
    parts->useSystem->SetBounds({150, 300, 1500, 300});
    EXPECT_EQ(PlaceOf(ButtonWindow(1)).left, 10);
    EXPECT_EQ(PlaceOf(ButtonWindow(1)).bottom, 40);
    EXPECT_EQ(calendar, CalendarWindow()) << "no window is ever made twice";
}

TEST_F(StateTest, WhatTheUserDidOutlivesTheWindows) {
    parts->calendar->SetValue({2026, 2, 14});
    parts->time->SetValue({{2026, 2, 14}, {10, 30, 15}});
    Activate();
    SendMessageW(CalendarWindow(), WM_KEYDOWN, VK_DOWN, 1);
    SetFocus(TimeWindow());
    SendMessageW(TimeWindow(), WM_KEYDOWN, VK_UP, 1);
    Click(ButtonWindow(1), 5, 5);
    const CivilDate date = parts->calendar->Value();
    const DateTime time = parts->time->Value();
    EXPECT_EQ(date, (CivilDate{2026, 2, 21}));
    EXPECT_EQ(time, (DateTime{{2026, 2, 14}, {11, 30, 15}}));

    log.lines.clear();
    parts->surface.Deactivate();
    EXPECT_EQ(parts->surface.Window(), nullptr);
    EXPECT_EQ(log.lines, std::vector<std::string>{}) << "ending the windows tells nothing";
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(parts->calendar->Value(), date);
        EXPECT_EQ(parts->time->Value(), time);
        EXPECT_EQ(parts->useSystem->Value(), 1);
        Activate();
    }
}

// The system may fill the upper half of a handle as it likes: GetWindow of Wine 8 does it in another way than the rest.
TEST_F(StateTest, AWindowIsKnownByTheSignificantBitsOfItsHandle) {
    Activate();
    const auto bits = reinterpret_cast<std::uintptr_t>(TimeWindow());
    const auto filled = static_cast<std::uintptr_t>(bits | 0xFFFFFFFF00000000u);
    EXPECT_TRUE(WindowHooks::Get().Find(TimeWindow()).owner);
    EXPECT_EQ(WindowHooks::Get().Find(TimeWindow()).owner,
              WindowHooks::Get().Find(reinterpret_cast<HWND>(filled)).owner);
}

TEST_F(StateTest, AHostThatDestroysTheWindowsItselfLosesNothing) {
    Activate();
    SendMessageW(CalendarWindow(), WM_KEYDOWN, VK_HOME, 1);
    const CivilDate date = parts->calendar->Value();
    DestroyWindow(parts->surface.Window());
    EXPECT_EQ(parts->surface.Window(), nullptr);
    EXPECT_EQ(parts->calendar->Value(), date);
    parts->calendar->SetValue({2000, 1, 31});
    Activate();
    EXPECT_EQ(parts->calendar->Value(), (CivilDate{2000, 1, 31}));
}

TEST_F(StateTest, RefusedValuesLeaveTheOldOnes) {
    const CivilDate badDates[] = {{2026, 2, 29}, {2026, 13, 1},  {2026, 0, 1},
                                  {2026, 1, 0},  {1752, 12, 31}, {10000, 1, 1}};
    parts->calendar->SetValue({2026, 2, 14});
    const DateTime time{{2026, 2, 14}, {1, 2, 3}};
    parts->time->SetValue(time);
    for (int round = 0; round < 2; ++round) {
        for (const CivilDate& date : badDates) {
            EXPECT_THROW(parts->calendar->SetValue(date), HostError);
            EXPECT_THROW(parts->time->SetValue({date, {}}), HostError);
        }
        for (const TimeOfDay& bad : {TimeOfDay{24, 0, 0}, TimeOfDay{0, 60, 0}, TimeOfDay{0, 0, -1}})
            EXPECT_THROW(parts->time->SetValue({{2026, 1, 1}, bad}), HostError);
        EXPECT_THROW(parts->calendar->SetStartOfWeek(0), HostError);
        EXPECT_THROW(parts->calendar->SetStartOfWeek(8), HostError);
        EXPECT_EQ(parts->calendar->Value(), (CivilDate{2026, 2, 14}));
        EXPECT_EQ(parts->time->Value(), time);
        if (round == 0) Activate();
    }
}

TEST_F(StateTest, TheCalendarIsAsLargeAsItsFontNeeds) {
    const Rect small = parts->calendar->Bounds();
    FontTraits large = DefaultFontTraits();
    large.size = 180000;
    parts->calendar->SetFont(MakeFont(large));
    const Rect grown = parts->calendar->Bounds();
    EXPECT_GT(grown.width, small.width * 1.5);
    EXPECT_GT(grown.height, small.height * 1.5);
    parts->calendar->SetBounds({150, 300, 1, 1});
    EXPECT_EQ(parts->calendar->Bounds(), (Rect{150, 300, grown.width, grown.height}));

    Activate();
    RECT needed{};
    SendMessageW(CalendarWindow(), MCM_GETMINREQRECT, 0, reinterpret_cast<LPARAM>(&needed));
    const RECT place = PlaceOf(CalendarWindow());
    EXPECT_GE(place.right - place.left, needed.right);
    EXPECT_EQ(place.bottom - place.top, needed.bottom);
    parts->calendar->SetFont(nullptr);
    EXPECT_EQ(parts->calendar->Bounds().height, small.height);
    EXPECT_EQ(PlaceOf(CalendarWindow()).right - PlaceOf(CalendarWindow()).left,
              std::lround(small.width / parts->surface.TwipsPerPixel()));
}

TEST_F(StateTest, AFontChangedInPlaceShowsWhenItIsGivenAgain) {
    const FontPtr font = MakeFont(DefaultFontTraits());
    parts->useSystem->SetFont(font);
    Activate();
    const auto heightOfFont = [&] {
        LOGFONTW description{};
        const auto handle = reinterpret_cast<HGDIOBJ>(SendMessageW(ButtonWindow(1), WM_GETFONT, 0, 0));
        GetObjectW(handle, sizeof description, &description);
        return -description.lfHeight;
    };
    const LONG before = heightOfFont();
    CY size{};
    size.int64 = 240000;
    static_cast<OleFont&>(*font).Object()->put_Size(size);
    parts->useSystem->SetFont(font);
    EXPECT_EQ(heightOfFont(), 32 * parts->surface.Dpi() / 96);
    EXPECT_NE(heightOfFont(), before);
}

TEST_F(StateTest, TheContainersSizeIsTakenOverButRoundingIsNot) {
    const auto resizes = [this](int width, int height) {
        log.lines.clear();
        parts->surface.SetPixelRect({0, 0, width, height});
        return log.TakeCount("resize");
    };
    parts->surface.SetSize({4895, 3007});  // 326.33 by 200.47 pixels
    EXPECT_EQ(log.TakeCount("sizechanged"), 1u);
    EXPECT_EQ(resizes(326, 200), 0u);
    EXPECT_EQ(parts->surface.Bounds().width, 4895);
    EXPECT_EQ(resizes(327, 200), 1u);
    EXPECT_EQ(parts->surface.Bounds(), (Rect{0, 0, 327 * 15, 200 * 15}));
    log.lines.clear();
    parts->surface.SetSizeFromContainer({1234.5, 678});
    EXPECT_EQ(log.TakeCount("resize"), 1u);
    EXPECT_EQ(parts->surface.Bounds(), (Rect{0, 0, 1234.5, 678}));
}

TEST_F(StateTest, FramesCanBeHitAndKeepTheirRole) {
    Activate();
    EXPECT_EQ(SendMessageW(ButtonWindow(0), WM_NCHITTEST, 0, 0), HTCLIENT);
    EXPECT_TRUE(GetWindowLongPtrW(ButtonWindow(0), GWL_EXSTYLE) & WS_EX_CONTROLPARENT);
    EXPECT_EQ(GetWindowLongPtrW(ButtonWindow(0), GWL_STYLE) & BS_TYPEMASK, BS_GROUPBOX);
    EXPECT_EQ(GetParent(CalendarWindow()), ButtonWindow(2));
}

TEST_F(StateTest, PaintedPixelsHaveTheColoursThatWereSet) {
    constexpr COLORREF Back = RGB(255, 224, 200);
    for (Widget* widget : {static_cast<Widget*>(parts->outer.get()), static_cast<Widget*>(parts->inner.get()),
                           static_cast<Widget*>(parts->useSystem.get())})
        widget->SetBackColor(Back);
    Activate();
    UpdateWindow(host);
    const auto pixel = [](HWND window, int x, int y) {
        const comkit::WindowDc dc(window);
        return GetPixel(dc.Get(), x, y);
    };
    RECT box{};
    GetClientRect(ButtonWindow(1), &box);
    EXPECT_EQ(pixel(ButtonWindow(0), 4, 30), Back);
    EXPECT_EQ(pixel(ButtonWindow(1), box.right - 2, box.bottom / 2), Back);
    parts->useSystem->SetBackColor(RGB(1, 2, 3));
    UpdateWindow(ButtonWindow(1));
    EXPECT_EQ(pixel(ButtonWindow(1), box.right - 2, box.bottom / 2), RGB(1, 2, 3));
}

TEST_F(StateTest, ThePictureWithoutWindowsIsThePictureWithThem) {
    parts->daylight->SetValue(1);
    parts->useSystem->SetEnabled(false);
    parts->calendar->SetMonthBackColor(RGB(200, 255, 200));
    parts->time->SetValue({{2026, 2, 14}, {10, 30, 0}});
    const RECT size = PixelSize();
    const auto picture = [&] {
        const comkit::WindowDc screen(nullptr);
        const comkit::UniqueMemoryDc dc(CreateCompatibleDC(screen.Get()));
        const comkit::UniqueBitmap bitmap(CreateCompatibleBitmap(screen.Get(), size.right, size.bottom));
        const comkit::GdiSelection selection(dc.Get(), bitmap.Get());
        parts->surface.Draw(dc.Get(), size);
        std::vector<COLORREF> pixels;
        for (int y = 0; y < size.bottom; ++y)
            for (int x = 0; x < size.right; ++x) pixels.push_back(GetPixel(dc.Get(), x, y));
        return pixels;
    };
    log.lines.clear();
    const std::vector<COLORREF> without = picture();
    EXPECT_EQ(log.lines, std::vector<std::string>{}) << "drawing tells nothing";
    EXPECT_EQ(parts->surface.Window(), nullptr);
    EXPECT_GT(std::count(without.begin(), without.end(), RGB(200, 255, 200)), 1000);
    Activate();
    EXPECT_TRUE(picture() == without);
    parts->daylight->SetValue(0);
    EXPECT_FALSE(picture() == without) << "the check mark shows";
}

}  // namespace

}  // namespace kiv::win32::test
