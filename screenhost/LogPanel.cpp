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

std::size_t LogPanel::AllLines() const noexcept {
    return m_log.End() - std::max(m_clearedTo, m_log.Begin());
}

void LogPanel::Refresh() {
    const std::size_t begin = std::max(m_clearedTo, m_log.Begin());
    const std::size_t before = m_rows.size();
    const int lastVisible = ListView_GetTopIndex(m_list) + ListView_GetCountPerPage(m_list);
    while (!m_rows.empty() && m_rows.front() < begin) m_rows.pop_front();
    const bool hasMoved = m_rows.size() != before;
    const std::size_t kept = m_rows.size();
    for (std::size_t number = std::max(begin, m_seenTo); number < m_log.End(); ++number)
        if (m_filter.Matches(m_log.At(number).source, m_log.At(number).text)) m_rows.push_back(number);
    m_seenTo = m_log.End();
    if (!hasMoved && m_rows.size() == kept) return;
    const int count = static_cast<int>(m_rows.size());
    ListView_SetItemCountEx(m_list, count, LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL);
    if (hasMoved) InvalidateRect(m_list, nullptr, FALSE);
    if (count > 0 && lastVisible >= static_cast<int>(before)) ListView_EnsureVisible(m_list, count - 1, FALSE);
}

void LogPanel::Clear() {
    m_clearedTo = m_log.End();
    m_rows.clear();
    ListView_SetItemCountEx(m_list, 0, 0);
}

void LogPanel::SetFilter(std::string_view text) {
    m_filter = LogFilter(text);
    m_rows.clear();
    m_seenTo = 0;
    ListView_SetItemState(m_list, -1, 0, LVIS_SELECTED);
    ListView_SetItemCountEx(m_list, 0, 0);
    Refresh();
}

std::string LogPanel::CopiedText() const {
    std::string text;
    const bool isSelection = ListView_GetSelectedCount(m_list) > 0;
    for (int row = 0; row < static_cast<int>(m_rows.size()); ++row) {
        const LogEntry* const entry = EntryAt(row);
        if (!entry || (isSelection && !ListView_GetItemState(m_list, row, LVIS_SELECTED))) continue;
        (((((text += entry->time) += '\t') += entry->source) += '\t') += entry->text) += "\r\n";
    }
    return text;
}

void LogPanel::SelectAll() {
    ListView_SetItemState(m_list, -1, LVIS_SELECTED, LVIS_SELECTED);
}

void LogPanel::OnKey(WORD key) {
    if (GetKeyState(VK_CONTROL) >= 0) return;
    if (key == 'A') SelectAll();
    if (key == 'C' && onCopy) onCopy();
}

const LogEntry* LogPanel::EntryAt(int row) const {
    const auto index = static_cast<std::size_t>(row);
    if (row < 0 || index >= m_rows.size()) return nullptr;
    const std::size_t number = m_rows[index];
    return number < m_log.Begin() || number >= m_log.End() ? nullptr : &m_log.At(number);
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
    else if (header.code == LVN_KEYDOWN)
        OnKey(reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey);
    else if (header.code == NM_CUSTOMDRAW)
        return OnDraw(reinterpret_cast<NMLVCUSTOMDRAW&>(header));
    return 0;
}

void LogPanel::FillCell(LVITEMW& item) {
    const LogEntry* const entry = EntryAt(item.iItem);
    if (!(item.mask & LVIF_TEXT) || !entry) return;
    const int column = item.iSubItem;
    m_cell = Wide(column == TimeColumn ? entry->time : column == SourceColumn ? entry->source : entry->text);
    item.pszText = m_cell.data();
}

LRESULT LogPanel::OnDraw(NMLVCUSTOMDRAW& draw) const {
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
    const LogEntry* const entry = EntryAt(static_cast<int>(draw.nmcd.dwItemSpec));
    if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT || !entry) return 0;
    const std::string& source = entry->source;
    if (source == "error") draw.clrText = ErrorColor;
    if (source == "device") draw.clrText = DeviceColor;
    return CDRF_DODEFAULT;
}

}  // namespace screenhost
