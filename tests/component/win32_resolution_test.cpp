// The set control's children at the five resolutions from 100 % to 300 %, as windows: inside one another, apart from
// one another, and large enough for what they show.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "comkit/Bstr.h"
#include "common/KivDateTimeResID.h"
#include "common/ResourceStrings.h"
#include "setcontrol/SetControlLayout.h"
#include "win32/OleFont.h"
#include "win32_SurfaceFixture.h"
#include "win32_TestAnswers.h"

namespace kiv::win32::test {

namespace {

struct Look {
    int dpi;
    std::int32_t mode;  ///< 0 date and time, 1 date, 2 time
    bool showDst;
    bool showSeconds;
    bool is12Hour;
    std::int64_t fontSize;
    Twips containerWidth;  ///< what the container gives; the control grows where it needs more
};

void PrintTo(const Look& look, std::ostream* out) {
    *out << look.dpi << " dpi, mode " << look.mode << ", dst " << look.showDst << ", seconds " << look.showSeconds
         << ", 12-hour " << look.is12Hour << ", size " << look.fontSize;
}

std::vector<Look> AllLooks() {
    // A control without a calendar is no wider than its time field: there the container gives the captions their room.
    constexpr Twips RoomForCaptions = 6600;
    std::vector<Look> all;
    for (const int dpi : {96, 120, 144, 192, 288}) {
        for (const std::int64_t size : {82500, 120000}) {
            for (const std::int32_t mode : {0, 1, 2})
                for (const bool full : {false, true})
                    all.push_back({dpi, mode, full, full, full, size, full || mode == 2 ? RoomForCaptions : 0});
        }
    }
    return all;
}

class ResolutionTest : public SurfaceTest, public testing::WithParamInterface<Look> {
protected:
    void SetUp() override {
        TestAnswers::UseDpi(GetParam().dpi);
        SurfaceTest::SetUp();
        Arrange(GetParam());
        Activate();
    }

    void Arrange(const Look& look) {
        const FontPtr font = MakeFont({.name = u"MS Shell Dlg", .size = look.fontSize, .weight = 400});
        parts->surface.SetFont(font);
        for (Widget* const w : Children()) w->SetFont(font);
        const auto text = [&](std::int16_t first) { return GetResString(first); };
        parts->useSystem->SetCaption(text(static_cast<std::int16_t>(residUseSystem + look.mode)));
        parts->inner->SetCaption(text(static_cast<std::int16_t>(residCustom + look.mode)));
        parts->daylight->SetCaption(text(residUseDaylightSavings));
        const bool showTime = look.mode != 1;
        const bool showDate = look.mode != 2;
        parts->daylight->SetVisible(look.showDst && showTime);
        parts->calendar->SetVisible(showDate);
        parts->time->SetVisible(showTime);
        parts->time->SetFormat(TimeFieldFormat(look.showSeconds, look.is12Hour));
        parts->time->SetValue({{2024, 12, 28}, {23, 58, 58}});

        const std::u16string sample = TimeSampleText(look.showSeconds, look.is12Hour);
        const Twips lineHeight = parts->surface.MeasureText(u"09AaGgTtYyWw").height;
        // The least height is made for small fonts; for a larger one a designer gives the field more.
        const Twips timeHeight = std::max(MinTimeHeight, lineHeight + 4 * parts->surface.TwipsPerPixel());
        const Rect calendar = parts->calendar->Bounds();
        const SetControlPlaces p = ComputeSetControlLayout(
            {.mode = look.mode,
             .showDate = showDate,
             .showTime = showTime,
             .showDst = look.showDst,
             .control = {look.containerWidth, 0},
             .calendar = {calendar.width, calendar.height},
             .time = {0, timeHeight},
             .textHeight = lineHeight,
             .timeTextWidth = parts->surface.MeasureText(sample).width,
             .spinWidth = parts->surface.ScrollBarWidthPixels() * parts->surface.TwipsPerPixel()});
        parts->outer->SetBounds(p.fraOuter);
        parts->useSystem->SetBounds(p.chkUseSystem);
        parts->inner->SetBounds(p.fraInner);
        parts->daylight->SetBounds(p.chkUseDaylightSavings);
        parts->calendar->SetBounds(p.mvDate);
        parts->time->SetBounds(p.dtpTimeSP);
        parts->surface.SetSize(p.control);
    }
    std::vector<Widget*> Children() const {
        return {parts->outer.get(),    parts->useSystem.get(), parts->inner.get(),
                parts->daylight.get(), parts->calendar.get(),  parts->time.get()};
    }
    static bool IsShown(HWND window) { return (GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) != 0; }
    static RECT PlaceIn(HWND parent, HWND window) {
        RECT place{};
        GetWindowRect(window, &place);
        MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
        return place;
    }
    static SIZE TextSize(HWND window, std::wstring_view text) {
        const comkit::WindowDc dc(window);
        const comkit::GdiSelection selection(dc.Get(), reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
        SIZE size{};
        GetTextExtentPoint32W(dc.Get(), text.data(), static_cast<int>(text.size()), &size);
        return size;
    }
    static std::wstring ShownCaption(HWND window) {
        wchar_t text[128] = {};
        GetWindowTextW(window, text, 128);
        std::wstring shown(text);
        std::erase(shown, L'&');
        return shown;
    }
    static std::vector<HWND> ShownChildrenOf(HWND parent) {
        std::vector<HWND> all;
        for (HWND w = GetWindow(parent, GW_CHILD); w; w = GetWindow(w, GW_HWNDNEXT))
            if (IsShown(w)) all.push_back(w);
        return all;
    }
    static void ExpectApartAndInside(HWND parent) {
        RECT inside{};
        GetClientRect(parent, &inside);
        const std::vector<HWND> children = ShownChildrenOf(parent);
        for (std::size_t i = 0; i < children.size(); ++i) {
            const RECT place = PlaceIn(parent, children[i]);
            RECT common{};
            IntersectRect(&common, &place, &inside);
            EXPECT_TRUE(EqualRect(&common, &place)) << "a child reaches beyond its parent";
            for (std::size_t j = i + 1; j < children.size(); ++j) {
                const RECT other = PlaceIn(parent, children[j]);
                EXPECT_FALSE(IntersectRect(&common, &place, &other)) << "children " << i << " and " << j;
            }
        }
    }

    TestAnswers answers;
};

TEST_P(ResolutionTest, ChildrenLieApartInsideTheirParentsAndCoverNoFrame) {
    const HWND surface = parts->surface.Window();
    const HWND outer = ButtonWindow(0);
    const HWND inner = ButtonWindow(2);
    for (const HWND parent : {surface, outer, inner}) ExpectApartAndInside(parent);
    // The caption of a frame takes one line at its top; below, left and right of the children its edge shows.
    for (const HWND frame : {outer, inner}) {
        RECT inside{};
        GetClientRect(frame, &inside);
        const SIZE caption = TextSize(frame, ShownCaption(frame));
        for (const HWND child : ShownChildrenOf(frame)) {
            const RECT place = PlaceIn(frame, child);
            EXPECT_GE(place.top, caption.cy);
            EXPECT_GE(place.left, 2);
            EXPECT_LE(place.right, inside.right - 2);
            EXPECT_LE(place.bottom, inside.bottom - 2);
        }
    }
}

TEST_P(ResolutionTest, EveryTextAndTheCalendarFitTheirWindows) {
    const int dpi = GetParam().dpi;
    for (const int box : {1, 3}) {
        const HWND window = ButtonWindow(box);
        if (!IsShown(window)) continue;
        const SIZE text = TextSize(window, ShownCaption(window));
        const RECT place = PlaceIn(GetParent(window), window);
        // The box itself and the gap behind it.
        const int mark = MulDiv(13 + 4, dpi, 96);
        EXPECT_GE(place.right - place.left, text.cx + mark) << testing::PrintToString(ShownCaption(window));
        EXPECT_GE(place.bottom - place.top, text.cy);
    }
    for (const int frame : {0, 2}) {
        const HWND window = ButtonWindow(frame);
        const RECT place = PlaceIn(GetParent(window), window);
        EXPECT_GE(place.right - place.left, TextSize(window, ShownCaption(window)).cx + 2 * MulDiv(9, dpi, 96));
    }
    if (const HWND calendar = CalendarWindow(); IsShown(calendar)) {
        RECT needed{};
        SendMessageW(calendar, MCM_GETMINREQRECT, 0, reinterpret_cast<LPARAM>(&needed));
        const RECT place = PlaceIn(GetParent(calendar), calendar);
        // An edge that falls between two pixels goes to the nearer one.
        EXPECT_GE(place.right - place.left, needed.right - needed.left - 1);
        EXPECT_GE(place.bottom - place.top, needed.bottom - needed.top - 1);
    }
    if (const HWND time = TimeWindow(); IsShown(time)) {
        RECT inside{};
        GetClientRect(time, &inside);
        RECT spin{};
        GetWindowRect(SpinWindow(), &spin);
        wchar_t shown[64] = {};
        GetWindowTextW(time, shown, 64);
        const SIZE text = TextSize(time, shown);
        EXPECT_GE(inside.right - (spin.right - spin.left), text.cx) << testing::PrintToString(std::wstring(shown));
        EXPECT_GE(inside.bottom, text.cy);
    }
}

INSTANTIATE_TEST_SUITE_P(From100To300Percent, ResolutionTest, testing::ValuesIn(AllLooks()));

class ResolutionChangeTest : public SurfaceTest {
protected:
    TestAnswers answers;
};

TEST_F(ResolutionChangeTest, AScrollBarIsAsWideAsTheWindowsResolutionMakesIt) {
    constexpr UINT DpiChangedAfterParent = 0x02E3;
    TestAnswers::UseDpi(96);
    Activate();
    const int width = parts->surface.ScrollBarWidthPixels();
    EXPECT_GE(width, 8);
    for (const int dpi : {120, 144, 192, 288}) {
        TestAnswers::UseDpi(dpi);
        SendMessageW(parts->surface.Window(), DpiChangedAfterParent, 0, 0);
        EXPECT_NEAR(parts->surface.ScrollBarWidthPixels(), MulDiv(width, dpi, 96), 1) << dpi;
    }
}

TEST_F(ResolutionChangeTest, WindowsFollowTheirContainerToAnotherScreen) {
    constexpr UINT DpiChangedAfterParent = 0x02E3;
    TestAnswers::UseDpi(96);
    Activate();
    const auto height = [](HWND window) {
        LOGFONTW font{};
        GetObjectW(reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)), sizeof font, &font);
        return -font.lfHeight;
    };
    const RECT before = [&] {
        RECT r{};
        GetWindowRect(ButtonWindow(1), &r);
        return r;
    }();
    const LONG small = height(ButtonWindow(1));
    TestAnswers::UseDpi(192);
    SendMessageW(parts->surface.Window(), DpiChangedAfterParent, 0, 0);
    RECT after{};
    GetWindowRect(ButtonWindow(1), &after);
    EXPECT_EQ(parts->surface.Dpi(), 192);
    EXPECT_EQ(height(ButtonWindow(1)), 2 * small);
    EXPECT_NEAR(after.right - after.left, 2 * (before.right - before.left), 1);
    EXPECT_EQ(log.TakeCount("resize"), 1u) << "the control lays itself out anew";
}

}  // namespace

}  // namespace kiv::win32::test
