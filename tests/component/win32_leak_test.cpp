// Heap blocks and GDI objects stay the same however often windows come and go.
//
// What the native children lose by themselves is measured beside: under Wine each month calendar that is given a font
// loses one.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <vector>

#include "win32/OleFont.h"
#include "win32_SurfaceFixture.h"

namespace kiv::win32::test {

namespace {

constexpr int WarmUp = 15;
constexpr int Cycles = 60;

struct Resources {
    long heapBlocks = 0;
    long gdiObjects = 0;
};

// GetGuiResources answers 0 under Wine: every possible handle is asked for its type.
long CountGdiObjects() {
    long count = 0;
    for (UINT_PTR handle = 1; handle < 0x10000; ++handle)
        if (GetObjectType(reinterpret_cast<HGDIOBJ>(handle))) ++count;
    return count;
}

long CountHeapBlocks() {
    HANDLE heaps[64];
    const DWORD count = std::min<DWORD>(GetProcessHeaps(64, heaps), 64);
    long blocks = 0;
    for (DWORD i = 0; i < count; ++i) {
        HeapLock(heaps[i]);
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heaps[i], &entry))
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) ++blocks;
        HeapUnlock(heaps[i]);
    }
    return blocks;
}

Resources Count() {
    return {CountHeapBlocks(), CountGdiObjects()};
}

template <class Body>
Resources GrowthOver(int cycles, Body&& body) {
    for (int i = 0; i < WarmUp; ++i) body();
    const Resources before = Count();
    for (int i = 0; i < cycles; ++i) body();
    const Resources after = Count();
    return {after.heapBlocks - before.heapBlocks, after.gdiObjects - before.gdiObjects};
}

class LeakTest : public SurfaceTest {
protected:
    /// The same native windows by themselves, with a font each.
    void OpenBareChildren() const {
        LOGFONTW description{};
        description.lfHeight = -11;
        lstrcpyW(description.lfFaceName, L"MS Shell Dlg");
        const comkit::UniqueFont font(CreateFontIndirectW(&description));
        const comkit::UniqueWindow outer(Bare(L"BUTTON", BS_GROUPBOX, host));
        for (const wchar_t* name : {L"BUTTON", L"BUTTON", L"BUTTON", L"SysMonthCal32", L"SysDateTimePick32"}) {
            const HWND child = Bare(name, lstrcmpW(name, L"SysDateTimePick32") == 0 ? DTS_TIMEFORMAT : 0, outer.Get());
            SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font.Get()), FALSE);
        }
        ShowWindow(outer.Get(), SW_SHOWNA);
        Pump();
    }
    static HWND Bare(const wchar_t* className, DWORD style, HWND parent) {
        return CreateWindowExW(0, className, L"", style | WS_CHILD, 0, 0, 200, 150, parent, nullptr, nullptr, nullptr);
    }
    void ExpectNoMoreThanBare(const char* what, const Resources& growth) {
        const Resources bare = GrowthOver(Cycles, [this] { OpenBareChildren(); });
        // A queue or a cache of the system may take a block once; a leak takes one each time.
        constexpr long Once = Cycles / 6;
        EXPECT_LE(growth.heapBlocks, std::max(bare.heapBlocks, 0l) + Once) << what;
        EXPECT_LE(growth.gdiObjects, std::max(bare.gdiObjects, 0l) + 2) << what;
        RecordProperty(std::string(what) + " heap",
                       std::to_string(growth.heapBlocks) + " bare " + std::to_string(bare.heapBlocks));
        RecordProperty(std::string(what) + " gdi",
                       std::to_string(growth.gdiObjects) + " bare " + std::to_string(bare.gdiObjects));
    }
};

TEST_F(LeakTest, OpeningAndClosingTheWindowsLosesNothing) {
    ExpectNoMoreThanBare("windows", GrowthOver(Cycles, [this] {
                             parts->surface.Activate(host, PixelSize());
                             Pump();
                             parts->surface.Deactivate();
                             log.lines.clear();
                         }));
}

TEST_F(LeakTest, MakingAndUsingAControlLosesNothing) {
    ExpectNoMoreThanBare("control", GrowthOver(Cycles, [this] {
                             parts = std::make_unique<Arrangement>(log);
                             parts->useSystem->SetFont(MakeFont(DefaultFontTraits()));
                             parts->surface.Activate(host, PixelSize());
                             Click(ButtonWindow(1), 5, 5);
                             Click(CalendarWindow(), 60, 80);
                             Key(TimeWindow(), VK_UP);
                             Pump();
                             parts.reset();
                             log.lines.clear();
                         }));
}

TEST_F(LeakTest, ChangingColoursAndGivingTheSameFontAgainLosesNothing) {
    Activate();
    const FontPtr font = MakeFont(DefaultFontTraits());
    OleColor color = 0;
    const Resources growth = GrowthOver(Cycles, [&] {
        color = (color + 0x010305) & 0xFFFFFF;
        for (Widget* widget :
             {static_cast<Widget*>(&parts->surface), static_cast<Widget*>(parts->inner.get()),
              static_cast<Widget*>(parts->daylight.get()), static_cast<Widget*>(parts->calendar.get())}) {
            widget->SetBackColor(color);
            widget->SetForeColor(color ^ 0xFFFFFF);
            widget->SetFont(font);
        }
        parts->calendar->SetTitleBackColor(color);
        UpdateWindow(host);
        Pump();
    });
    EXPECT_LE(growth.heapBlocks, Cycles / 6);
    EXPECT_LE(growth.gdiObjects, 2);
}

}  // namespace

}  // namespace kiv::win32::test
