// A device context to paint a window in: the one that a print message brings, or the window's own between BeginPaint
// and EndPaint.
#pragma once

#include <windows.h>

#include "win32/NativeWindow.h"

namespace kiv::win32 {

class PaintScope {
public:
    /// message must be WM_PAINT or WM_PRINTCLIENT.
    explicit PaintScope(const Message& message) noexcept
        : m_window(message.window),
          m_given(reinterpret_cast<HDC>(message.wParam)),
          m_dc(m_given ? m_given : BeginPaint(m_window, &m_paint)) {}
    PaintScope(const PaintScope&) = delete;
    PaintScope& operator=(const PaintScope&) = delete;
    ~PaintScope() {
        if (!m_given) EndPaint(m_window, &m_paint);
    }
    HDC Dc() const noexcept { return m_dc; }

private:
    HWND m_window;
    HDC m_given;
    PAINTSTRUCT m_paint{};
    HDC m_dc;
};

}  // namespace kiv::win32
