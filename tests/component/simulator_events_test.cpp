// Values and help settings arriving as events, through the message loop and the connection points.
#include <gtest/gtest.h>

#include <optional>

#include "simulator_support.h"

namespace simulator_test {
namespace {

using comkit::Call;
using comkit::ComPtr;
using comkit::Put;
using comkit::Variant;

class SimulatorEvents : public testing::Test {
protected:
    SimulatorEvents() {
        Call(*device, L"Reset");
        Put(*device, L"PollInterval", 10L);
    }
    void TearDown() override { Call(*device, L"Reset"); }

    ComPtr<IDispatch> MakeHidden() {
        auto hidden = server.Make(L"VexaBaseControls.VexaHidden");
        Put(*hidden, L"ElementCount", 8L);
        return hidden;
    }
    static void Bind(IDispatch& hidden, std::int16_t index, const char16_t* name) {
        const auto element = ObjectIn(Call(*ObjectIn(Call(hidden, L"Element", index)), L"DataElement"));
        Call(*ObjectIn(Call(*element, L"DataDefinition")), L"WriteDefinition", 1L, 1L, name, u"");
    }
    EventSink::Handler Collect(std::string& arrived) {
        return [&arrived](DISPID event, const std::vector<Variant>& arguments) {
            ASSERT_EQ(event, 1);
            ASSERT_EQ(arguments.size(), 2u);
            EXPECT_EQ(arguments[0].Type(), VT_I2);
            EXPECT_EQ(arguments[1].Type(), VT_BSTR);
            arrived += Text(arguments[0]) + "=" + Text(arguments[1]) + " ";
        };
    }

    SimulatorServer server;
    ComPtr<IDispatch> device = server.Make(L"VexaSimulator.Device");
};

TEST_F(SimulatorEvents, ValuesArriveThroughTheMessageLoopOnly) {
    const auto hidden = MakeHidden();
    std::string arrived;
    Connect(hidden.Get(), ValueEvents, Collect(arrived));
    Bind(*hidden, 2, u"nvoHour");
    Bind(*hidden, 7, u"nvoYear");
    Sleep(50);
    EXPECT_EQ(arrived, "");
    EXPECT_TRUE(PumpUntil([&] { return !arrived.empty(); }));
    EXPECT_EQ(arrived, "2=14 7=2001 ");
    arrived.clear();
    EXPECT_FALSE(PumpUntil([&] { return !arrived.empty(); }, std::chrono::milliseconds(150)));
    Put(*device, L"Value", u"nvoHour", u"3");
    EXPECT_TRUE(PumpUntil([&] { return !arrived.empty(); }));
    EXPECT_EQ(arrived, "2=3 ");
    arrived.clear();
    Call(*device, L"Refresh");
    EXPECT_EQ(arrived, "2=3 7=2001 ") << "a refresh delivers at once";
}

TEST_F(SimulatorEvents, ANewPollIntervalHoldsAtOnce) {
    Put(*device, L"PollInterval", 60000L);
    const auto hidden = MakeHidden();
    std::string arrived;
    Connect(hidden.Get(), ValueEvents, Collect(arrived));
    Bind(*hidden, 7, u"nvoYear");
    EXPECT_FALSE(PumpUntil([&] { return !arrived.empty(); }, std::chrono::milliseconds(150)));
    Put(*device, L"PollInterval", 10L);
    EXPECT_TRUE(PumpUntil([&] { return !arrived.empty(); }));
}

TEST_F(SimulatorEvents, EverySinkGetsEveryValueUntilItLeaves) {
    const auto hidden = MakeHidden();
    const auto point = FindPoint(hidden.Get(), ValueEvents);
    std::string first;
    std::string second;
    DWORD leaving = 0;
    leaving = Connect(hidden.Get(), ValueEvents, [&](DISPID event, std::vector<Variant> arguments) {
        Collect(first)(event, std::move(arguments));
        point->Unadvise(leaving);
    });
    Connect(hidden.Get(), ValueEvents, Collect(second));
    Bind(*hidden, 2, u"nvoHour");
    Bind(*hidden, 7, u"nvoYear");
    Call(*device, L"Refresh");
    EXPECT_EQ(first, "2=14 ");
    EXPECT_EQ(second, "2=14 7=2001 ");
    EXPECT_EQ(point->Unadvise(leaving), CONNECT_E_NOCONNECTION);
}

TEST_F(SimulatorEvents, AHiddenControlMayBeDroppedInsideItsOwnEvent) {
    ComPtr<IDispatch> hidden = MakeHidden();
    const auto other = MakeHidden();
    int calls = 0;
    std::string arrived;
    Connect(hidden.Get(), ValueEvents, [&](DISPID, const std::vector<Variant>&) {
        ++calls;
        hidden.Reset();
    });
    Connect(other.Get(), ValueEvents, Collect(arrived));
    for (std::int16_t index = 2; index < 5; ++index) Bind(*hidden, index, u"nvoHour");
    Bind(*other, 7, u"nvoYear");
    EXPECT_TRUE(PumpUntil([&] { return !arrived.empty(); }));
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(arrived, "7=2001 ");
    EXPECT_EQ(Text(Call(*device, L"HiddenControlCount")), "1");
}

TEST_F(SimulatorEvents, TheLastHiddenControlTakesTheTimerWithItAndLeavesNothingToUnload) {
    const auto messageWindows = [] {
        int count = 0;
        for (HWND window = nullptr; (window = FindWindowExW(HWND_MESSAGE, window, L"Static", nullptr)) != nullptr;) {
            DWORD process = 0;
            GetWindowThreadProcessId(window, &process);
            if (process == GetCurrentProcessId()) ++count;
        }
        return count;
    };
    const int before = messageWindows();
    auto hidden = MakeHidden();
    auto second = MakeHidden();
    EXPECT_EQ(messageWindows(), before + 1);
    std::optional<bool> unloadable;
    Connect(second.Get(), ValueEvents, [&](DISPID, const std::vector<Variant>&) {
        second.Reset();
        device.Reset();
        unloadable = server.CanUnload();
    });
    Bind(*second, 2, u"nvoHour");
    hidden.Reset();
    EXPECT_TRUE(PumpUntil([&] { return unloadable.has_value(); }));
    EXPECT_FALSE(*unloadable) << "the server's own code is still running";
    EXPECT_EQ(messageWindows(), before);
    EXPECT_TRUE(server.CanUnload());
    device = server.Make(L"VexaSimulator.Device");
}

TEST_F(SimulatorEvents, ElementsThatOutliveTheirHiddenControlAreReadableAndSilent) {
    auto hidden = MakeHidden();
    std::string arrived;
    Connect(hidden.Get(), ValueEvents, Collect(arrived));
    Bind(*hidden, 2, u"nvoHour");
    const auto element = ObjectIn(Call(*hidden, L"Element", 2L));
    hidden.Reset();
    Call(*device, L"Refresh");
    EXPECT_EQ(arrived, "");
    EXPECT_TRUE(ObjectIn(Call(*element, L"DataElement")));
}

TEST_F(SimulatorEvents, ManyHiddenControlsOneAfterTheOtherLeaveNoMemoryBehind) {
    std::string arrived;
    const auto live = [&] {
        const auto hidden = MakeHidden();
        const auto help = server.Make(L"KivUserServicesObjs.HelpDefinition");
        const auto collection = server.Make(L"KivUserServicesObjs.Collection");
        Connect(hidden.Get(), ValueEvents, Collect(arrived));
        for (std::int16_t index = 2; index < 8; ++index) {
            Bind(*hidden, index, u"nvoHour");
            Call(*collection, L"Add", ObjectIn(Call(*hidden, L"Element", index)).Get());
        }
    };
    const auto blocksAfter = [&](int cycles) {
        for (int i = 0; i < cycles; ++i) live();
        Call(*device, L"ClearLog");
        return CountHeapBlocks();
    };
    const std::size_t before = blocksAfter(50);
    EXPECT_EQ(blocksAfter(300), before);
}

TEST_F(SimulatorEvents, HelpDefinitionRaisesItsFourEvents) {
    const auto help = server.Make(L"KivUserServicesObjs.HelpDefinition");
    std::string arrived;
    Connect(help.Get(), HelpEvents, [&](DISPID event, const std::vector<Variant>& arguments) {
        ASSERT_EQ(arguments.size(), 1u);
        arrived += std::to_string(event) + "=";
        if ((arguments[0].Type() & VT_ARRAY) != 0) {
            LONG upper = 0;
            SafeArrayGetUBound(arguments[0].Get().parray, 1, &upper);
            arrived += "array to " + std::to_string(upper) + " ";
        } else {
            arrived += Text(arguments[0]) + " ";
        }
    });
    Variant ids;
    SAFEARRAYBOUND bound{6, 1};
    ids.Get().vt = VT_ARRAY | VT_VARIANT;
    ids.Get().parray = SafeArrayCreate(VT_VARIANT, 1, &bound);
    VARIANT reference{};
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = &ids.Get();
    Call(*help, L"FireHelpContextID", -7L);
    Call(*help, L"FireHelpFile", u"C:\\Help\\vexa.chm");
    Call(*help, L"FireWhatsThisHelpID", 12L);
    comkit::InvokeWith(*help, comkit::DispIdOf(*help, L"FireWhatsThisHelpIDs"), DISPATCH_METHOD,
                       std::array<VARIANT, 1>{reference});
    EXPECT_THROW(Call(*help, L"FireWhatsThisHelpIDs", 5L), comkit::ComError);
    EXPECT_EQ(arrived, "1=-7 2=C:\\Help\\vexa.chm 3=12 4=array to 6 ");
}

TEST_F(SimulatorEvents, ConnectionPointsAreListedAndOthersRefused) {
    const auto hidden = MakeHidden();
    const auto container = ComPtr<IConnectionPointContainer>::From(hidden.Get());
    ASSERT_TRUE(container);
    ComPtr<IConnectionPoint> point;
    EXPECT_EQ(container->FindConnectionPoint(HelpEvents, point.Put()), CONNECT_E_NOCONNECTION);
    ComPtr<IEnumConnectionPoints> points;
    ASSERT_EQ(container->EnumConnectionPoints(points.Put()), S_OK);
    ULONG fetched = 0;
    ASSERT_EQ(points->Next(1, point.Put(), &fetched), S_OK);
    IID iid;
    EXPECT_EQ(point->GetConnectionInterface(&iid), S_OK);
    EXPECT_TRUE(IsEqualIID(iid, ValueEvents));
    ComPtr<IConnectionPoint> none;
    EXPECT_EQ(points->Next(1, none.Put(), &fetched), S_FALSE);
}

}  // namespace
}  // namespace simulator_test
