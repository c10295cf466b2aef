#include "win32/CalendarLegibility.h"

#include <commctrl.h>

#include <array>
#include <optional>
#include <string>

#include "comkit/DecimalText.h"
#include "comkit/Handle.h"
#include "win32/OleColors.h"

namespace kiv::win32 {

namespace {

constexpr int DaysPerWeek = 7;
constexpr int WeeksShown = 6;
constexpr UINT CentredLine = DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_NOCLIP;

MCHITTESTINFO HitTest(HWND calendar, POINT at) {
    MCHITTESTINFO hit{};
    hit.cbSize = sizeof hit;
    hit.pt = at;
    SendMessageW(calendar, MCM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    return hit;
}

/// The first point below at that the calendar counts as the wanted part.
std::optional<MCHITTESTINFO> FindBelow(HWND calendar, POINT at, LONG bottom, UINT wanted) {
    for (; at.y < bottom; ++at.y) {
        const MCHITTESTINFO hit = HitTest(calendar, at);
        if ((hit.uHit & wanted) == wanted) return hit;
    }
    return std::nullopt;
}

/// Where the parts lie. Only a day answers with its rectangle; the row of weekdays stands above the first one.
struct Grid {
    LONG left;
    LONG weekdaysTop;
    LONG daysTop;
    LONG cellWidth;
    LONG cellHeight;

    RECT Weekday(int column) const noexcept {
        const LONG x = left + column * cellWidth;
        return {x, weekdaysTop, x + cellWidth, daysTop};
    }
    POINT MiddleOfDay(int cell) const noexcept {
        return {left + cell % DaysPerWeek * cellWidth + cellWidth / 2,
                daysTop + cell / DaysPerWeek * cellHeight + cellHeight / 2};
    }
};

std::optional<Grid> FindGrid(HWND calendar) {
    RECT client{};
    GetClientRect(calendar, &client);
    const auto weekday = FindBelow(calendar, {client.right / 2, 0}, client.bottom, MCHT_CALENDARDAY);
    if (!weekday) return std::nullopt;
    const auto day = FindBelow(calendar, weekday->pt, client.bottom, MCHT_CALENDARDATE);
    if (!day || IsRectEmpty(&day->rc)) return std::nullopt;
    const LONG width = day->rc.right - day->rc.left;
    return Grid{day->rc.left - day->iCol * width, weekday->pt.y, day->rc.top, width, day->rc.bottom - day->rc.top};
}

void DrawWeekdays(HWND calendar, HDC dc, const Grid& grid) {
    // The native days, and the system's names, count from Monday.
    const int first = LOWORD(SendMessageW(calendar, MCM_GETFIRSTDAYOFWEEK, 0, 0));
    for (int column = 0; column < DaysPerWeek; ++column) {
        std::array<wchar_t, 80> name{};
        GetLocaleInfoW(LOCALE_USER_DEFAULT,
                       LOCALE_SABBREVDAYNAME1 + static_cast<LCTYPE>((first + column) % DaysPerWeek), name.data(),
                       static_cast<int>(name.size()));
        RECT cell = grid.Weekday(column);
        DrawTextW(dc, name.data(), -1, &cell, CentredLine);
    }
}

void DrawChosenDay(HWND calendar, HDC dc, const Grid& grid, COLORREF color) {
    SYSTEMTIME chosen{};
    if (!SendMessageW(calendar, MCM_GETCURSEL, 0, reinterpret_cast<LPARAM>(&chosen))) return;
    for (int cell = 0; cell < DaysPerWeek * WeeksShown; ++cell) {
        const MCHITTESTINFO hit = HitTest(calendar, grid.MiddleOfDay(cell));
        if ((hit.uHit & MCHT_CALENDARDATE) != MCHT_CALENDARDATE || hit.st.wDay != chosen.wDay ||
            hit.st.wMonth != chosen.wMonth || hit.st.wYear != chosen.wYear)
            continue;
        RECT place = hit.rc;
        const std::wstring number = comkit::DecimalText(chosen.wDay);
        DrawTextW(dc, number.c_str(), -1, &place, CentredLine);
        FrameRect(dc, &place, BrushFor(dc, color));
        return;
    }
}

}  // namespace

void DrawHiddenParts(HWND calendar, HDC dc, const HiddenPartsColors& colors) {
    const auto grid = FindGrid(calendar);
    if (!grid) return;
    const auto font = reinterpret_cast<HFONT>(SendMessageW(calendar, WM_GETFONT, 0, 0));
    const comkit::GdiSelection selection(dc, font ? font : GetStockObject(DEFAULT_GUI_FONT));
    const int formerMode = SetBkMode(dc, TRANSPARENT);
    const COLORREF formerColor = SetTextColor(dc, colors.weekdays);
    DrawWeekdays(calendar, dc, *grid);
    SetTextColor(dc, colors.chosenDay);
    DrawChosenDay(calendar, dc, *grid, colors.chosenDay);
    SetTextColor(dc, formerColor);
    SetBkMode(dc, formerMode);
}

}  // namespace kiv::win32
