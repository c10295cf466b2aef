#include "win32/SystemAnswers.h"

#include "comkit/Handle.h"

namespace kiv::win32 {

namespace {

using GetDpiForWindowFunction = UINT(WINAPI*)(HWND);

// Windows 10 has it; older systems have one resolution for all windows.
GetDpiForWindowFunction FindGetDpiForWindow() noexcept {
    const FARPROC found = GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow");
    return reinterpret_cast<GetDpiForWindowFunction>(reinterpret_cast<void*>(found));
}

int SystemDpiOf(HWND window) noexcept {
    static const GetDpiForWindowFunction getDpiForWindow = FindGetDpiForWindow();
    if (window && getDpiForWindow) {
        if (const UINT dpi = getDpiForWindow(window)) return static_cast<int>(dpi);
    }
    const comkit::WindowDc screen(nullptr);
    const int dpi = GetDeviceCaps(screen.Get(), LOGPIXELSX);
    return dpi > 0 ? dpi : USER_DEFAULT_SCREEN_DPI;
}

bool SystemIsHighContrast() noexcept {
    HIGHCONTRASTW answer{};
    answer.cbSize = sizeof answer;
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof answer, &answer, 0) &&
           (answer.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

}  // namespace

SystemAnswers& SystemAnswers::Current() noexcept {
    static SystemAnswers answers{&SystemDpiOf, &SystemIsHighContrast};
    return answers;
}

}  // namespace kiv::win32
