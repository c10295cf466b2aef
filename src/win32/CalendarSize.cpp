#include "win32/CalendarSize.h"

#include <commctrl.h>
#include <uxtheme.h>

#include <algorithm>
#include <mutex>
#include <vector>

#include "comkit/Errors.h"
#include "comkit/Handle.h"
#include "comkit/SlimLock.h"
#include "win32/CommonControls.h"
#include "win32/GdiFont.h"
#include "win32/ModuleInstance.h"

namespace kiv::win32 {

namespace {

struct MeasuredSize {
    FontTraits font;
    int dpi;
    bool showToday;
    SIZE size;
};

constexpr std::size_t MostKept = 32;

SIZE Measure(const FontTraits& font, int dpi, bool showToday) {
    RegisterDateClasses();
    const comkit::UniqueWindow calendar(CreateWindowExW(0, MONTHCAL_CLASSW, L"",
                                                        WS_POPUP | (showToday ? 0u : MCS_NOTODAY), 0, 0, 0, 0, nullptr,
                                                        nullptr, ModuleInstance(), nullptr));
    if (!calendar) throw comkit::ComError(comkit::LastErrorResult());
    SetWindowTheme(calendar.Get(), L"", L"");
    const GdiFontPtr handle = FindGdiFont(font, dpi);
    SendMessageW(calendar.Get(), WM_SETFONT, reinterpret_cast<WPARAM>(handle->Handle()), FALSE);
    RECT needed{};
    SendMessageW(calendar.Get(), MCM_GETMINREQRECT, 0, reinterpret_cast<LPARAM>(&needed));
    // The today line may be wider than the month above it.
    const auto today = showToday ? static_cast<LONG>(SendMessageW(calendar.Get(), MCM_GETMAXTODAYWIDTH, 0, 0)) : 0;
    return {std::max(needed.right - needed.left, today), needed.bottom - needed.top};
}

}  // namespace

SIZE CalendarSize(const FontTraits& font, int dpi, bool showToday) {
    static comkit::SlimLock lock;
    static std::vector<MeasuredSize> known;
    {
        const std::lock_guard guard(lock);
        for (const MeasuredSize& entry : known)
            if (entry.dpi == dpi && entry.showToday == showToday && entry.font == font) return entry.size;
    }
    // Not under the lock: making a window may run foreign code.
    const SIZE size = Measure(font, dpi, showToday);
    const std::lock_guard guard(lock);
    if (known.size() == MostKept) known.erase(known.begin());
    known.push_back({font, dpi, showToday, size});
    return size;
}

}  // namespace kiv::win32
