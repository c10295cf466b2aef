// What a control leaves behind: nothing that its bare native children would not leave too.
//
// The standing suite runs a hundred cycles. KIV_LEAK_CYCLES sets another number, such as 10000.
#include <Vexa.h>
#include <windows.h>

#include <commctrl.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "ControlFixture.h"
#include "Holdings.h"
#include "InstalledSimulator.h"

namespace component {
namespace {

using comkit::ComPtr;

int Cycles() {
    const char* text = std::getenv("KIV_LEAK_CYCLES");
    return text ? std::atoi(text) : 100;
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

class LeakFixture : public ControlFixture {
protected:
    using ControlFixture::ControlFixture;

    /// Prints what so many lives gained, and expects neither windows nor handles among it.
    template <class Cycle>
    static Holdings GainOf(const char* lives, int cycles, Cycle cycle) {
        constexpr int FirstOnes = 50;
        for (int i = 0; i < FirstOnes; ++i) cycle();
        const long windows = Windows();
        const long handles = KernelHandles();
        const Holdings gain = Gain(cycles, cycle, 0);
        const long moreWindows = Windows() - windows;
        const long moreHandles = KernelHandles() - handles;
        std::printf("%d %s: %+ld heap blocks, %+ld drawing objects, %+ld windows, %+ld handles\n", cycles, lives,
                    gain.heapBlocks, gain.gdiObjects, moreWindows, moreHandles);
        EXPECT_LE(moreWindows, 0);
        EXPECT_LE(moreHandles, 0);
        return gain;
    }

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

using Leaks = LeakFixture;

class ShowLeaks : public LeakFixture {
protected:
    ShowLeaks() : LeakFixture(ShowClass) {}
};

TEST_F(ShowLeaks, NeitherUnseenNorInTheContainersWindowNorInOneOfItsOwnAnythingIsLeft) {
    struct Way {
        const char* name;
        bool active;
        bool windowless;
    };
    for (const Way& way :
         {Way{"show controls, unseen", false, false}, Way{"show controls in the container's window", true, true},
          Way{"show controls in windows of their own", true, false}}) {
        SCOPED_TRACE(way.name);
        site->offersNoWindow = way.windowless;
        const Holdings gain = GainOf(way.name, Cycles(), [&] { LiveOnce(way.active); });
        // A window system may hold a few blocks at the moment of counting, however many cycles have run.
        EXPECT_LE(gain.heapBlocks, way.active ? 8 : 0);
        EXPECT_LE(gain.gdiObjects, 0);
    }
}

TEST_F(Leaks, ControlsThatNobodySawLeaveNothing) {
    const Holdings gain = GainOf("set controls, unseen", Cycles(), [&] { LiveOnce(false); });
    EXPECT_EQ(0, gain.heapBlocks);
    EXPECT_EQ(0, gain.gdiObjects);
}

TEST_F(Leaks, ActiveControlsLeaveNoMoreThanTheirBareChildren) {
    const int cycles = Cycles();
    const Holdings ours = GainOf("set controls, active", cycles, [&] { LiveOnce(true); });
    const comkit::UniqueFont font(CreateFontW(-11, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, 0, L"Tahoma"));
    const Holdings bare =
        GainOf("times their bare children", cycles, [&] { MakeBareChildren(site->Window(), font.Get()); });
    // A window system may hold a few blocks at the moment of counting, however many cycles have run.
    constexpr long Noise = 8;
    EXPECT_LE(ours.heapBlocks, std::max(bare.heapBlocks, 0L) + Noise);
    EXPECT_LE(ours.gdiObjects, std::max(bare.gdiObjects, 0L) + Noise);
    EXPECT_EQ(S_OK, Server::Get().CanUnload());
}

// The framework's objects come and go with each control, and are asked for by the framework as often as it likes.
TEST_F(Leaks, HelpObjectAndCollectionOfElementsGoWithTheirControl) {
    const InstalledSimulator simulator;
    long listeners = 0;
    const Holdings gain = GainOf("set controls with help and elements", Cycles() / 3, [&] {
        Place(true);
        m_bag->entries.clear();
        for (int slot = 0; slot < 14; ++slot) m_bag->Put(L"DataVarName" + std::to_wstring(slot), u"name");
        ASSERT_EQ(S_OK, As<IPersistPropertyBag>()->Load(m_bag.Get(), nullptr));
        auto support = As<IVexaSupport>();
        ComPtr<IDispatch> help;
        ComPtr<IDispatch> elements;
        ASSERT_EQ(S_OK, support->get_VexaHelpObject(help.Put()));
        ASSERT_EQ(S_OK, support->get_VexaSubElements(elements.Put()));
        ASSERT_TRUE(help && elements);
        listeners += comkit::Call(*elements, L"Count").Get().lVal;
        comkit::Call(*help, L"FireWhatsThisHelpID", 21L);
        comkit::Call(*help, L"FireHelpContextID", 5L);
        site->userMode = false;
        As<IOleControl>()->OnAmbientPropertyChange(DISPID_AMBIENT_USERMODE);
        site->userMode = true;
        As<IOleControl>()->OnAmbientPropertyChange(DISPID_AMBIENT_USERMODE);
        ASSERT_EQ(S_OK, support->get_VexaHelpObject(help.Put()));
        support.Reset();
        elements.Reset();
        Remove();
        help.Reset();
        site->calls.clear();
        ASSERT_EQ(S_OK, Server::Get().CanUnload());
    });
    EXPECT_GT(listeners, 0) << "the collection had elements in it";
    EXPECT_EQ(0, gain.heapBlocks);
    EXPECT_EQ(0, gain.gdiObjects);
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
