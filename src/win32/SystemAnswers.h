// What the surfaces ask the system about the screen. Nobody can change either for one process, so tests put other
// answers in their place.
#pragma once

#include <windows.h>

namespace kiv::win32 {

struct SystemAnswers {
    /// Dots per inch of a window; a null window means the screen.
    int (*dpiOf)(HWND window) noexcept;
    /// The user wants the high contrast colours, whatever a program would choose.
    bool (*isHighContrast)() noexcept;
    /// Width of a vertical scroll bar, in pixels of a window with so many dots per inch.
    int (*scrollBarWidthAt)(int dpi) noexcept;

    /// The answers in force: the system's own, as long as nobody puts others here.
    static SystemAnswers& Current() noexcept;
};

}  // namespace kiv::win32
