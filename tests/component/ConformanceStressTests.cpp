// Handlers that do what they like within an event: the control survives, leaks nothing and ends with the last value.
#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "ControlFixture.h"
#include "Holdings.h"

namespace component {
namespace {

using comkit::ComPtr;

constexpr const wchar_t* UseSystem = L"&Use PC System Date/Time?";
constexpr const wchar_t* Daylight = L"&Automatically Adjust for Daylight Savings Time?";

/// A user's input that raises one of the events, and the child that gets it.
struct Input {
    const wchar_t* windowClass;
    const wchar_t* caption;
    WPARAM param;
    UINT message;
    DISPID event;
};

// Event 1 is never raised.
const Input Inputs[] = {
    {L"Button", Daylight, 0, BM_CLICK, 2},
    {L"SysMonthCal32", L"", MK_LBUTTON, WM_LBUTTONDBLCLK, 3},
    {L"Button", L"Custom Date/Time", MK_LBUTTON, WM_LBUTTONDBLCLK, 3},
    {L"Button", Daylight, 'A', WM_KEYUP, 4},
    {L"Button", Daylight, 'a', WM_CHAR, 5},
    {L"Button", Daylight, 'A', WM_KEYDOWN, 6},
    {L"Button", Daylight, 0, WM_RBUTTONDOWN, 7},
    {L"Button", Daylight, 0, WM_MOUSEMOVE, 8},
    {L"Button", Daylight, 0, WM_RBUTTONUP, 9},
    {L"Button", UseSystem, 0, BM_CLICK, 10},
};

struct Deed {
    const char* name;
    std::function<void()> run;
};

class EventStress : public ControlFixture {
protected:
    void PlaceActive() {
        Place(true);
        Put(L"UsePCDateTime", false);
        ASSERT_EQ(S_OK, DoVerb(OLEIVERB_UIACTIVATE));
    }
    /// One of the inputs, as long as there is a window for it.
    void Use(const Input& input) {
        const ComPtr<IUnknown> alive = control;
        // The device's date is asked for when the box is let go of.
        const int times = input.event == 10 ? 2 : 1;
        for (int i = 0; i < times; ++i) {
            const HWND window = control && Window() ? Child(input.windowClass, input.caption) : nullptr;
            if (window) SendMessageW(window, input.message, input.param, MAKELPARAM(4, 4));
        }
    }
    /// A control with so many sinks, of which the one in the middle does the deed once; to its end.
    void LiveOnce(const Input& input, int sinkCount, const std::function<HRESULT()>& deed) {
        PlaceActive();
        std::vector<ComPtr<EventSink>> sinks;
        std::vector<int> heard(static_cast<std::size_t>(sinkCount));
        for (int i = 0; i < sinkCount; ++i) {
            sinks.push_back(AdviseEvents());
            if (i == sinkCount / 2) m_deedCookie = eventCookie;
            int& count = heard[static_cast<std::size_t>(i)];
            const bool acts = i == sinkCount / 2;
            sinks.back()->onEvent = [&, acts](DISPID id, DISPPARAMS&, EXCEPINFO*) {
                return id == input.event && ++count == 1 && acts ? deed() : S_OK;
            };
        }
        Use(input);
        for (const int count : heard) EXPECT_GE(count, 1) << "the event was never raised";
        Remove();
        EXPECT_EQ(nullptr, GetWindow(site->Window(), GW_CHILD));
        EXPECT_EQ(S_OK, Server::Get().CanUnload());
        ForgetRememberedChoice();
        site->calls.clear();
    }
    std::vector<Deed> Deeds() {
        return {
            {"unadvises itself", [&] { Unadvise(control.Get(), DIID___KivSetDateTime, m_deedCookie); }},
            {"sets a property", [&] { Put(L"Caption", u"from the handler"); }},
            {"sets what raises events", [&] { Put(L"UsePCDateTime", true); }},
            {"resizes",
             [&] {
                 const RECT larger{0, 0, 640, 560};
                 As<IOleInPlaceObject>()->SetObjectRects(&larger, &larger);
             }},
            {"closes", [&] { As<IOleObject>()->Close(OLECLOSE_NOSAVE); }},
            {"hides", [&] { DoVerb(OLEIVERB_HIDE); }},
            {"takes the site away", [&] { As<IOleObject>()->SetClientSite(nullptr); }},
            {"ends the windows and makes them anew",
             [&] {
                 As<IOleInPlaceObject>()->InPlaceDeactivate();
                 DoVerb(OLEIVERB_INPLACEACTIVATE);
             }},
            {"lets go of the last reference", [&] { Remove(); }},
        };
    }

    DWORD m_deedCookie = 0;
};

// Few cycles, counted exactly: what one of them left behind would be there as often as it ran.
constexpr int Cycles = 6;

TEST_F(EventStress, AHandlerMayDoAnythingInAnyEventAndNothingIsLeftBehind) {
    for (const Input& input : Inputs) {
        for (const Deed& deed : Deeds()) {
            for (const int sinkCount : {1, 3}) {
                SCOPED_TRACE(testing::Message()
                             << "in event " << input.event << " one of " << sinkCount << " handlers " << deed.name);
                const auto cycle = [&] {
                    LiveOnce(input, sinkCount, [&] {
                        deed.run();
                        return S_OK;
                    });
                };
                const Holdings gain = Gain(Cycles, cycle, 2);
                EXPECT_LT(gain.heapBlocks, Cycles);
            }
        }
        site = comkit::MakeObject<RecordingSite>();
    }
}

TEST_F(EventStress, WithoutSinksAndWithFailingOnesEachEventPasses) {
    for (const Input& input : Inputs) {
        SCOPED_TRACE(input.event);
        EXPECT_LT(Gain(
                      Cycles, [&] { LiveOnce(input, 0, nullptr); }, 2)
                      .heapBlocks,
                  Cycles);
        for (const HRESULT answer : {E_FAIL, E_NOTIMPL, DISP_E_EXCEPTION, RPC_E_DISCONNECTED}) {
            SCOPED_TRACE(answer);
            const auto cycle = [&] { LiveOnce(input, 3, [&] { return answer; }); };
            EXPECT_LT(Gain(Cycles, cycle, 2).heapBlocks, Cycles);
        }
    }
}

TEST_F(EventStress, TheLastOfManyValuesWinsWhateverHandlersPut) {
    PlaceActive();
    const auto sink = AdviseNotifications();
    int left = 50;
    sink->onChanged = [&](DISPID id) {
        if (id == DISPID_CAPTION && left > 0) Put(L"Caption", (L"value " + std::to_wstring(--left)).c_str());
        return S_OK;
    };
    Put(L"Caption", u"value 50");
    EXPECT_EQ(0, left);
    EXPECT_EQ(L"value 0", TextOf(L"Caption"));
    EXPECT_EQ(51, std::count(sink->changed.begin(), sink->changed.end(), DISPID_CAPTION));
}

TEST_F(EventStress, ManySinksHearEachEventOnceAndAllAreLetGo) {
    PlaceActive();
    std::vector<ComPtr<EventSink>> sinks;
    sinks.reserve(200);
    for (int i = 0; i < 200; ++i) sinks.push_back(AdviseEvents());
    SendMessageW(Child(L"Button", Daylight), BM_CLICK, 0, 0);
    for (const auto& sink : sinks) EXPECT_EQ(1, std::count(sink->events.begin(), sink->events.end(), DISPID{2}));
    Remove();
    for (const auto& sink : sinks) {
        sink->AddRef();
        EXPECT_EQ(1u, sink->Release());
    }
}

}  // namespace
}  // namespace component
