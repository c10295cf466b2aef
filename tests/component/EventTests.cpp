// Connection points, events and change notifications.
#include <algorithm>
#include <map>

#include "ControlFixture.h"

namespace component {
namespace {

using comkit::ComPtr;
using comkit::Variant;

constexpr DISPID Click = 2;
constexpr DISPID GetDeviceDateTime = 10;

class Events : public ControlFixture {
protected:
    /// A user's click on the box that follows the PC's clock.
    void ClickUseSystem() { SendMessageW(Child(L"Button", L"&Use PC System Date/Time?"), BM_CLICK, 0, 0); }
    void PlaceActive() {
        Place(true);
        ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
        ASSERT_TRUE(Child(L"Button", L"&Use PC System Date/Time?"));
    }
};

TEST_F(Events, TheContainerOfConnectionPointsOffersBothSets) {
    Place(false);
    const auto container = As<IConnectionPointContainer>();
    ComPtr<IEnumConnectionPoints> points;
    ASSERT_EQ(S_OK, container->EnumConnectionPoints(points.Put()));
    IConnectionPoint* found[3] = {};
    ULONG fetched = 99;
    EXPECT_EQ(S_FALSE, points->Next(3, found, &fetched));
    EXPECT_EQ(2u, fetched);
    for (ULONG i = 0; i < fetched; ++i) {
        const auto point = ComPtr<IConnectionPoint>::Adopt(found[i]);
        IID iid{};
        EXPECT_EQ(S_OK, point->GetConnectionInterface(&iid));
        ComPtr<IConnectionPoint> same;
        EXPECT_EQ(S_OK, container->FindConnectionPoint(iid, same.Put()));
        EXPECT_EQ(point, same);
        ComPtr<IConnectionPointContainer> back;
        EXPECT_EQ(S_OK, point->GetConnectionPointContainer(back.Put()));
        EXPECT_EQ(container, back);
    }
    ComPtr<IConnectionPoint> none;
    EXPECT_EQ(CONNECT_E_NOCONNECTION, container->FindConnectionPoint(IID_IOleObject, none.Put()));
    EXPECT_EQ(E_POINTER, container->FindConnectionPoint(IID_IPropertyNotifySink, nullptr));
}

TEST_F(Events, EnumeratorsCountRightAndCookiesAreNotReused) {
    Place(false);
    const auto sink = AdviseNotifications();
    const DWORD first = notifyCookie;
    const auto second = AdviseNotifications();
    EXPECT_NE(first, notifyCookie);
    ComPtr<IConnectionPoint> point;
    As<IConnectionPointContainer>()->FindConnectionPoint(IID_IPropertyNotifySink, point.Put());
    ComPtr<IEnumConnections> list;
    ASSERT_EQ(S_OK, point->EnumConnections(list.Put()));
    CONNECTDATA data{};
    EXPECT_EQ(S_OK, list->Next(1, &data, nullptr));
    EXPECT_EQ(first, data.dwCookie);
    data.pUnk->Release();
    EXPECT_EQ(S_OK, list->Skip(1));
    EXPECT_EQ(S_FALSE, list->Next(1, &data, nullptr));
    EXPECT_EQ(S_OK, list->Reset());
    EXPECT_EQ(S_FALSE, list->Skip(3));
    EXPECT_EQ(S_OK, Unadvise(control.Get(), IID_IPropertyNotifySink, first));
    EXPECT_EQ(CONNECT_E_NOCONNECTION, Unadvise(control.Get(), IID_IPropertyNotifySink, first));
    EXPECT_EQ(CONNECT_E_CANNOTCONNECT, point->Advise(comkit::MakeObject<TestBag>().Get(), &data.dwCookie));
    EXPECT_EQ(E_POINTER, point->Advise(nullptr, &data.dwCookie));
}

TEST_F(Events, EachSinkHearsAUsersClickOnce) {
    PlaceActive();
    ClickUseSystem();  // nobody listens
    const auto one = AdviseEvents();
    const auto two = AdviseEvents();
    ClickUseSystem();
    for (const auto& sink : {one, two}) EXPECT_EQ(1, std::count(sink->events.begin(), sink->events.end(), Click));
}

TEST_F(Events, ASinkMayUnadviseItselfWhileItIsCalled) {
    PlaceActive();
    const auto one = AdviseEvents();
    const DWORD cookie = eventCookie;
    const auto two = AdviseEvents();
    one->onEvent = [&](DISPID, DISPPARAMS&, EXCEPINFO*) {
        Unadvise(control.Get(), DIID___KivSetDateTime, cookie);
        return S_OK;
    };
    ClickUseSystem();
    ClickUseSystem();
    EXPECT_EQ(1u, one->events.size());
    EXPECT_GE(two->events.size(), 2u);
}

TEST_F(Events, TheHostSuppliesTheDevicesDateByReference) {
    PlaceActive();
    const auto sink = AdviseEvents();
    sink->onEvent = [](DISPID id, DISPPARAMS& params, EXCEPINFO*) {
        if (id != GetDeviceDateTime) return S_OK;
        EXPECT_EQ(2u, params.cArgs);
        EXPECT_EQ(VT_BYREF | VT_VARIANT, params.rgvarg[1].vt);
        EXPECT_EQ(VT_BYREF | VT_BOOL, params.rgvarg[0].vt);
        EXPECT_EQ(VT_EMPTY, params.rgvarg[1].pvarVal->vt);
        *params.rgvarg[1].pvarVal = Variant::Date(36526.75).Detach();  // 1 January 2000, 18:00
        *params.rgvarg[0].pboolVal = VARIANT_TRUE;
        return S_OK;
    };
    Put(L"UsePCDateTime", false);
    Variant date;
    Variant time;
    VARIANT_BOOL enable = VARIANT_FALSE;
    ASSERT_EQ(S_OK, As<_KivSetDateTime>()->GetDateTimeInfo(&date.Get(), &time.Get(), &enable));
    EXPECT_EQ(36526.0, date.Get().date);
    EXPECT_EQ(36526.75, time.Get().date);
    EXPECT_EQ(VARIANT_TRUE, enable);
}

TEST_F(Events, TextFromTheHostIsReadAsADate) {
    PlaceActive();
    const auto sink = AdviseEvents();
    sink->onEvent = [](DISPID id, DISPPARAMS& params, EXCEPINFO*) {
        if (id == GetDeviceDateTime) *params.rgvarg[1].pvarVal = Variant(u"2001-07-04 12:30:00").Detach();
        return S_OK;
    };
    Put(L"UsePCDateTime", false);
    Variant date;
    Variant time;
    VARIANT_BOOL enable = VARIANT_FALSE;
    As<_KivSetDateTime>()->GetDateTimeInfo(&date.Get(), &time.Get(), &enable);
    EXPECT_EQ(37076.0, date.Get().date);
}

TEST_F(Events, AHandlerThatFailsLeavesThePcsClockAndOneThatIsMissingTheZeroDate) {
    struct Case {
        HRESULT answer;
        bool pcClock;
    };
    for (const Case c :
         {Case{DISP_E_EXCEPTION, true}, Case{E_FAIL, true}, Case{DISP_E_MEMBERNOTFOUND, false}, Case{S_OK, false}}) {
        SCOPED_TRACE(c.answer);
        PlaceActive();
        const auto sink = AdviseEvents();
        sink->onEvent = [&](DISPID id, DISPPARAMS&, EXCEPINFO* info) {
            if (id != GetDeviceDateTime) return S_OK;
            if (c.answer == DISP_E_EXCEPTION) {
                info->scode = E_FAIL;
                info->bstrDescription = SysAllocString(L"the host's own error");
            }
            return c.answer;
        };
        Put(L"UsePCDateTime", false);
        Variant date;
        Variant time;
        VARIANT_BOOL enable = VARIANT_FALSE;
        As<_KivSetDateTime>()->GetDateTimeInfo(&date.Get(), &time.Get(), &enable);
        EXPECT_EQ(c.pcClock, date.Get().date > 40000.0) << date.Get().date;
        if (!c.pcClock) {
            EXPECT_EQ(0.0, date.Get().date);
        }
        Remove();
        ForgetRememberedChoice();
    }
}

TEST_F(Events, ChangesAreNotifiedUnderThePropertysOwnId) {
    const std::map<std::wstring, DISPID> expected = {{L"BackColor", 1},
                                                     {L"CalBackColor", 2},
                                                     {L"CalBackColorDisabled", 3},
                                                     {L"CalForeColorDisabled", 4},
                                                     {L"CalTitleBackColor", 5},
                                                     {L"CalTitleBackColorDisabled", 6},
                                                     {L"CalTitleForeColor", 7},
                                                     {L"CalTitleForeColorDisabled", 8},
                                                     {L"CalTrailingForeColor", 9},
                                                     {L"ForeColor", 11},
                                                     {L"TimeFormat", 17},
                                                     {L"TimeHeight", 18},
                                                     {L"TimeWidth", 19},
                                                     {L"Data12HrValue", 21},
                                                     {L"Data24HrValue", 22},
                                                     {L"StartOfWeek", 16}};
    Place(false);
    const auto sink = AdviseNotifications();
    for (const auto& [name, id] : expected) {
        SCOPED_TRACE(testing::Message() << name.c_str());
        sink->changed.clear();
        Put(name.c_str(), id == 16 ? 4 : 2345);
        EXPECT_EQ(std::vector<DISPID>{id}, sink->changed);
        sink->changed.clear();
        Put(name.c_str(), id == 16 ? 4 : 2345);
        EXPECT_TRUE(sink->changed.empty());
    }
    sink->changed.clear();
    comkit::Put(Members(), L"DataElementPath", 13, u"x");
    comkit::Put(Members(), L"DataLMObject", 0, 1);
    comkit::Put(Members(), L"DataType", 9, 1);
    comkit::Put(Members(), L"DataVariableName", 3, u"x");
    EXPECT_EQ((std::vector<DISPID>{23, 25, 26, 27}), sink->changed);
    Put(L"Caption", u"x");
    Put(L"Enabled", false);
    EXPECT_EQ(DISPID_CAPTION, sink->changed[4]);
    EXPECT_EQ(DISPID_ENABLED, sink->changed[5]);
}

TEST_F(Events, NothingIsNotifiedWhilePropertiesLoad) {
    Place(false);
    auto bag = comkit::MakeObject<TestBag>();
    bag->Put(L"Caption", u"loaded");
    bag->Put(L"Mode", 1);
    const auto sink = AdviseNotifications();
    ASSERT_EQ(S_OK, As<IPersistPropertyBag>()->Load(bag.Get(), nullptr));
    EXPECT_EQ(L"loaded", TextOf(L"Caption"));
    EXPECT_TRUE(sink->changed.empty());
    EXPECT_TRUE(sink->requested.empty());
}

TEST_F(Events, ASinkCanRefuseAnEdit) {
    Place(false);
    const auto sink = AdviseNotifications();
    sink->refuses = DISPID_CAPTION;
    Invoke(Members(), L"Caption", DISPATCH_PROPERTYPUT, [] {
        std::vector<Variant> args;
        args.emplace_back(u"refused");
        return args;
    }());
    EXPECT_EQ(L"Set Date/Time", TextOf(L"Caption"));
    EXPECT_TRUE(sink->changed.empty());
    Put(L"TimeHeight", 700);
    EXPECT_EQ((std::vector<DISPID>{DISPID_CAPTION, 18}), sink->requested);
    EXPECT_EQ(std::vector<DISPID>{18}, sink->changed);
}

TEST_F(Events, FreezingNestsHoldsNotificationsBackAndDropsEvents) {
    PlaceActive();
    const auto events = AdviseEvents();
    const auto notified = AdviseNotifications();
    const auto ole = As<IOleControl>();
    ole->FreezeEvents(TRUE);
    ole->FreezeEvents(TRUE);
    Put(L"Caption", u"a");
    Put(L"Caption", u"b");
    ClickUseSystem();
    ole->FreezeEvents(FALSE);
    EXPECT_TRUE(notified->changed.empty());
    ole->FreezeEvents(FALSE);
    EXPECT_EQ(1, std::count(notified->changed.begin(), notified->changed.end(), DISPID_CAPTION));
    EXPECT_TRUE(events->events.empty());
    ole->FreezeEvents(FALSE);  // one too many does no harm
    ClickUseSystem();
    EXPECT_FALSE(events->events.empty());
}

TEST_F(Events, MousePositionsArriveInTheContainersUnits) {
    PlaceActive();
    site->unitsPerHimetric = 2.0;
    const auto sink = AdviseEvents();
    float x = 0;
    float y = 0;
    sink->onEvent = [&](DISPID id, DISPPARAMS& params, EXCEPINFO*) {
        if (id != 7) return S_OK;
        EXPECT_EQ(4u, params.cArgs);
        x = *params.rgvarg[1].pfltVal;
        y = *params.rgvarg[0].pfltVal;
        EXPECT_EQ(2, *params.rgvarg[3].piVal);  // the right button
        return S_OK;
    };
    const HWND box = Child(L"Button", L"&Use PC System Date/Time?");
    RECT outer{};
    RECT inner{};
    GetWindowRect(Window(), &outer);
    GetWindowRect(box, &inner);
    SendMessageW(box, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(10, 5));
    SendMessageW(box, WM_RBUTTONUP, 0, MAKELPARAM(10, 5));
    const double himetricPerPixel = 2540.0 / 96.0;
    EXPECT_NEAR((inner.left - outer.left + 10) * himetricPerPixel * 2.0, x, 4 * himetricPerPixel);
    EXPECT_NEAR((inner.top - outer.top + 5) * himetricPerPixel * 2.0, y, 4 * himetricPerPixel);
}

TEST_F(Events, TheControlMayBeDestroyedInsideItsOwnEvent) {
    PlaceActive();
    const auto sink = AdviseEvents();
    sink->onEvent = [&](DISPID id, DISPPARAMS&, EXCEPINFO*) {
        if (id == Click) Remove();
        return S_OK;
    };
    ClickUseSystem();
    EXPECT_FALSE(control);
    EXPECT_EQ(nullptr, GetWindow(site->Window(), GW_CHILD));
}

TEST_F(Events, TheControlMayBeDestroyedWhenItAsksForTheDevicesDate) {
    PlaceActive();
    const auto sink = AdviseEvents();
    sink->onEvent = [&](DISPID id, DISPPARAMS&, EXCEPINFO*) {
        if (id == GetDeviceDateTime) Remove();
        return S_OK;
    };
    ClickUseSystem();
    EXPECT_FALSE(control);
}

}  // namespace
}  // namespace component
