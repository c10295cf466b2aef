// A show control in its container: in the container's own window or in one of its own, the same picture and the same
// events either way.
#include "ControlFixture.h"
#include "Sheet.h"

namespace component {
namespace {

constexpr RECT Home{20, 30, 346, 43};  // 4890 by 195 twips at 96 dpi

class ShowEmbedding : public ControlFixture {
protected:
    ShowEmbedding() : ControlFixture(ShowClass) { site->position = Home; }
    void Activate(bool windowless) {
        site->offersNoWindow = windowless;
        Place(true);
        ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
    }
    LRESULT Send(UINT id, WPARAM wParam, LPARAM lParam, HRESULT expected = S_OK) {
        LRESULT result = -1;
        EXPECT_EQ(expected, As<IOleInPlaceObjectWindowless>()->OnWindowMessage(id, wParam, lParam, &result)) << id;
        return result;
    }
    /// A mouse message at a place of the control, by the way that it takes.
    void Mouse(UINT id, int x, int y, WPARAM keys = MK_LBUTTON) {
        if (site->offersNoWindow) {
            Send(id, keys, MAKELPARAM(x + site->position.left, y + site->position.top));
        } else {
            SendMessageW(Window(), id, keys, MAKELPARAM(x, y));
        }
    }
    Sheet Drawn(const RECTL* bounds) {
        return Sheet([&](HDC dc) {
            EXPECT_EQ(S_OK, As<IViewObject2>()->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc, bounds,
                                                     nullptr, nullptr, 0));
        });
    }
};

TEST_F(ShowEmbedding, LivesInTheContainersWindowWhereItMay) {
    Activate(true);
    EXPECT_EQ(nullptr, Window());
    EXPECT_EQ(nullptr, GetWindow(site->Window(), GW_CHILD));
    EXPECT_EQ(1, site->Count("OnInPlaceActivateEx(windowless)"));
    EXPECT_EQ(0, site->Count("OnInPlaceActivate"));
    ASSERT_EQ(1u, site->outdated.size()) << "asked once to be drawn";
    EXPECT_EQ(S_OK, As<IOleInPlaceObject>()->InPlaceDeactivate());
    EXPECT_EQ(1, site->Count("OnInPlaceDeactivate"));
    Remove();

    // A container that offers it and then does not want it.
    site->onCall = [](const char* call) {
        return std::string(call) == "CanWindowlessActivate" ? std::optional<HRESULT>(S_FALSE) : std::nullopt;
    };
    Activate(true);
    EXPECT_NE(nullptr, Window());
    Remove();
    site->onCall = nullptr;

    Activate(false);
    ASSERT_NE(nullptr, Window());
    EXPECT_EQ(site->Window(), GetParent(Window()));
    EXPECT_TRUE(IsWindowVisible(Window()));
}

TEST_F(ShowEmbedding, IsNeverUiActiveAndTakesNoFocus) {
    for (const bool windowless : {false, true}) {
        Activate(windowless);
        SetFocus(site->Window());
        Mouse(WM_LBUTTONDOWN, 5, 5);
        Mouse(WM_LBUTTONUP, 5, 5, 0);
        for (const LONG verb : {LONG{OLEIVERB_UIACTIVATE}, LONG{OLEIVERB_PRIMARY}}) EXPECT_EQ(S_OK, DoVerb(verb));
        EXPECT_FALSE(site->IsUiActive());
        EXPECT_EQ(0, site->Count("OnUIActivate"));
        EXPECT_EQ(site->Window(), GetFocus());
        DWORD status = 0;
        EXPECT_EQ(S_OK, As<IOleObject>()->GetMiscStatus(DVASPECT_CONTENT, &status));
        EXPECT_EQ(DWORD{0x20191 | OLEMISC_NOUIACTIVATE}, status);
        Remove();
        site->calls.clear();
    }
}

TEST_F(ShowEmbedding, LooksTheSameWithAndWithoutAWindowPixelByPixel) {
    struct Case {
        const wchar_t* property;
        std::int32_t value;
    };
    const RECTL whole{Home.left, Home.top, Home.right, Home.bottom};
    for (const Case& c : {Case{L"BackColor", 0x00C0FFFF}, Case{L"ForeColor", 0x000000FF}, Case{L"BorderStyle", 1},
                          Case{L"Enabled", 0}, Case{L"ValueHeight", 600}, Case{L"ShowLongDay", 1}}) {
        SCOPED_TRACE(testing::Message() << c.property);
        Place(true);
        Put(c.property, c.value);
        const Sheet inactive = Drawn(&whole);
        Remove();

        Activate(true);
        Put(c.property, c.value);
        const RECT place = site->position;
        const RECTL grown{place.left, place.top, place.right, place.bottom};
        const Sheet windowless = Drawn(nullptr);
        EXPECT_EQ(windowless, Drawn(&grown));
        EXPECT_GE(windowless.Colors(), 3u);
        Remove();

        site->position = Home;
        Activate(false);
        Put(c.property, c.value);
        const RECT own = site->position;
        EXPECT_TRUE(EqualRect(&own, &place));
        const Sheet painted([&](HDC dc) {
            SetViewportOrgEx(dc, own.left, own.top, nullptr);
            SendMessageW(Window(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);
        });
        EXPECT_EQ(windowless, painted);
        const bool keepsItsSize = EqualRect(&place, &Home) != FALSE;
        if (keepsItsSize) {
            EXPECT_EQ(windowless, inactive);
        }
        Remove();
        site->position = Home;
    }
}

TEST_F(ShowEmbedding, WithoutAWindowOnlyTheChangedPartIsToBeDrawnAnew) {
    Activate(true);
    site->outdated.clear();
    Put(L"UpperCase", false);
    ASSERT_EQ(1u, site->outdated.size());
    const RECT value{Home.left + 163, Home.top, Home.right, Home.bottom};
    EXPECT_TRUE(EqualRect(&value, site->outdated.data()));

    // The place moves, and what is out of date moves with it.
    site->outdated.clear();
    RECT moved = Home;
    OffsetRect(&moved, 100, 50);
    EXPECT_EQ(S_OK, As<IOleInPlaceObject>()->SetObjectRects(&moved, &moved));
    site->outdated.clear();
    Put(L"UpperCase", true);
    RECT expected = value;
    OffsetRect(&expected, 100, 50);
    ASSERT_EQ(1u, site->outdated.size());
    EXPECT_TRUE(EqualRect(&expected, site->outdated.data()));
    As<IOleInPlaceObject>()->InPlaceDeactivate();
    site->outdated.clear();
    Put(L"UpperCase", false);
    EXPECT_TRUE(site->outdated.empty());
}

struct Fired {
    DISPID event = 0;
    std::vector<float> numbers;
    friend bool operator==(const Fired&, const Fired&) = default;
};

/// Events with their arguments, in the order in which they are written.
std::function<HRESULT(DISPID, DISPPARAMS&, EXCEPINFO*)> Recorder(std::vector<Fired>& fired) {
    return [&fired](DISPID event, DISPPARAMS& params, EXCEPINFO*) {
        Fired one{event, {}};
        for (UINT i = params.cArgs; i-- > 0;) {
            const VARIANT& arg = params.rgvarg[i];
            one.numbers.push_back(arg.vt == (VT_BYREF | VT_R4) ? *arg.pfltVal : static_cast<float>(*arg.piVal));
        }
        fired.push_back(std::move(one));
        return S_OK;
    };
}

TEST_F(ShowEmbedding, MouseAndKeysRaiseTheStockEventsInTheContainersUnits) {
    for (const bool windowless : {false, true}) {
        SCOPED_TRACE(windowless);
        site->position = Home;
        site->unitsPerHimetric = 1440.0 / 2540;  // twips
        Activate(windowless);
        const auto events = AdviseEvents();
        std::vector<Fired> fired;
        events->onEvent = Recorder(fired);
        // 10 pixels into the value and 5 down: 2445 twips and 150 more.
        Mouse(WM_LBUTTONDOWN, 173, 5);
        Mouse(WM_MOUSEMOVE, 174, 5);
        Mouse(WM_LBUTTONUP, 174, 5, 0);
        Mouse(WM_LBUTTONDBLCLK, 10, 5);
        Mouse(WM_LBUTTONUP, 10, 5, 0);
        const auto isAbout = [](float left, float right) { return std::abs(left - right) < 1; };
        std::vector<DISPID> ids;
        ids.reserve(fired.size());
        for (const Fired& one : fired) ids.push_back(one.event);
        EXPECT_EQ((std::vector<DISPID>{DISPID_MOUSEDOWN, DISPID_MOUSEMOVE, DISPID_MOUSEUP, DISPID_CLICK,
                                       DISPID_MOUSEDOWN, DISPID_DBLCLICK, DISPID_MOUSEUP}),
                  ids);
        ASSERT_EQ(4u, fired.at(0).numbers.size());
        EXPECT_EQ(1, fired[0].numbers[0]);
        EXPECT_EQ(0, fired[0].numbers[1]);
        EXPECT_TRUE(isAbout(2595, fired[0].numbers[2])) << fired[0].numbers[2];
        EXPECT_TRUE(isAbout(75, fired[0].numbers[3])) << fired[0].numbers[3];
        EXPECT_TRUE(isAbout(150, fired.at(4).numbers[2]));

        fired.clear();
        const auto key = [&](UINT id, WPARAM code) {
            if (windowless) {
                Send(id, code, 0, S_FALSE);
            } else {
                SendMessageW(Window(), id, code, 0);
            }
        };
        key(WM_KEYDOWN, 'A');
        key(WM_CHAR, 'a');
        key(WM_KEYUP, 'A');
        EXPECT_EQ((std::vector<Fired>{{DISPID_KEYDOWN, {65, 0}}, {DISPID_KEYPRESS, {97}}, {DISPID_KEYUP, {65, 0}}}),
                  fired);
        Remove();
    }
}

TEST_F(ShowEmbedding, WithoutAWindowTheMouseIsCapturedThroughTheContainerAndGivenBack) {
    Activate(true);
    Mouse(WM_LBUTTONDOWN, 5, 5);
    EXPECT_EQ(1, site->Count("SetCapture(1)"));
    EXPECT_EQ(0, site->Count("SetCapture(0)"));
    EXPECT_EQ(S_OK, As<IOleInPlaceObject>()->InPlaceDeactivate());
    EXPECT_EQ(1, site->Count("SetCapture(0)"));
    Send(WM_LBUTTONUP, 0, 0, S_FALSE);
    EXPECT_EQ(1, site->Count("SetCapture(0)"));
}

TEST_F(ShowEmbedding, MessagesThatAreNotItsOwnAreLeftToTheContainer) {
    Activate(true);
    for (const UINT id : {UINT{WM_SETCURSOR}, UINT{WM_CONTEXTMENU}, UINT{WM_TIMER}, UINT{WM_MOUSEWHEEL}})
        EXPECT_EQ(0, Send(id, 0, 0, S_FALSE));
    const auto object = As<IOleInPlaceObjectWindowless>();
    EXPECT_EQ(E_POINTER, object->OnWindowMessage(WM_MOUSEMOVE, 0, 0, nullptr));
    auto* target = reinterpret_cast<IDropTarget*>(this);
    EXPECT_TRUE(FAILED(object->GetDropTarget(&target)));
    EXPECT_EQ(nullptr, target);

    const auto events = AdviseEvents();
    site->uiDead = true;
    As<IOleControl>()->OnAmbientPropertyChange(DISPID_AMBIENT_UIDEAD);
    Send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(30, 35), S_FALSE);
    EXPECT_TRUE(events->events.empty()) << "a dead user interface takes no input";
    site->uiDead = false;
    As<IOleControl>()->OnAmbientPropertyChange(DISPID_AMBIENT_UIDEAD);
    Put(L"Enabled", false);
    Send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(30, 35), S_FALSE);
    EXPECT_TRUE(events->events.empty()) << "nor does a disabled control";
}

TEST_F(ShowEmbedding, OtherRegionalSettingsShowWithTheNextText) {
    Activate(true);
    Put(L"UpperCase", false);
    const std::wstring before = TextOf(L"Value");
    site->outdated.clear();
    Send(WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(L"intl"), S_FALSE);
    EXPECT_FALSE(site->outdated.empty()) << "drawn anew, colours may have changed too";
    EXPECT_EQ(before, TextOf(L"Value"));
}

TEST_F(ShowEmbedding, HitsAreWhereTheControlIs) {
    Activate(true);
    const auto view = As<IViewObjectEx>();
    DWORD hit = 9;
    EXPECT_EQ(S_OK, view->QueryHitPoint(DVASPECT_CONTENT, &Home, {25, 35}, 0, &hit));
    EXPECT_EQ(DWORD{HITRESULT_HIT}, hit);
    EXPECT_EQ(S_OK, view->QueryHitPoint(DVASPECT_CONTENT, &Home, {25, 50}, 0, &hit));
    EXPECT_EQ(DWORD{HITRESULT_OUTSIDE}, hit);
    for (const LONG outside : {0, 500}) {
        const RECT beside{Home.left, Home.bottom + outside, Home.right, Home.bottom + outside + 5};
        const RECT across{Home.left, Home.bottom - 1 - outside, Home.right, Home.bottom + 5};
        EXPECT_EQ(S_OK, view->QueryHitRect(DVASPECT_CONTENT, &Home, &beside, 0, &hit));
        EXPECT_EQ(DWORD{HITRESULT_OUTSIDE}, hit);
        EXPECT_EQ(S_OK, view->QueryHitRect(DVASPECT_CONTENT, &Home, &across, 0, &hit));
        EXPECT_EQ(DWORD{HITRESULT_HIT}, hit);
    }
    EXPECT_EQ(S_OK, view->GetViewStatus(&hit));
    EXPECT_TRUE(hit & VIEWSTATUS_OPAQUE);
}

TEST_F(ShowEmbedding, EveryCallOfTheContainerMayEndOrRefuseAWindowlessActivation) {
    for (const char* const call : {"CanInPlaceActivate", "CanWindowlessActivate", "OnInPlaceActivateEx(windowless)",
                                   "GetWindow", "GetWindowContext", "InvalidateRect", "ShowObject", "SetCapture(1)"}) {
        for (const bool ends : {false, true}) {
            SCOPED_TRACE(testing::Message() << call << (ends ? " ends it" : " fails"));
            site->offersNoWindow = true;
            site->position = Home;
            Place(true);
            bool met = false;
            site->onCall = [&](const char* name) -> std::optional<HRESULT> {
                if (std::string(name) != call || met) return std::nullopt;
                met = true;
                if (!ends) return E_FAIL;
                As<IOleInPlaceObject>()->InPlaceDeactivate();
                return std::nullopt;
            };
            DoVerb(OLEIVERB_INPLACEACTIVATE);
            LRESULT result = 0;
            As<IOleInPlaceObjectWindowless>()->OnWindowMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(30, 35), &result);
            EXPECT_TRUE(met);
            site->onCall = nullptr;
            As<IOleInPlaceObject>()->InPlaceDeactivate();
            const int entered = site->Count("OnInPlaceActivateEx(windowless)") + site->Count("OnInPlaceActivate");
            const int left = site->Count("OnInPlaceDeactivate");
            EXPECT_GE(entered, left);
            EXPECT_LE(entered - left, 1) << "only what was refused needs no farewell";
            EXPECT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE)) << "and it can begin again";
            Remove();
            site->calls.clear();
        }
    }
}

}  // namespace
}  // namespace component
