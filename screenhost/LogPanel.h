// The list of what happened, newest line at the bottom. Looks into the log whenever it is told to.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <deque>
#include <functional>
#include <string>

#include "screenhost/HostLog.h"
#include "screenhost/LogFilter.h"

namespace screenhost {

class LogPanel {
public:
    /// The parent passes its WM_NOTIFY messages on to OnNotify. Throws TextError.
    LogPanel(HWND parent, int id, HFONT font, const HostLog& log);

    HWND Handle() const noexcept { return m_list; }
    /// Shows what is new, and stays at the end if it was there.
    void Refresh();
    /// Hides the lines so far; the log keeps them.
    void Clear();
    /// Shows the lines that contain every word.
    void SetFilter(std::string_view text);
    bool IsFiltered() const noexcept { return !m_filter.IsEmpty(); }
    std::size_t ShownLines() const noexcept { return m_rows.size(); }
    std::size_t AllLines() const noexcept;
    /// The selected lines, all that are shown where none is: time, source and text with tabs between them.
    std::string CopiedText() const;
    void SelectAll();
    /// Ctrl+C on the list.
    std::function<void()> onCopy;
    void SetPlace(const RECT& place);
    LRESULT OnNotify(NMHDR& header);

private:
    /// The line in a row; null for one that is no longer kept.
    const LogEntry* EntryAt(int row) const;
    void OnKey(WORD key);
    void FillCell(LVITEMW& item);
    LRESULT OnDraw(NMLVCUSTOMDRAW& draw) const;

    const HostLog& m_log;
    HWND m_list = nullptr;
    LogFilter m_filter;
    std::deque<std::size_t> m_rows;  ///< numbers of the lines that are shown
    std::size_t m_clearedTo = 0;
    std::size_t m_seenTo = 0;
    std::wstring m_cell;
};

}  // namespace screenhost
