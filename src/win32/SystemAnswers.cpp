#include "win32/SystemAnswers.h"

#include <atomic>

#include "comkit/Handle.h"

namespace kiv::win32 {

namespace {

using GetDpiForWindowFunction = UINT(WINAPI*)(HWND);
using GetSystemMetricsForDpiFunction = int(WINAPI*)(int, UINT);

// Windows 10 has what is looked for; older systems have one resolution for all windows.
template <class Function>
Function FindInUser32(const char* name) noexcept {
    const FARPROC found = GetProcAddress(GetModuleHandleW(L"user32.dll"), name);
    return reinterpret_cast<Function>(reinterpret_cast<void*>(found));
}

int SystemDpiOf(HWND window) noexcept {
    static const auto getDpiForWindow = FindInUser32<GetDpiForWindowFunction>("GetDpiForWindow");
    if (window && getDpiForWindow) {
        if (const UINT dpi = getDpiForWindow(window)) return static_cast<int>(dpi);
    }
    // It stays for as long as the process runs.
    static std::atomic<int> screenDpi = 0;
    if (screenDpi <= 0) {
        const comkit::WindowDc screen(nullptr);
        screenDpi = GetDeviceCaps(screen.Get(), LOGPIXELSX);
    }
    return screenDpi > 0 ? screenDpi.load() : USER_DEFAULT_SCREEN_DPI;
}

bool SystemIsHighContrast() noexcept {
    HIGHCONTRASTW answer{};
    answer.cbSize = sizeof answer;
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof answer, &answer, 0) &&
           (answer.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

int SystemScrollBarWidthAt(int dpi) noexcept {
    static const auto getForDpi = FindInUser32<GetSystemMetricsForDpiFunction>("GetSystemMetricsForDpi");
    if (getForDpi) {
        if (const int width = getForDpi(SM_CXVSCROLL, static_cast<UINT>(dpi)); width > 0) return width;
    }
    // In the screen's pixels, of which there are as many to the inch as in every window.
    return MulDiv(GetSystemMetrics(SM_CXVSCROLL), dpi, SystemDpiOf(nullptr));
}

}  // namespace

SystemAnswers& SystemAnswers::Current() noexcept {
    static SystemAnswers answers{&SystemDpiOf, &SystemIsHighContrast, &SystemScrollBarWidthAt};
    return answers;
}

}  // namespace kiv::win32
