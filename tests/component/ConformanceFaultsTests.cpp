// A container that misbehaves in one callback at a time: it fails, hands out nothing, hands out nonsense, or calls back
// into the control. Whatever it does, the control stays whole and keeps its properties, and works again in a container
// that behaves.
#include <array>
#include <functional>
#include <initializer_list>

#include "ContainerFaultsFixture.h"
#include "tests/Effort.h"

namespace component {
namespace {

using comkit::Variant;

/// Every method of the site and the frame that the control calls.
const char* const Callbacks[] = {
    "SaveObject",          "GetMoniker",        "ShowObject",         "RequestNewObjectLayout", "GetWindow",
    "CanInPlaceActivate",  "OnInPlaceActivate", "OnUIActivate",       "GetWindowContext",       "OnUIDeactivate",
    "OnInPlaceDeactivate", "OnPosRectChange",   "GetExtendedControl", "TransformCoords",        "TranslateAccelerator",
    "OnFocus(1)",          "OnFocus(0)",        "ShowPropertyFrame",  "OnControlInfoChanged",   "Ambient",
    "SetActiveObject",     "SetBorderSpace"};

TEST_F(ContainerFaults, ACallbackThatFailsOrHandsOutNothingLeavesThePropertiesAsTheyWere) {
    Create();
    LiveThrough();
    const auto expected = Saved();
    End();
    constexpr int Always = INT_MAX;
    struct Way {
        HRESULT answer;
        int times;
    };
    constexpr Way ways[] = {{E_FAIL, Always},
                            {E_NOTIMPL, Always},
                            {E_OUTOFMEMORY, Always},
                            {E_UNEXPECTED, Always},
                            {RPC_E_DISCONNECTED, Always},
                            {S_FALSE, Always},
                            {S_OK, Always},
                            {E_FAIL, 1}};
    const kiv::Share share = kiv::OurShare();
    long cell = 0;
    for (const char* callback : Callbacks) {
        for (const Way& way : ways) {
            if (!share.Has(cell++)) continue;
            SCOPED_TRACE(testing::Message()
                         << callback << " answers " << std::hex << way.answer << (way.times == 1 ? ", once" : ""));
            Create();
            int met = 0;
            Misbehave(callback, [&] { return ++met <= way.times ? std::optional(way.answer) : std::nullopt; });
            LiveThrough();
            EXPECT_GT(met, 0) << "the control never called it";
            EXPECT_EQ(expected, Saved());
            EXPECT_EQ(nullptr, GetWindow(site->Window(), GW_CHILD));
            ExpectToWorkAgain();
            End();
        }
    }
}

TEST_F(ContainerFaults, AnActivationThatFailsOnceIsNoneAndTheNextOneIs) {
    for (const char* callback : {"CanInPlaceActivate", "OnInPlaceActivate", "GetWindow", "GetWindowContext"}) {
        SCOPED_TRACE(callback);
        Create();
        As<IOleObject>()->SetClientSite(site.Get());
        int met = 0;
        Misbehave(callback, [&] { return ++met == 1 ? std::optional<HRESULT>(E_FAIL) : std::nullopt; });
        EXPECT_TRUE(FAILED(DoVerb(OLEIVERB_UIACTIVATE)));
        EXPECT_EQ(S_OK, DoVerb(OLEIVERB_UIACTIVATE));
        EXPECT_TRUE(Child(L"SysMonthCal32"));
        EXPECT_TRUE(site->IsUiActive());
        ExpectToWorkAgain();
        End();
    }
}

TEST_F(ContainerFaults, ACallbackThatCallsBackIntoTheControlLeavesItWhole) {
    struct Deed {
        const char* name;
        std::function<void()> run;
    };
    const Deed deeds[] = {
        {"Close", [&] { As<IOleObject>()->Close(OLECLOSE_NOSAVE); }},
        {"Close and save", [&] { As<IOleObject>()->Close(OLECLOSE_SAVEIFDIRTY); }},
        {"SetClientSite(NULL)", [&] { As<IOleObject>()->SetClientSite(nullptr); }},
        {"InPlaceDeactivate", [&] { As<IOleInPlaceObject>()->InPlaceDeactivate(); }},
        {"UIDeactivate", [&] { As<IOleInPlaceObject>()->UIDeactivate(); }},
        {"DoVerb(UIACTIVATE)", [&] { DoVerb(OLEIVERB_UIACTIVATE); }},
        {"DoVerb(HIDE)", [&] { DoVerb(OLEIVERB_HIDE); }},
        {"off and on again",
         [&] {
             As<IOleInPlaceObject>()->InPlaceDeactivate();
             DoVerb(OLEIVERB_INPLACEACTIVATE);
         }},
        {"a higher time field", [&] { Set(L"TimeHeight", 900); }},
        {"a load", [&] { As<IPersistStreamInit>()->InitNew(); }},
        {"the ambient properties", [&] { As<IOleControl>()->OnAmbientPropertyChange(DISPID_UNKNOWN); }},
        {"another site",
         [&] {
             const auto other = comkit::MakeObject<RecordingSite>();
             As<IOleObject>()->SetClientSite(other.Get());
         }},
    };
    const kiv::Share share = kiv::OurShare();
    long cell = 0;
    for (const char* callback : Callbacks) {
        for (const Deed& deed : deeds) {
            if (!share.Has(cell++)) continue;
            SCOPED_TRACE(testing::Message() << callback << " does: " << deed.name);
            Create();
            int depth = 0;
            Misbehave(callback, [&]() -> std::optional<HRESULT> {
                if (depth > 0) return std::nullopt;
                ++depth;
                deed.run();
                --depth;
                return std::nullopt;
            });
            LiveThrough();
            EXPECT_EQ(nullptr, GetWindow(site->Window(), GW_CHILD));
            EXPECT_EQ(site->Count("OnInPlaceActivate"), site->Count("OnInPlaceDeactivate"));
            EXPECT_EQ(site->Count("OnUIActivate"), site->Count("OnUIDeactivate"));
            ExpectToWorkAgain();
            End();
        }
    }
}

TEST_F(ContainerFaults, TheLastReferenceMayGoInAnyCallbackOfAnActivation) {
    for (const char* callback :
         {"Ambient", "CanInPlaceActivate", "OnInPlaceActivate", "GetWindow", "GetWindowContext", "OnPosRectChange",
          "ShowObject", "OnControlInfoChanged", "OnUIActivate", "OnFocus(1)"}) {
        SCOPED_TRACE(callback);
        Create();
        site->hasFrame = false;  // a frame would hold the active object
        As<IOleObject>()->SetClientSite(site.Get());
        IOleObject* last = As<IOleObject>().Detach();
        int met = 0;
        Misbehave(callback, [&]() -> std::optional<HRESULT> {
            if (++met > 1) return std::nullopt;
            site->Attach(nullptr);
            dispatch.Reset();
            control.Reset();
            last->Release();
            return std::nullopt;
        });
        last->DoVerb(OLEIVERB_UIACTIVATE, nullptr, site.Get(), 0, site->Window(), &site->position);
        EXPECT_GT(met, 0) << "the control never called it";
        EXPECT_EQ(nullptr, GetWindow(site->Window(), GW_CHILD));
        EXPECT_EQ(S_OK, Server::Get().CanUnload()) << "something of the control still lives";
    }
}

TEST_F(ContainerFaults, AmbientPropertiesOfTheWrongTypeCountAsMissing) {
    const std::function<Variant()> values[] = {
        [] { return Variant(); },
        [] { return Variant(u"neither yes nor no"); },
        [] { return Variant(static_cast<IDispatch*>(nullptr)); },
        [] { return Variant(static_cast<IUnknown*>(nullptr)); },
        [] { return Variant(1e300); },
        [] { return Variant(static_cast<IUnknown*>(comkit::MakeObject<TestBag>().Get())); },
    };
    for (const auto& value : values) {
        for (const DISPID ambient : std::initializer_list<DISPID>{DISPID_AMBIENT_USERMODE, DISPID_AMBIENT_FONT,
                                                                  DISPID_AMBIENT_DISPLAYNAME, DISPID_AMBIENT_UIDEAD}) {
            SCOPED_TRACE(ambient);
            Create();
            site->extenderName.clear();
            site->onAmbient = [&](DISPID id, VARIANT& out) {
                if (id != ambient) return false;
                out = value().Detach();
                return true;
            };
            LiveThrough();
            EXPECT_EQ(L"kept", TextOf(L"Caption"));
            ExpectToWorkAgain();
            End();
        }
    }
}

TEST_F(ContainerFaults, InterfacesMayBeMissing) {
    struct Case {
        const IID& missing;
        bool canActivate;
    };
    const Case cases[] = {{IID_IOleInPlaceSite, false}, {IID_IOleControlSite, true}, {IID_IDispatch, true}};
    for (const Case& c : cases) {
        Create();
        site->missing = {c.missing};
        EXPECT_EQ(S_OK, As<IOleObject>()->SetClientSite(site.Get()));
        EXPECT_EQ(c.canActivate, SUCCEEDED(DoVerb(OLEIVERB_UIACTIVATE)));
        site->missing.clear();
        LiveThrough();
        site->missing = {c.missing};
        LiveThrough();
        EXPECT_EQ(L"kept", TextOf(L"Caption"));
        ExpectToWorkAgain();
        End();
    }
}

TEST_F(ContainerFaults, SinksThatFailChangeNothing) {
    for (const HRESULT answer : {E_FAIL, E_NOTIMPL, RPC_E_DISCONNECTED, DISP_E_EXCEPTION}) {
        SCOPED_TRACE(answer);
        Create();
        As<IOleObject>()->SetClientSite(site.Get());
        As<IPersistStreamInit>()->InitNew();
        const auto events = AdviseEvents();
        events->onEvent = [&](DISPID, DISPPARAMS&, EXCEPINFO*) { return answer; };
        const auto notified = AdviseNotifications();
        notified->onChanged = [&](DISPID) { return answer; };
        const auto healthy = AdviseNotifications();
        LiveThrough();
        EXPECT_EQ(L"kept", TextOf(L"Caption"));
        EXPECT_FALSE(notified->changed.empty());
        EXPECT_EQ(notified->changed, healthy->changed) << "a failing sink takes nothing from the next one";
        ExpectToWorkAgain();
        End();
    }
}

}  // namespace
}  // namespace component
