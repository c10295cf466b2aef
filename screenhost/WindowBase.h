// A window of the host's own: its class, its procedure and the one guard round it.
#pragma once

#include <windows.h>

#include <string>

namespace screenhost {

class WindowBase {
public:
    WindowBase(const WindowBase&) = delete;
    WindowBase& operator=(const WindowBase&) = delete;
    virtual ~WindowBase();

    HWND Handle() const noexcept { return m_window; }

protected:
    WindowBase() = default;

    struct Style {
        const wchar_t* className;
        const wchar_t* title;
        DWORD style;
        DWORD extended;
        int background;  ///< system colour
        HMENU menu;
    };
    /// Throws TextError.
    void Create(const Style& style, HWND parent);
    void Destroy() noexcept;

    /// Messages for this window. Exceptions end here: the message counts as handled.
    virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam) noexcept;

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    HWND m_window = nullptr;
};

/// A standard child window. The parent owns it. Throws TextError.
HWND MakeChild(HWND parent, const wchar_t* className, const wchar_t* text, DWORD style, int id, HFONT font);

}  // namespace screenhost
