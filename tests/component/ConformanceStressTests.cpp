// Handlers that do what they like within an event: the control survives, leaks nothing and ends with the last value.
#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "ControlFixture.h"

namespace component {
namespace {

using comkit::ComPtr;

constexpr const wchar_t* UseSystem = L"&Use PC System Date/Time?";
constexpr const wchar_t* Daylight = L"&Automatically Adjust for Daylight Savings Time?";

class EventStress : public ControlFixture {
protected:
    void PlaceActive() {
        Place(true);
        Put(L"UsePCDateTime", false);
        ASSERT_EQ(S_OK, DoVerb(OLEIVERB_UIACTIVATE));
    }
    /// A user's input that raises each of the events 2 and 4 to 10 in turn, as long as there is a window for it.
    void UseEverything() {
        const ComPtr<IUnknown> alive = control;
        struct Input {
            const wchar_t* windowClass;
            const wchar_t* caption;
            UINT message;
            WPARAM param;
        };
        const Input inputs[] = {
            {L"Button", Daylight, WM_KEYDOWN, 'A'},   {L"Button", Daylight, WM_CHAR, 'a'},
            {L"Button", Daylight, WM_KEYUP, 'A'},     {L"Button", Daylight, WM_MOUSEMOVE, 0},
            {L"Button", Daylight, WM_RBUTTONDOWN, 0}, {L"Button", Daylight, WM_RBUTTONUP, 0},
            {L"Button", Daylight, BM_CLICK, 0},       {L"Button", UseSystem, BM_CLICK, 0},
            {L"Button", UseSystem, BM_CLICK, 0},      {L"SysMonthCal32", L"", WM_KEYDOWN, VK_RIGHT},
        };
        for (const Input& input : inputs) {
            const HWND window = control && Window() ? Child(input.windowClass, input.caption) : nullptr;
            if (window) SendMessageW(window, input.message, input.param, MAKELPARAM(4, 4));
        }
    }
};

TEST_F(EventStress, AHandlerMayDoAnythingInAnyEvent) {
    struct Deed {
        const char* name;
        std::function<void()> run;
    };
    DWORD* const cookie = &eventCookie;
    const Deed deeds[] = {
        {"unadvises itself", [&] { Unadvise(control.Get(), DIID___KivSetDateTime, *cookie); }},
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
    for (const DISPID event : {2, 4, 5, 6, 7, 8, 9, 10}) {
        for (const Deed& deed : deeds) {
            SCOPED_TRACE(testing::Message() << "in event " << event << " the handler " << deed.name);
            PlaceActive();
            const auto sink = AdviseEvents();
            int met = 0;
            sink->onEvent = [&](DISPID id, DISPPARAMS&, EXCEPINFO*) {
                if (id == event && control && ++met == 1) deed.run();
                return S_OK;
            };
            UseEverything();
            EXPECT_EQ(1, std::min(met, 1)) << "the event was never raised";
            Remove();
            EXPECT_EQ(nullptr, GetWindow(site->Window(), GW_CHILD));
            EXPECT_EQ(S_OK, Server::Get().CanUnload());
            site = comkit::MakeObject<RecordingSite>();
            ForgetRememberedChoice();
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
