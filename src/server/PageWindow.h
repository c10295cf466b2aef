// The window of a property page: a dialog laid out from the page's description, within a property frame.
//
// The page holds the state of its fields; the window shows it and hands on what the user does. Any of the latter may
// end the window.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <cstddef>
#include <exception>

#include "comkit/Handle.h"
#include "pages/PropertyPage.h"

namespace kiv::server {

class PageWindow final {
public:
    /// Hidden at first. owner keeps the page alive while the user's doings are handed on; both outlive the window.
    /// Throws comkit::ComError, and what keeps a field from being shown.
    PageWindow(PropertyPage& page, IUnknown& owner, HWND parent);
    PageWindow(const PageWindow&) = delete;
    PageWindow& operator=(const PageWindow&) = delete;
    ~PageWindow();

    /// What a frame has to leave for any page, in pixels.
    static SIZE NormalSize();

    HWND Handle() const noexcept { return m_window.Get(); }
    void Move(const RECT& place) const noexcept;
    void ShowField(const PageField& field);
    void FocusField(const PageField& field);
    /// True where the page has used the key; false leaves it to the frame.
    bool TranslateKey(MSG& message);

private:
    static INT_PTR CALLBACK Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) noexcept;
    static LRESULT CALLBACK BoxProcedure(HWND box, UINT id, WPARAM wParam, LPARAM lParam, UINT_PTR index,
                                         DWORD_PTR self) noexcept;
    void OnInit(HWND window);
    void Leave() const noexcept;
    void OnNotify(std::size_t index, WORD code);
    /// A character for a text box of numbers; 0 where it is swallowed.
    WPARAM Filter(std::size_t index, WPARAM character);
    HWND ControlOf(const PageField& field) const noexcept;
    void ShowEntries(HWND list, const PageField& field);
    void SetEnabled(HWND control, bool enabled);
    bool HasAccessKey(wchar_t character) const;
    /// Tab on the last field, or shifted on the first: the focus leaves the page.
    bool LeavesWithTab(bool back) const noexcept;
    bool IsListOpen() const noexcept;

    PropertyPage& m_page;
    IUnknown& m_owner;
    comkit::UniqueWindow m_window;
    HWND m_dialog = nullptr;       ///< known while the window is still being made
    bool m_bShowing = false;       ///< what the fields notify is our own doing
    std::exception_ptr m_failure;  ///< while the window was being made
};

}  // namespace kiv::server
