// The list of what happened, newest line at the bottom. Looks into the log whenever it is told to.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>

#include "screenhost/HostLog.h"

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
    void SetPlace(const RECT& place);
    LRESULT OnNotify(NMHDR& header);

private:
    std::size_t NumberOf(int item) const noexcept { return m_shownFrom + static_cast<std::size_t>(item); }
    void FillCell(LVITEMW& item);
    LRESULT OnDraw(NMLVCUSTOMDRAW& draw) const;

    const HostLog& m_log;
    HWND m_list = nullptr;
    std::size_t m_shownFrom = 0;
    std::size_t m_shownTo = 0;
    std::wstring m_cell;
};

}  // namespace screenhost
