// A container whose callbacks succeed and hand out nonsense: windows that are gone, rectangles that are none, positions
// that are no numbers, an extender without a usable name.
#include <cmath>
#include <limits>

#include "ContainerFaultsFixture.h"

namespace component {
namespace {

using comkit::Variant;

constexpr LONG Least = std::numeric_limits<LONG>::min();
constexpr LONG Most = std::numeric_limits<LONG>::max();

constexpr RECT NonsenseRects[] = {{300, 300, 20, 20},       {50, 50, 50, 50},           {0, 0, 0, 0},
                                  {-900, -900, -800, -800}, {Least, Least, Most, Most}, {Most, Most, Least, Least},
                                  {Most - 1, 0, Most, 5},   {0, 0, Most, Most}};

HWND DestroyedWindow() {
    const HWND window =
        CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    DestroyWindow(window);
    return window;
}

class NonsenseAnswers : public ContainerFaults {
protected:
    /// A life with this site, and one with a site that is as it should be.
    void LiveWith(const std::function<void(RecordingSite&)>& spoil) {
        Create();
        spoil(*site);
        LiveThrough();
        EXPECT_EQ(L"kept", TextOf(L"Caption"));
        EXPECT_EQ(L"4200", TextOf(L"TimeWidth"));
        EXPECT_EQ(nullptr, GetWindow(site->Window(), GW_CHILD));
        ExpectToWorkAgain();
        End();
    }
};

TEST_F(NonsenseAnswers, AWindowThatIsGoneEndsTheActivationAndNothingElse) {
    for (const HWND gone : {DestroyedWindow(), reinterpret_cast<HWND>(0x0BADCAFE)}) {
        Create();
        site->parent = gone;
        EXPECT_EQ(S_OK, As<IOleObject>()->SetClientSite(site.Get()));
        EXPECT_TRUE(FAILED(DoVerb(OLEIVERB_UIACTIVATE)));
        EXPECT_EQ(site->Count("OnInPlaceActivate"), site->Count("OnInPlaceDeactivate"));
        EXPECT_FALSE(site->IsUiActive());
        HWND window = nullptr;
        EXPECT_TRUE(FAILED(As<IOleInPlaceObject>()->GetWindow(&window)));
        site->parent.reset();
        EXPECT_EQ(S_OK, DoVerb(OLEIVERB_UIACTIVATE)) << "the next attempt";
        EXPECT_TRUE(Child(L"SysMonthCal32"));
        End();
        LiveWith([&](RecordingSite& s) { s.parent = gone; });
    }
}

TEST_F(NonsenseAnswers, RectanglesOfAllKindsComeAndGo) {
    for (const RECT& rect : NonsenseRects) {
        SCOPED_TRACE(testing::Message() << rect.left << " " << rect.top << " " << rect.right << " " << rect.bottom);
        LiveWith([&](RecordingSite& s) { s.position = rect; });
        LiveWith([&](RecordingSite& s) { s.clip = rect; });
        LiveWith([&](RecordingSite& s) {
            s.position = rect;
            s.followsPlace = false;
        });
        Place(true);
        ASSERT_EQ(S_OK, DoVerb(OLEIVERB_UIACTIVATE));
        EXPECT_EQ(S_OK, As<IOleInPlaceObject>()->SetObjectRects(&rect, &rect));
        EXPECT_EQ(S_OK, As<IOleInPlaceObject>()->SetObjectRects(&rect, nullptr));
        SIZEL extent{};
        EXPECT_EQ(S_OK, As<IOleObject>()->GetExtent(DVASPECT_CONTENT, &extent));
        EXPECT_GT(extent.cx, 3000) << "never smaller than what it needs";
        EXPECT_GT(extent.cy, 3000);
        const RECT sound{0, 0, 500, 400};
        EXPECT_EQ(S_OK, As<IOleInPlaceObject>()->SetObjectRects(&sound, &sound));
        RECT place{};
        GetWindowRect(Window(), &place);
        EXPECT_EQ(500, place.right - place.left);
        End();
        ForgetRememberedChoice();
    }
}

TEST_F(NonsenseAnswers, PositionsThatAreNoNumbersAreNotHandedOn) {
    for (const double units : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                               -std::numeric_limits<double>::infinity(), 1e300}) {
        SCOPED_TRACE(units);
        Place(true);
        site->unitsPerHimetric = units;
        ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
        const auto sink = AdviseEvents();
        int met = 0;
        sink->onEvent = [&](DISPID id, DISPPARAMS& params, EXCEPINFO*) {
            if (id < 7 || id > 9) return S_OK;
            ++met;
            EXPECT_TRUE(std::isfinite(*params.rgvarg[0].pfltVal));
            EXPECT_TRUE(std::isfinite(*params.rgvarg[1].pfltVal));
            return S_OK;
        };
        ClickThrough();
        EXPECT_GE(met, 3);
        Remove();
        LiveWith([&](RecordingSite& s) { s.unitsPerHimetric = units; });
        ForgetRememberedChoice();
    }
}

TEST_F(NonsenseAnswers, WithoutAFrameItBecomesActiveAllTheSame) {
    Place(true);
    site->hasFrame = false;
    EXPECT_EQ(S_OK, DoVerb(OLEIVERB_UIACTIVATE));
    EXPECT_EQ(1, site->Count("OnUIActivate"));
    End();
    LiveWith([](RecordingSite& s) { s.hasFrame = false; });
}

TEST_F(NonsenseAnswers, AnExtenderWithoutAUsableNameLeavesTheErrorsTheirSource) {
    const std::function<HRESULT(VARIANT&)> names[] = {
        [](VARIANT&) { return E_FAIL; },
        [](VARIANT&) { return DISP_E_EXCEPTION; },
        [](VARIANT&) { return S_OK; },
        [](VARIANT& out) {
            out = Variant(static_cast<IDispatch*>(nullptr)).Detach();
            return S_OK;
        },
        [](VARIANT& out) {
            out = Variant(static_cast<IUnknown*>(comkit::MakeObject<TestBag>().Get())).Detach();
            return S_OK;
        },
        [this](VARIANT&) {
            As<IOleObject>()->SetClientSite(nullptr);
            return S_OK;
        },
    };
    for (const auto& name : names) {
        Place(true);
        site->onExtenderName = name;
        const CallResult result = Invoke(Members(), L"DataLMObject", DISPATCH_PROPERTYGET, IndexOutOfRange());
        EXPECT_EQ(static_cast<HRESULT>(0x800A017D), result.scode);
        EXPECT_NE(u"", result.source);
        EXPECT_EQ(u"Invalid Property array index: Must be a value between 0 and 13.", result.description);
        Remove();
        LiveWith([&](RecordingSite& s) { s.onExtenderName = name; });
        ForgetRememberedChoice();
    }
}

}  // namespace
}  // namespace component
