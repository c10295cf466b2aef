#include "screenhost/LogPanel.h"

#include <algorithm>
#include <array>

#include "screenhost/Units.h"
#include "screenhost/WideText.h"
#include "screenhost/WindowBase.h"

namespace screenhost {

namespace {

enum Column { TimeColumn, SourceColumn, TextColumn };

struct ColumnStyle {
    const wchar_t* title;
    int format;
    int width;
};

constexpr std::array<ColumnStyle, 3> Columns{
    {{L"Time", LVCFMT_LEFT, 70}, {L"From", LVCFMT_LEFT, 70}, {L"What happened", LVCFMT_LEFT, 400}}};

constexpr COLORREF ErrorColor = RGB(0xB0, 0x10, 0x10);
constexpr COLORREF DeviceColor = RGB(0x10, 0x50, 0x90);

}  // namespace

LogPanel::LogPanel(HWND parent, int id, HFONT font, const HostLog& log) : m_log(log) {
    m_list =
        MakeChild(parent, WC_LISTVIEWW, L"Events and device log",
                  WS_BORDER | WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER, id, font);
    ListView_SetExtendedListViewStyle(m_list, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
    for (int i = 0; i < static_cast<int>(Columns.size()); ++i) {
        const ColumnStyle& style = Columns[static_cast<std::size_t>(i)];
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_FMT | LVCF_WIDTH;
        column.fmt = style.format;
        column.cx = Scaled(style.width);
        column.pszText = const_cast<wchar_t*>(style.title);  // read only, the declaration lacks a const
        SendMessageW(m_list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&column));
    }
}

void LogPanel::Refresh() {
    const std::size_t from = std::max(m_shownFrom, m_log.Begin());
    if (from == m_shownFrom && m_log.End() == m_shownTo) return;
    const int before = ListView_GetItemCount(m_list);
    const int lastVisible = ListView_GetTopIndex(m_list) + ListView_GetCountPerPage(m_list);
    m_shownFrom = from;
    m_shownTo = m_log.End();
    const int count = static_cast<int>(m_shownTo - m_shownFrom);
    ListView_SetItemCountEx(m_list, count, LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL);
    if (count > 0 && lastVisible >= before) ListView_EnsureVisible(m_list, count - 1, FALSE);
}

void LogPanel::Clear() {
    m_shownFrom = m_log.End();
    m_shownTo = m_shownFrom;
    ListView_SetItemCountEx(m_list, 0, 0);
}

void LogPanel::SetPlace(const RECT& place) {
    SetWindowPos(m_list, nullptr, place.left, place.top, WidthOf(place), HeightOf(place),
                 SWP_NOZORDER | SWP_NOACTIVATE);
    RECT client{};
    GetClientRect(m_list, &client);
    const int taken = ListView_GetColumnWidth(m_list, TimeColumn) + ListView_GetColumnWidth(m_list, SourceColumn);
    // Room for the scroll bar, whether it is there or not, so that the column does not jump.
    const int bar = HeightOf(client) < HeightOf(place) / 2 ? 0 : GetSystemMetrics(SM_CXVSCROLL);
    ListView_SetColumnWidth(m_list, TextColumn, std::max(Scaled(200), WidthOf(place) - taken - bar - 4));
    if (const int count = ListView_GetItemCount(m_list)) ListView_EnsureVisible(m_list, count - 1, FALSE);
}

LRESULT LogPanel::OnNotify(NMHDR& header) {
    if (header.code == LVN_GETDISPINFOW)
        FillCell(reinterpret_cast<NMLVDISPINFOW&>(header).item);
    else if (header.code == NM_CUSTOMDRAW)
        return OnDraw(reinterpret_cast<NMLVCUSTOMDRAW&>(header));
    return 0;
}

void LogPanel::FillCell(LVITEMW& item) {
    const std::size_t number = NumberOf(item.iItem);
    if (!(item.mask & LVIF_TEXT) || number < m_log.Begin() || number >= m_log.End()) return;
    const LogEntry& entry = m_log.At(number);
    m_cell = Wide(item.iSubItem == TimeColumn ? entry.time : item.iSubItem == SourceColumn ? entry.source : entry.text);
    item.pszText = m_cell.data();
}

LRESULT LogPanel::OnDraw(NMLVCUSTOMDRAW& draw) const {
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
    const std::size_t number = NumberOf(static_cast<int>(draw.nmcd.dwItemSpec));
    if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT || number < m_log.Begin() || number >= m_log.End()) return 0;
    const std::string& source = m_log.At(number).source;
    if (source == "error") draw.clrText = ErrorColor;
    if (source == "device") draw.clrText = DeviceColor;
    return CDRF_DODEFAULT;
}

}  // namespace screenhost
