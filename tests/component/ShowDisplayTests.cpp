// What a show control shows, with values that come through the framework: the texts, what is painted again and what is
// told, RefreshDisplay, the device's clock.
#include <Vexa.h>

#include <tuple>

#include "ControlFixture.h"
#include "InstalledSimulator.h"
#include "ScriptedFramework.h"

namespace component {
namespace {

using comkit::ComPtr;
using comkit::Variant;

constexpr DISPID ValueChange = 1;

class LoadedShowControl : public ControlFixture {
protected:
    LoadedShowControl() : ControlFixture(ShowClass) {}

    /// A control in run mode that was loaded with these keys, besides a plain format.
    void Load(const std::vector<std::tuple<const wchar_t*, std::int32_t>>& settings) {
        const auto bag = comkit::MakeObject<TestBag>();
        for (const auto& [key, value] : settings) bag->Put(key, Variant(value));
        bag->Put(L"UpperCase", Variant(false));  // where nothing else was asked for
        LoadBag(*bag);
    }
    void LoadBag(TestBag& bag) {
        control = Server::Get().CreateControl(tested.clsid);
        site->Attach(control.Get());
        dispatch = As<IDispatch>();
        ASSERT_EQ(S_OK, As<IOleObject>()->SetClientSite(site.Get()));
        ASSERT_EQ(S_OK, As<IPersistPropertyBag>()->Load(&bag, nullptr));
    }
    std::wstring Value() const { return TextOf(L"Value"); }
};

/// The framework stays until the control has gone.
class ShowDisplay : public LoadedShowControl {
protected:
    void TearDown() override { Remove(); }
    ScriptedFramework framework;
};

constexpr std::int32_t Yes = -1;
constexpr std::int32_t No = 0;

TEST_F(ShowDisplay, TextsFollowTheSettingsAndTheDevicesValues) {
    struct Case {
        std::vector<std::tuple<const wchar_t*, std::int32_t>> settings;
        std::vector<std::pair<short, const wchar_t*>> values;
        const wchar_t* text;
    };
    const std::vector<std::pair<short, const wchar_t*>> november{{5, L"5"}, {4, L"11"}, {6, L"2026"}};
    const std::pair<const wchar_t*, std::int32_t> dayFirst{L"ProtoDateFormat", 1};
    const Case cases[] = {
        {{{dayFirst}}, november, L"05-Nov-2026"},
        {{}, november, L"Nov-05-2026"},
        {{{dayFirst}, {L"ShowLeadZeros", No}, {L"ShowCentury", No}}, november, L"5-Nov-26"},
        {{{dayFirst}}, {{5, L"5"}, {4, L"11"}, {6, L"7"}}, L"05-Nov-2007"},
        {{{dayFirst}, {L"ShowLongDay", Yes}, {L"UpperCase", Yes}}, november, L"THURSDAY, 05-NOV-2026"},
        {{{L"Mode", 2}, {L"ShowSeconds", Yes}, {L"ShowLeadZeros", No}},
         {{1, L"0"}, {2, L"5"}, {3, L"9"}},
         L"12:05:09 AM"},
        {{{L"Mode", 2}}, {{1, L"13"}, {2, L"5"}}, L"01:05 PM"},
        {{{L"Mode", 2}, {L"ProtoShow24Hour", 1}, {L"ShowLeadZeros", No}}, {{1, L"13"}, {2, L"5"}}, L"13:05"},
        {{{L"Mode", 2}, {L"ProtoShow24Hour", 1}, {L"ShowLeadZeros", No}, {L"BorderStyle", 1}},
         {{1, L"7"}, {2, L"0"}},
         L" 7:00 "},
        // Before the first value, and values that are none.
        {{{dayFirst}}, {}, L"01-Jan-2000"},
        {{{dayFirst}, {L"ShowCentury", No}}, {}, L"01-Jan-00"},
        {{{L"Mode", 2}}, {}, L"12:00 AM"},
        {{{L"Mode", 2}, {L"ProtoShow24Hour", 1}}, {{1, L"12abc"}, {2, L""}}, L"12:00"},
        {{}, {{4, L"13"}, {5, L"77"}, {6, L"3000"}}, L"Dec-31-1980"},
        {{}, {{7, L"5"}, {-1, L"5"}}, L"Jan-01-2000"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << std::wstring(c.text).c_str());
        Load(c.settings);
        EXPECT_EQ(7, framework.ElementCounts().back());
        for (const auto& [index, value] : c.values) framework.Deliver(index, value);
        EXPECT_EQ(std::wstring(c.text), Value());
        Remove();
    }
}

TEST_F(ShowDisplay, TheFormatElementCountsOnceItsSlotHasAVariable) {
    Load({{L"Mode", 2}});
    const auto notifications = AdviseNotifications();
    framework.Deliver(1, L"15");
    framework.Deliver(0, L"1");
    EXPECT_EQ(L"03:00 PM", Value());
    comkit::Put(Members(), L"DataVariableName", 0, u"  ");
    framework.Deliver(0, L"1");
    EXPECT_EQ(L"03:00 PM", Value());
    comkit::Put(Members(), L"DataVariableName", 0, u"nciClockFormat");
    notifications->changed.clear();
    framework.Deliver(0, L"1");
    EXPECT_EQ(L"15:00", Value());
    EXPECT_EQ(std::vector<DISPID>{22}, notifications->changed);
}

TEST_F(ShowDisplay, ValuesThatLeaveTheTextAsItIsPaintAndTellNothing) {
    for (const bool windowless : {false, true}) {
        SCOPED_TRACE(windowless);
        site->offersNoWindow = windowless;
        Load({{L"Mode", 2}});
        const auto events = AdviseEvents();
        const auto notifications = AdviseNotifications();
        ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
        framework.Deliver(1, L"9");
        EXPECT_EQ(std::vector<DISPID>{ValueChange}, events->events);
        if (!windowless) UpdateWindow(Window());
        site->outdated.clear();

        for (const wchar_t* same : {L"9", L"9.2", L" 9"}) framework.Deliver(1, same);
        framework.Deliver(3, L"17");  // seconds are not shown
        framework.Deliver(6, L"2026");
        framework.Deliver(7, L"1");
        EXPECT_EQ(1u, events->events.size());
        EXPECT_TRUE(notifications->changed.empty());
        EXPECT_TRUE(site->outdated.empty());
        if (!windowless) {
            EXPECT_FALSE(GetUpdateRect(Window(), nullptr, FALSE));
        }

        framework.Deliver(2, L"30");
        EXPECT_EQ(L"09:30 AM", Value());
        EXPECT_EQ(2u, events->events.size());
        EXPECT_EQ(windowless ? 1u : 0u, site->outdated.size());
        Remove();
    }
}

TEST_F(ShowDisplay, ATextIsDrawnAtOnceWithTheContainersDeviceContextOrPaintedLater) {
    enum class Meanwhile { Nothing, Refused, Deactivated, Removed };
    const comkit::WindowDc screen(site->Window());
    site->offersNoWindow = true;
    for (const Meanwhile meanwhile :
         {Meanwhile::Nothing, Meanwhile::Refused, Meanwhile::Deactivated, Meanwhile::Removed}) {
        SCOPED_TRACE(static_cast<int>(meanwhile));
        Load({{L"Mode", 2}});
        ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
        framework.Deliver(1, L"9");
        site->calls.clear();
        site->outdated.clear();
        site->drawn.clear();
        site->lent = screen.Get();
        site->onCall = [&](const char* name) -> std::optional<HRESULT> {
            if (std::string(name) != "GetDC") return std::nullopt;
            if (meanwhile == Meanwhile::Refused) return E_FAIL;
            if (meanwhile == Meanwhile::Deactivated) As<IOleInPlaceObject>()->InPlaceDeactivate();
            if (meanwhile == Meanwhile::Removed) Remove();
            return std::nullopt;
        };
        framework.Deliver(2, L"30");
        EXPECT_EQ(site->drawn.size(), 1u);
        EXPECT_EQ(site->Count("ReleaseDC"), meanwhile == Meanwhile::Refused ? 0 : 1);
        EXPECT_EQ(site->outdated.size(), meanwhile == Meanwhile::Refused ? 1u : 0u);
        site->onCall = nullptr;
        site->lent = nullptr;
        if (control) {
            EXPECT_EQ(L"09:30 AM", Value());
        }
        Remove();
        site->calls.clear();
    }
}

TEST_F(ShowDisplay, AValueThatArrivesWhileAnotherIsDrawnIsTheOneThatStays) {
    const comkit::WindowDc screen(site->Window());
    site->offersNoWindow = true;
    Load({{L"Mode", 2}});
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
    framework.Deliver(1, L"9");
    site->lent = screen.Get();
    int calls = 0;
    site->onCall = [&](const char* name) -> std::optional<HRESULT> {
        if (std::string(name) == "GetDC" && ++calls == 1) framework.Deliver(2, L"31");
        return std::nullopt;
    };
    framework.Deliver(2, L"30");
    EXPECT_EQ(L"09:31 AM", Value());
    framework.Deliver(2, L"31");
    EXPECT_EQ(2, calls) << "nothing new to draw";
    framework.Deliver(2, L"30");
    EXPECT_EQ(L"09:30 AM", Value());
    EXPECT_EQ(3, calls);
}

TEST_F(ShowDisplay, AHandlerOfValueChangeMayEndTheControl) {
    for (const bool windowless : {false, true}) {
        site->offersNoWindow = windowless;
        Load({});
        ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
        const auto events = AdviseEvents();
        events->onEvent = [this](DISPID, DISPPARAMS&, EXCEPINFO*) {
            Remove();
            return S_OK;
        };
        framework.Deliver(5, L"20");
        EXPECT_FALSE(control);
        EXPECT_EQ(0u, framework.Living());
        EXPECT_EQ(S_OK, Server::Get().CanUnload());
    }
}

/// The six elements of a variable that show 09:08:07 on 6 May 2004.
ComPtr<TestVariable> SomeVariable() {
    auto variable = comkit::MakeObject<TestVariable>();
    variable->elements.emplace(L"h", Variant(L"9"));
    variable->elements.emplace(L"m", Variant(8.4));
    variable->elements.emplace(L"s", Variant(std::int32_t{7}));
    variable->elements.emplace(L"M", Variant(std::int16_t{5}));
    variable->elements.emplace(L"d", Variant(L"6"));
    variable->elements.emplace(L"y", Variant(std::int32_t{2004}));
    return variable;
}

class ShowRefresh : public ShowDisplay {
protected:
    void LoadWithPaths() {
        Load({{L"ProtoDateFormat", 1}});
        int slot = 0;
        for (const char16_t* path : {u"format", u"h", u"m", u"s", u"M", u"d", u"y"})
            comkit::Put(Members(), L"DataElementPath", slot++, path);
    }
    /// RefreshDisplay with a variant as a caller passes it.
    HRESULT Refresh(const VARIANT& variable) {
        return As<_KivShowDateTime>()->RefreshDisplay(const_cast<VARIANT*>(&variable));
    }
};

TEST_F(ShowRefresh, TakesAllSixNumbersFromTheVariableHoweverItIsPassed) {
    const auto variable = SomeVariable();
    Variant direct(static_cast<IDispatch*>(variable.Get()));
    VARIANT toVariant{};
    toVariant.vt = VT_BYREF | VT_VARIANT;
    toVariant.pvarVal = &direct.Get();
    IDispatch* object = variable.Get();
    VARIANT toObject{};
    toObject.vt = VT_BYREF | VT_DISPATCH;
    toObject.ppdispVal = &object;
    for (const VARIANT* form : {&std::as_const(direct).Get(), &std::as_const(toVariant), &std::as_const(toObject)}) {
        SCOPED_TRACE(form->vt);
        LoadWithPaths();
        variable->asked.clear();
        const auto events = AdviseEvents();
        EXPECT_EQ(S_OK, Refresh(*form));
        EXPECT_EQ(L"06-May-2004", Value());
        EXPECT_EQ(std::vector<DISPID>{ValueChange}, events->events);
        EXPECT_EQ((std::vector<std::wstring>{L"h", L"m", L"s", L"M", L"d", L"y"}), variable->asked);

        // Late-bound, as a script calls it.
        As<_KivShowDateTime>()->put_ShowCentury(VARIANT_FALSE);
        DISPPARAMS params{const_cast<VARIANT*>(form), nullptr, 1, 0};
        variable->elements[L"d"] = Variant(L"8");
        EXPECT_EQ(S_OK, dispatch->Invoke(27, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, nullptr, nullptr,
                                         nullptr));
        EXPECT_EQ(L"08-May-04", Value());
        variable->elements[L"d"] = Variant(L"6");
        Remove();
    }
}

TEST_F(ShowRefresh, StopsAtTheFirstFailureAndReportsNone) {
    LoadWithPaths();
    const auto variable = SomeVariable();
    variable->elements.erase(L"d");
    const auto events = AdviseEvents();
    EXPECT_EQ(S_OK, Refresh(Variant(static_cast<IDispatch*>(variable.Get())).Get()));
    EXPECT_EQ(L"01-Jan-2000", Value()) << "not rebuilt";
    EXPECT_TRUE(events->events.empty());
    EXPECT_EQ((std::vector<std::wstring>{L"h", L"m", L"s", L"M", L"d"}), variable->asked);
    Put(L"ShowLeadingZeros", false);
    EXPECT_EQ(L"1-May-2000", Value()) << "what was taken stays";

    for (const Variant& nothing : {Variant(), Variant(5), Variant(L"text"), Variant(static_cast<IDispatch*>(nullptr))})
        EXPECT_EQ(S_OK, Refresh(nothing.Get()));
    EXPECT_EQ(L"1-May-2000", Value());
    EXPECT_EQ(E_POINTER, As<_KivShowDateTime>()->RefreshDisplay(nullptr));
}

using ShowDevice = LoadedShowControl;

TEST_F(ShowDevice, TheSimulatedDevicesClockIsShown) {
    const InstalledSimulator simulator;
    const auto device = InstalledSimulator::Make(L"VexaSimulator.Device");
    comkit::Call(*device, L"Reset");
    const auto bag = comkit::MakeObject<TestBag>();
    int slot = 0;
    for (const wchar_t* name :
         {L"nciClockFormat", L"nvoHour", L"nvoMinute", L"nvoSecond", L"nvoMonth", L"nvoDay", L"nvoYear"}) {
        bag->Put(L"DataVarName" + std::to_wstring(slot), Variant(name));
        bag->Put(L"DataLMObject" + std::to_wstring(slot++), Variant(1));
    }
    bag->Put(L"Mode", Variant(2));
    bag->Put(L"ShowSeconds", Variant(true));
    LoadBag(*bag);
    auto support = As<IVexaSupport>();
    comkit::Bstr description;
    EXPECT_EQ(S_OK, support->get_VexaDescription(description.Put()));
    EXPECT_EQ(u"KivShowDateTime", description.View());
    ComPtr<IDispatch> elements;
    EXPECT_EQ(S_OK, support->get_VexaSubElements(elements.Put()));
    ASSERT_TRUE(elements);
    EXPECT_EQ(L"7", Text(comkit::Call(*elements, L"Count").Get()));
    elements.Reset();
    EXPECT_EQ(S_OK, support->VexaSetControlFocus());
    support.Reset();
    comkit::Put(*device, L"Value", L"nciClockFormat", L"1");
    const auto put = [&](const wchar_t* text) {
        Variant date;
        ASSERT_EQ(S_OK, date.ConvertFrom(Variant(text).Get(), VT_DATE));
        comkit::Put(*device, L"Now", date.Get().date);
        comkit::Call(*device, L"Refresh");
    };
    put(L"2026-11-05 23:41:30");
    EXPECT_EQ(L"23:41:3", Value().substr(0, 7));
    put(L"2026-11-05 00:00:10");
    EXPECT_EQ(L"00:00:1", Value().substr(0, 7));
    Remove();
    long left = -1;
    left = comkit::Call(*device, L"HiddenControlCount").Get().lVal;
    EXPECT_EQ(0, left);
}

}  // namespace
}  // namespace component
