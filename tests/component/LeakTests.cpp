// What a control leaves behind: nothing that its bare native children would not leave too.
//
// The standing suite runs a few hundred cycles. KIV_LEAK_CYCLES sets another number, such as 10000.
#include <windows.h>

#include <commctrl.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "ControlFixture.h"

namespace component {
namespace {

using comkit::ComPtr;

struct Holdings {
    long heapBlocks = 0;
    long gdiObjects = 0;
};

long HeapBlocks() {
    std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr));
    heaps.resize(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
    long blocks = 0;
    for (const HANDLE heap : heaps) {
        HeapLock(heap);
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heap, &entry)) blocks += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0;
        HeapUnlock(heap);
    }
    return blocks;
}

/// GetGuiResources answers nothing in some environments: every handle value is tried instead.
long GdiObjects() {
    long objects = 0;
    for (ULONG_PTR handle = 1; handle <= 0xFFFF; ++handle)
        objects += GetObjectType(reinterpret_cast<HGDIOBJ>(handle)) != 0;
    return objects;
}

Holdings Count() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    return {HeapBlocks(), GdiObjects()};
}

/// What is gained by the cycles after the first hundred.
template <class Cycle>
Holdings Gain(int cycles, Cycle cycle) {
    for (int i = 0; i < 100; ++i) cycle();
    const Holdings before = Count();
    for (int i = 0; i < cycles; ++i) cycle();
    const Holdings after = Count();
    return {after.heapBlocks - before.heapBlocks, after.gdiObjects - before.gdiObjects};
}

int Cycles() {
    const char* text = std::getenv("KIV_LEAK_CYCLES");
    return text ? std::atoi(text) : 300;
}

/// The native windows that the control consists of, with nothing round them.
void MakeBareChildren(HWND parent, HFONT font) {
    struct Kind {
        const wchar_t* windowClass;
        DWORD style;
    };
    constexpr Kind kinds[] = {{WC_BUTTONW, BS_GROUPBOX}, {WC_BUTTONW, BS_AUTOCHECKBOX},
                              {WC_BUTTONW, BS_GROUPBOX}, {WC_BUTTONW, BS_AUTOCHECKBOX},
                              {MONTHCAL_CLASSW, 0},      {DATETIMEPICK_CLASSW, DTS_UPDOWN | DTS_TIMEFORMAT}};
    comkit::UniqueWindow frame(CreateWindowExW(0, L"STATIC", nullptr, WS_CHILD | WS_VISIBLE, 0, 0, 400, 300, parent,
                                               nullptr, GetModuleHandleW(nullptr), nullptr));
    for (const Kind& kind : kinds) {
        const HWND child = CreateWindowExW(0, kind.windowClass, L"text", WS_CHILD | WS_VISIBLE | kind.style, 10, 10,
                                           200, 150, frame.Get(), nullptr, GetModuleHandleW(nullptr), nullptr);
        SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    }
}

class Leaks : public ControlFixture {
protected:
    /// Creation, loading, activation with all windows, the end.
    void LiveOnce(bool active) {
        Place(true);
        const auto sink = AdviseEvents();
        ASSERT_EQ(S_OK, As<IPersistPropertyBag>()->Load(m_bag.Get(), nullptr));
        if (active) {
            ASSERT_EQ(S_OK, DoVerb(OLEIVERB_UIACTIVATE));
        }
        Put(L"Caption", u"another text");
        Invoke(Members(), L"DataLMObject", DISPATCH_PROPERTYGET, {});
        As<IOleObject>()->Close(OLECLOSE_NOSAVE);
        As<IOleObject>()->SetClientSite(nullptr);
        dispatch.Reset();
        control.Reset();
        site->calls.clear();
        ASSERT_EQ(S_OK, Server::Get().CanUnload());
    }
    void SetUp() override {
        m_bag->Put(L"Caption", u"loaded");
        m_bag->Put(L"DataVarName5", u"nvoMonth");
        m_bag->Put(L"Mode", 9);
    }

    ComPtr<TestBag> m_bag = comkit::MakeObject<TestBag>();
};

TEST_F(Leaks, ControlsThatNobodySawLeaveNothing) {
    const Holdings gain = Gain(Cycles(), [&] { LiveOnce(false); });
    EXPECT_EQ(0, gain.heapBlocks);
    EXPECT_EQ(0, gain.gdiObjects);
}

TEST_F(Leaks, ActiveControlsLeaveNoMoreThanTheirBareChildren) {
    const int cycles = Cycles();
    const Holdings ours = Gain(cycles, [&] { LiveOnce(true); });
    const comkit::UniqueFont font(CreateFontW(-11, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, 0, L"Tahoma"));
    const Holdings bare = Gain(cycles, [&] { MakeBareChildren(site->Window(), font.Get()); });
    std::printf("%d cycles: control %+ld heap blocks, %+ld GDI objects; bare children %+ld, %+ld\n", cycles,
                ours.heapBlocks, ours.gdiObjects, bare.heapBlocks, bare.gdiObjects);
    // A window system may hold a few blocks at the moment of counting, however many cycles have run.
    constexpr long Noise = 8;
    EXPECT_LE(ours.heapBlocks, std::max(bare.heapBlocks, 0L) + Noise);
    EXPECT_LE(ours.gdiObjects, std::max(bare.gdiObjects, 0L) + Noise);
    EXPECT_EQ(S_OK, Server::Get().CanUnload());
}

TEST_F(Leaks, AControlThatIsDroppedWithoutAGoodbyeLeavesNothing) {
    const Holdings gain = Gain(100, [&] {
        Place(true);
        DoVerb(OLEIVERB_INPLACEACTIVATE);
        As<IOleInPlaceObject>()->InPlaceDeactivate();
        dispatch.Reset();
        control.Reset();
        site->calls.clear();
    });
    EXPECT_LE(gain.heapBlocks, 8);
    EXPECT_EQ(S_OK, Server::Get().CanUnload());
}

}  // namespace
}  // namespace component
