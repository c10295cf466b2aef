#include "screenhost/PalettePanel.h"

#include <commctrl.h>

#include <algorithm>

#include "comkit/Handle.h"
#include "screenhost/TextCursor.h"
#include "screenhost/Units.h"
#include "screenhost/WideText.h"
#include "screenhost/WindowBase.h"

namespace screenhost {

namespace {

constexpr int PanelWidth = 196;
constexpr int RowHeight = 24;
constexpr int PictureSize = 16;
constexpr int RowGap = 6;
constexpr int TitleHeight = 22;
constexpr const wchar_t* PointerTitle = L"Pointer";

void DrawPicture(HDC dc, const RECT& place, HBITMAP bitmap) {
    BITMAP shape{};
    GetObjectW(bitmap, sizeof(shape), &shape);
    const comkit::UniqueMemoryDc memory(CreateCompatibleDC(dc));
    const comkit::GdiSelection selection(memory.Get(), bitmap);
    GdiTransparentBlt(dc, static_cast<int>(place.left), static_cast<int>(place.top), WidthOf(place), HeightOf(place),
                      memory.Get(), 0, 0, static_cast<int>(shape.bmWidth), static_cast<int>(shape.bmHeight),
                      GetPixel(memory.Get(), 0, 0));
}

/// The arrow of the mouse, in the colour of the text.
void DrawPointer(HDC dc, const RECT& place, COLORREF color) {
    constexpr POINT Shape[] = {{3, 0}, {3, 12}, {6, 9}, {8, 14}, {10, 13}, {8, 8}, {12, 8}};
    POINT points[std::size(Shape)];
    std::ranges::transform(Shape, points, [&](POINT p) {
        return POINT{place.left + Scaled(static_cast<int>(p.x)), place.top + Scaled(static_cast<int>(p.y))};
    });
    const comkit::UniqueBrush brush(CreateSolidBrush(color));
    const comkit::GdiSelection fill(dc, brush.Get());
    const comkit::GdiSelection line(dc, GetStockObject(NULL_PEN));
    Polygon(dc, points, std::size(points));
}

/// A class without a picture: a small empty box.
void DrawBox(HDC dc, RECT place, COLORREF color) {
    InflateRect(&place, -Scaled(2), -Scaled(3));
    const comkit::UniqueBrush brush(CreateSolidBrush(color));
    FrameRect(dc, &place, brush.Get());
}

}  // namespace

PalettePanel::PalettePanel(HWND parent, int id, HFONT font) : m_font(font) {
    m_title = MakeChild(parent, WC_STATICW, L"Controls", SS_LEFT | SS_CENTERIMAGE, id + 1, font);
    m_list = MakeChild(parent, WC_LISTBOXW, L"",
                       WS_BORDER | WS_TABSTOP | WS_GROUP | WS_VSCROLL | LBS_OWNERDRAWFIXED | LBS_NOTIFY |
                           LBS_NOINTEGRALHEIGHT | LBS_HASSTRINGS,
                       id, font);
    SendMessageW(m_list, LB_SETITEMHEIGHT, 0, Scaled(RowHeight));
    SetClasses({});
}

void PalettePanel::SetClasses(std::vector<PaletteClass> classes) {
    m_classes = std::move(classes);
    SendMessageW(m_list, LB_RESETCONTENT, 0, 0);
    SendMessageW(m_list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(PointerTitle));
    for (const PaletteClass& each : m_classes)
        SendMessageW(m_list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Wide(each.title).c_str()));
    ChoosePointer();
}

const PaletteClass* PalettePanel::Chosen() const {
    const auto row = static_cast<std::size_t>(SendMessageW(m_list, LB_GETCURSEL, 0, 0));
    return row >= 1 && row <= m_classes.size() ? &m_classes[row - 1] : nullptr;
}

void PalettePanel::ChoosePointer() {
    SendMessageW(m_list, LB_SETCURSEL, 0, 0);
}

int PalettePanel::RowOf(const std::string& name) const {
    if (EqualWithoutCase(name, Narrow(std::wstring_view(PointerTitle)))) return 0;
    const auto found = std::ranges::find_if(m_classes, [&](const PaletteClass& each) {
        return EqualWithoutCase(each.title, name) || EqualWithoutCase(each.progId, name);
    });
    if (found == m_classes.end()) throw TextError("there is no \"" + name + "\" among the controls");
    return static_cast<int>(found - m_classes.begin()) + 1;
}

void PalettePanel::Show(bool visible) {
    for (HWND window : {m_title, m_list}) ShowWindow(window, visible ? SW_SHOWNA : SW_HIDE);
}

int PalettePanel::Width() const {
    return Scaled(PanelWidth);
}

void PalettePanel::SetPlace(const RECT& place) {
    const int title = Scaled(TitleHeight);
    SetWindowPos(m_title, nullptr, place.left, place.top, WidthOf(place), title, SWP_NOZORDER | SWP_NOACTIVATE);
    SetWindowPos(m_list, nullptr, place.left, place.top + title, WidthOf(place), std::max(0, HeightOf(place) - title),
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void PalettePanel::OnDraw(const DRAWITEMSTRUCT& item) const {
    if (item.itemID > m_classes.size()) return;
    const bool selected = (item.itemState & ODS_SELECTED) != 0;
    const COLORREF color = GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT);
    FillRect(item.hDC, &item.rcItem, GetSysColorBrush(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    const int size = Scaled(PictureSize);
    RECT picture{};
    picture.left = item.rcItem.left + Scaled(RowGap);
    picture.top = item.rcItem.top + (HeightOf(item.rcItem) - size) / 2;
    picture.right = picture.left + size;
    picture.bottom = picture.top + size;
    const PaletteClass* const shown = item.itemID == 0 ? nullptr : &m_classes[item.itemID - 1];
    if (!shown)
        DrawPointer(item.hDC, picture, color);
    else if (shown->picture)
        DrawPicture(item.hDC, picture, shown->picture.Get());
    else
        DrawBox(item.hDC, picture, color);
    RECT text = item.rcItem;
    text.left = picture.right + Scaled(RowGap);
    text.right -= Scaled(2);
    const std::wstring title = shown ? Wide(shown->title) : PointerTitle;
    const comkit::GdiSelection font(item.hDC, m_font);
    SetBkMode(item.hDC, TRANSPARENT);
    SetTextColor(item.hDC, color);
    DrawTextW(item.hDC, title.c_str(), -1, &text, DT_SINGLELINE | DT_VCENTER | DT_LEFT | DT_END_ELLIPSIS | DT_NOPREFIX);
    if (item.itemState & ODS_FOCUS) DrawFocusRect(item.hDC, &item.rcItem);
}

void PalettePanel::OnCommand(int notification) const {
    if (notification == LBN_SELCHANGE && onChoice) onChoice();
    if (notification == LBN_DBLCLK && onPlaceNow && Chosen()) onPlaceNow();
}

}  // namespace screenhost
