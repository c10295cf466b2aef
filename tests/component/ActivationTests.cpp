// Embedding: verbs, windows, extent, drawing, and containers with manners of their own.
#include <cstdlib>

#include "ControlFixture.h"

namespace component {
namespace {

using comkit::ComPtr;
using comkit::Variant;

class Embedding : public ControlFixture {
protected:
    SIZEL Extent() {
        SIZEL extent{};
        EXPECT_EQ(S_OK, As<IOleObject>()->GetExtent(DVASPECT_CONTENT, &extent));
        return extent;
    }
    SIZE WindowSize() {
        RECT rect{};
        GetWindowRect(Window(), &rect);
        return {rect.right - rect.left, rect.bottom - rect.top};
    }
    bool IsInPlaceActive() { return Window() != nullptr; }
};

TEST_F(Embedding, AnswersEveryInterfaceThatContainersAskFor) {
    Place(false);
    const IID* iids[] = {&IID_IUnknown,
                         &IID_IDispatch,
                         &__uuidof(_KivSetDateTime),
                         &IID_IOleObject,
                         &IID_IOleWindow,
                         &IID_IOleInPlaceObject,
                         &IID_IOleInPlaceActiveObject,
                         &IID_IOleControl,
                         &IID_IViewObject,
                         &IID_IViewObject2,
                         &IID_IViewObjectEx,
                         &IID_IPersist,
                         &IID_IPersistStream,
                         &IID_IPersistStreamInit,
                         &IID_IPersistPropertyBag,
                         &IID_IPersistStorage,
                         &IID_IConnectionPointContainer,
                         &IID_IProvideClassInfo,
                         &IID_IProvideClassInfo2,
                         &IID_ISupportErrorInfo,
                         &IID_IQuickActivate};
    for (const IID* iid : iids) {
        ComPtr<IUnknown> found;
        ASSERT_EQ(S_OK, control->QueryInterface(*iid, found.PutVoid()));
        EXPECT_EQ(control, ComPtr<IUnknown>::From(found.Get()));
    }
    void* none = &none;
    EXPECT_EQ(E_NOINTERFACE, control->QueryInterface(IID_IStream, &none));
    EXPECT_EQ(nullptr, none);
    EXPECT_EQ(E_POINTER, control->QueryInterface(IID_IUnknown, nullptr));
}

TEST_F(Embedding, ActivatesWithItsRealChildWindows) {
    Place(true);
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
    EXPECT_EQ(1, site->Count("OnInPlaceActivate"));
    EXPECT_EQ(0, site->Count("OnUIActivate"));
    EXPECT_EQ(1, site->Count("ShowObject"));
    ASSERT_TRUE(IsInPlaceActive());
    EXPECT_EQ(site->Window(), GetParent(Window()));
    for (const wchar_t* caption : {L"&Use PC System Date/Time?", L"&Automatically Adjust for Daylight Savings Time?"})
        EXPECT_TRUE(IsWindowVisible(Child(L"Button", caption)));
    EXPECT_TRUE(IsWindowVisible(Child(L"SysMonthCal32")));
    EXPECT_TRUE(IsWindowVisible(Child(L"SysDateTimePick32")));
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
    EXPECT_EQ(1, site->Count("OnInPlaceActivate"));

    EXPECT_EQ(S_OK, As<IOleInPlaceObject>()->InPlaceDeactivate());
    EXPECT_EQ(1, site->Count("OnInPlaceDeactivate"));
    EXPECT_FALSE(IsInPlaceActive());
    EXPECT_EQ(nullptr, GetWindow(site->Window(), GW_CHILD));
    EXPECT_EQ(L"Set Date/Time", TextOf(L"Caption"));
}

TEST_F(Embedding, VerbsMoveTheControlThroughItsStates) {
    Place(true);
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_SHOW));
    EXPECT_FALSE(site->IsUiActive());
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_UIACTIVATE));
    EXPECT_TRUE(site->IsUiActive());
    EXPECT_TRUE(IsChild(Window(), GetFocus()));
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_HIDE));
    EXPECT_FALSE(site->IsUiActive());
    EXPECT_FALSE(IsWindowVisible(Window()));
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_PRIMARY));
    EXPECT_TRUE(IsWindowVisible(Window()));
    EXPECT_TRUE(site->IsUiActive());
    EXPECT_EQ(OLEOBJ_S_INVALIDVERB, DoVerb(99));
    EXPECT_EQ(E_NOTIMPL, DoVerb(-4711));
    EXPECT_EQ(S_OK, As<IOleObject>()->Close(OLECLOSE_NOSAVE));
    EXPECT_FALSE(site->IsUiActive());
    EXPECT_EQ(1, site->Count("OnInPlaceDeactivate"));
    EXPECT_EQ(site->Count("OnUIActivate"), site->Count("OnUIDeactivate"));
}

TEST_F(Embedding, AContainerThatRefusesGetsAnErrorAndNothingStaysActive) {
    Place(true);
    site->allowsInPlace = false;
    EXPECT_TRUE(FAILED(DoVerb(OLEIVERB_INPLACEACTIVATE)));
    EXPECT_FALSE(IsInPlaceActive());
    EXPECT_EQ(0, site->Count("OnInPlaceActivate"));
    As<IOleObject>()->SetClientSite(nullptr);
    EXPECT_TRUE(FAILED(DoVerb(OLEIVERB_SHOW)));
}

TEST_F(Embedding, TheSizeGrowsToWhatTheChildrenNeed) {
    Place(true);
    const SIZEL required = Extent();
    EXPECT_GT(required.cx, 5000);
    EXPECT_GT(required.cy, 3000);
    SIZEL small{100, 100};
    EXPECT_EQ(S_OK, As<IOleObject>()->SetExtent(DVASPECT_CONTENT, &small));
    EXPECT_EQ(required.cx, Extent().cx);
    EXPECT_EQ(required.cy, Extent().cy);
    SIZEL large{30000, 25000};
    EXPECT_EQ(S_OK, As<IOleObject>()->SetExtent(DVASPECT_CONTENT, &large));
    EXPECT_EQ(large.cx, Extent().cx);
    EXPECT_EQ(large.cy, Extent().cy);
    SIZEL negative{-1, 5};
    EXPECT_EQ(E_INVALIDARG, As<IOleObject>()->SetExtent(DVASPECT_CONTENT, &negative));
    EXPECT_EQ(DV_E_DVASPECT, As<IOleObject>()->SetExtent(DVASPECT_ICON, &large));
}

TEST_F(Embedding, AnActiveControlAsksItsContainerForTheRoomThatItNeeds) {
    Place(true);
    site->position = {10, 10, 60, 40};
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
    EXPECT_GE(site->Count("OnPosRectChange"), 1);
    const SIZE size = WindowSize();
    EXPECT_GT(size.cx, 200);
    EXPECT_GT(size.cy, 120);
    EXPECT_EQ(size.cx, site->position.right - site->position.left);
    EXPECT_EQ(10, site->position.left);

    const int asked = site->Count("OnPosRectChange");
    Put(L"TimeWidth", 9000);
    EXPECT_GT(site->Count("OnPosRectChange"), asked);
    EXPECT_GT(WindowSize().cx, size.cx);

    const RECT larger{0, 0, 900, 500};
    EXPECT_EQ(S_OK, As<IOleInPlaceObject>()->SetObjectRects(&larger, &larger));
    EXPECT_EQ(900, WindowSize().cx);
    EXPECT_EQ(500, WindowSize().cy);
    EXPECT_NEAR(900.0 * 2540 / 96, Extent().cx, 30);
}

TEST_F(Embedding, TheWindowIsClippedToWhatItsContainerShows) {
    Place(true);
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
    struct Case {
        RECT clip;
        bool clipped;
    };
    const RECT place{10, 20, 610, 520};
    const Case cases[] = {{{0, 0, 700, 600}, false},
                          {{0, 0, 300, 600}, true},
                          {{0, 100, 700, 600}, true},
                          {{0, 0, 700, 600}, false},
                          {{0, 0, 0, 0}, false}};
    for (const Case& c : cases) {
        ASSERT_EQ(S_OK, As<IOleInPlaceObject>()->SetObjectRects(&place, &c.clip));
        struct Region {
            HRGN handle = CreateRectRgn(0, 0, 0, 0);
            ~Region() { DeleteObject(handle); }
        } region;
        const int kind = GetWindowRgn(Window(), region.handle);
        EXPECT_EQ(c.clipped, kind == SIMPLEREGION);
        if (!c.clipped) continue;
        RECT box{};
        GetRgnBox(region.handle, &box);
        RECT expected{};
        IntersectRect(&expected, &place, &c.clip);
        OffsetRect(&expected, -place.left, -place.top);
        EXPECT_TRUE(EqualRect(&expected, &box));
    }
}

TEST_F(Embedding, AContainerThatKeepsItsPlaceIsNotOverruled) {
    Place(true);
    site->followsPlace = false;
    site->position = {10, 10, 60, 40};
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
    EXPECT_TRUE(IsInPlaceActive());
    EXPECT_EQ(S_OK, As<IOleInPlaceObject>()->InPlaceDeactivate());
}

TEST_F(Embedding, AContainerMayCloseTheControlWhileItIsComingUp) {
    Place(true);
    site->position = {10, 10, 60, 40};
    site->onPosRectChange = [&] { As<IOleInPlaceObject>()->InPlaceDeactivate(); };
    site->followsPlace = false;
    DoVerb(OLEIVERB_INPLACEACTIVATE);
    EXPECT_EQ(site->Count("OnInPlaceActivate"), site->Count("OnInPlaceDeactivate"));
    EXPECT_FALSE(IsInPlaceActive());
    EXPECT_EQ(nullptr, GetWindow(site->Window(), GW_CHILD));
}

TEST_F(Embedding, WorksForContainersThatNeverInitialiseIt) {
    site->userMode.reset();
    site->hasFrame = false;
    control = Server::Get().CreateControl();
    site->Attach(control.Get());
    dispatch = As<IDispatch>();
    As<IOleObject>()->SetClientSite(site.Get());
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_UIACTIVATE));
    EXPECT_EQ(L"Set Date/Time", TextOf(L"Caption"));
    EXPECT_TRUE(Child(L"SysMonthCal32"));
    // Such containers let go of the site first.
    EXPECT_EQ(S_OK, As<IOleObject>()->SetClientSite(nullptr));
    EXPECT_EQ(1, site->Count("OnInPlaceDeactivate"));
    EXPECT_EQ(nullptr, GetWindow(site->Window(), GW_CHILD));
    EXPECT_EQ(S_OK, As<IOleObject>()->Close(OLECLOSE_NOSAVE));
}

TEST_F(Embedding, LastReferenceGoneWhileActiveLeavesNoWindow) {
    Place(true);
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_UIACTIVATE));
    As<IOleObject>()->Close(OLECLOSE_NOSAVE);
    site->Attach(nullptr);
    dispatch.Reset();
    control.Reset();
    EXPECT_EQ(nullptr, GetWindow(site->Window(), GW_CHILD));
}

TEST_F(Embedding, CloseSavesWhatIsDirtyWhenItIsToldTo) {
    Place(false);
    As<IOleObject>()->Close(OLECLOSE_SAVEIFDIRTY);
    EXPECT_EQ(0, site->Count("SaveObject"));
    Put(L"Caption", u"changed");
    As<IOleObject>()->Close(OLECLOSE_NOSAVE);
    EXPECT_EQ(0, site->Count("SaveObject"));
    As<IOleObject>()->Close(OLECLOSE_SAVEIFDIRTY);
    EXPECT_EQ(1, site->Count("SaveObject"));
}

TEST_F(Embedding, TheModeMayChangeUnderALivingControl) {
    Place(false);
    EXPECT_EQ(E_FAIL,
              [&] { return FAILED(Invoke(Members(), L"DataInUpload", DISPATCH_PROPERTYGET).hr) ? E_FAIL : S_OK; }());
    site->userMode = true;
    EXPECT_EQ(S_OK, As<IOleControl>()->OnAmbientPropertyChange(DISPID_AMBIENT_USERMODE));
    EXPECT_EQ(L"True", TextOf(L"DataInUpload"));
    site->userMode = false;
    EXPECT_EQ(S_OK, As<IOleControl>()->OnAmbientPropertyChange(DISPID_UNKNOWN));
    EXPECT_EQ(DISP_E_EXCEPTION, Invoke(Members(), L"DataInUpload", DISPATCH_PROPERTYGET).hr);
}

TEST_F(Embedding, ANewControlTakesTheContainersFont) {
    FONTDESC description{};
    description.cbSizeofstruct = sizeof(description);
    std::wstring face = L"Liberation Serif";
    description.lpstrName = face.data();
    description.cySize.int64 = 200000;
    description.sWeight = 400;
    ASSERT_EQ(S_OK, OleCreateFontIndirect(&description, IID_IDispatch, site->font.PutVoid()));
    Place(false);
    const Variant font = Get(L"Font");
    EXPECT_EQ(L"Liberation Serif", Text(comkit::Call(*font.Get().pdispVal, L"Name").Get()));
    const SIZEL large = Extent();
    Remove();
    site->font.Reset();
    Place(false);
    EXPECT_LT(Extent().cy, large.cy);
}

TEST_F(Embedding, MiscStatusUserTypeAndVerbsAreAnsweredFromCode) {
    Place(false);
    const auto object = As<IOleObject>();
    DWORD status = 0;
    EXPECT_EQ(S_OK, object->GetMiscStatus(DVASPECT_CONTENT, &status));
    EXPECT_EQ(0x20191u, status);
    EXPECT_EQ(S_OK, object->GetMiscStatus(DVASPECT_ICON, &status));
    EXPECT_EQ(0u, status) << "for its content only";
    CLSID clsid{};
    EXPECT_EQ(S_OK, object->GetUserClassID(&clsid));
    EXPECT_TRUE(IsEqualCLSID(CLSID_KivSetDateTime, clsid));
    LPOLESTR type = nullptr;
    EXPECT_EQ(S_OK, object->GetUserType(USERCLASSTYPE_FULL, &type));
    EXPECT_STREQ(L"Kiv Set Date/Time Control", type);
    CoTaskMemFree(type);
    EXPECT_EQ(S_OK, object->GetUserType(USERCLASSTYPE_SHORT, &type));
    EXPECT_STREQ(L"KivSetDateTime", type);
    CoTaskMemFree(type);
    ComPtr<IEnumOLEVERB> verbs;
    EXPECT_EQ(S_OK, object->EnumVerbs(verbs.Put()));
    OLEVERB verb{};
    EXPECT_EQ(S_OK, verbs->Next(1, &verb, nullptr));
    EXPECT_EQ(OLEIVERB_PRIMARY, verb.lVerb);
    CoTaskMemFree(verb.lpszVerbName);
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(S_OK, As<IProvideClassInfo2>()->GetClassInfo(info.Put()));
    GUID events{};
    EXPECT_EQ(S_OK, As<IProvideClassInfo2>()->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events));
    EXPECT_TRUE(IsEqualGUID(DIID___KivSetDateTime, events));
}

TEST_F(Embedding, DrawsThePictureOfTheControlActiveOrNot) {
    Place(true);
    const auto view = As<IViewObject2>();
    const auto colors = [&] {
        const comkit::WindowDc screen(nullptr);
        const comkit::UniqueMemoryDc dc(CreateCompatibleDC(screen.Get()));
        const comkit::UniqueBitmap bitmap(CreateCompatibleBitmap(screen.Get(), 400, 300));
        const comkit::GdiSelection selected(dc.Get(), bitmap.Get());
        PatBlt(dc.Get(), 0, 0, 400, 300, WHITENESS);
        const RECTL bounds{0, 0, 400, 300};
        EXPECT_EQ(S_OK,
                  view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc.Get(), &bounds, nullptr, nullptr, 0));
        std::vector<COLORREF> seen;
        for (int y = 0; y < 300; y += 3) {
            for (int x = 0; x < 400; x += 3) {
                const COLORREF color = GetPixel(dc.Get(), x, y);
                if (std::find(seen.begin(), seen.end(), color) == seen.end()) seen.push_back(color);
            }
        }
        return seen;
    };
    const auto inactive = colors();
    EXPECT_GE(inactive.size(), 4u) << "surround, frame, text and calendar title at least";
    EXPECT_FALSE(IsInPlaceActive());
    EXPECT_EQ(0, site->Count("OnInPlaceActivate"));
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
    EXPECT_GE(colors().size(), 4u);
    SIZEL extent{};
    EXPECT_EQ(S_OK, view->GetExtent(DVASPECT_CONTENT, -1, nullptr, &extent));
    EXPECT_EQ(Extent().cx, extent.cx);
    EXPECT_EQ(E_INVALIDARG,
              view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0));
    EXPECT_EQ(DV_E_DVASPECT, view->GetExtent(DVASPECT_THUMBNAIL, -1, nullptr, &extent));
}

TEST_F(Embedding, TabWalksTheChildrenAndThenLeaves) {
    Place(true);
    Put(L"UsePCDateTime", false);
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_UIACTIVATE));
    const auto active = As<IOleInPlaceActiveObject>();
    std::vector<HWND> visited{GetFocus()};
    for (int i = 0; i < 10 && site->Count("TranslateAccelerator") == 0; ++i) {
        MSG tab{GetFocus(), WM_KEYDOWN, VK_TAB, 0, 0, {}};
        active->TranslateAccelerator(&tab);
        if (GetFocus() != visited.back()) visited.push_back(GetFocus());
    }
    EXPECT_EQ(4u, visited.size());
    EXPECT_EQ(1, site->Count("TranslateAccelerator"));
    EXPECT_EQ(0u, site->keyModifiers);

    // With Ctrl it is the container's from the start.
    BYTE keys[256] = {};
    GetKeyboardState(keys);
    keys[VK_CONTROL] = 0x80;
    SetKeyboardState(keys);
    SetFocus(visited.front());
    MSG tab{GetFocus(), WM_KEYDOWN, VK_TAB, 0, 0, {}};
    active->TranslateAccelerator(&tab);
    keys[VK_CONTROL] = 0;
    SetKeyboardState(keys);
    EXPECT_EQ(visited.front(), GetFocus());
    EXPECT_EQ(2, site->Count("TranslateAccelerator"));
    EXPECT_EQ(2u, site->keyModifiers);
}

TEST_F(Embedding, AccessKeysOfTheCaptionsWorkFromTheContainer) {
    Place(true);
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
    CONTROLINFO info{};
    info.cb = sizeof(info);
    ASSERT_EQ(S_OK, As<IOleControl>()->GetControlInfo(&info));
    EXPECT_GE(info.cAccel, 1);
    EXPECT_TRUE(info.hAccel);
    MSG key{site->Window(), WM_SYSKEYDOWN, 'U', 0, 0, {}};
    EXPECT_EQ(S_OK, As<IOleControl>()->OnMnemonic(&key));
    EXPECT_EQ(L"False", TextOf(L"UsePCDateTime"));
}

TEST_F(Embedding, AClickMakesItUiActive) {
    site->documentWindow = comkit::MakeObject<RecordingFrame>(site->Window());
    Place(true);
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
    ASSERT_FALSE(site->IsUiActive());
    const HWND box = Child(L"Button", L"&Use PC System Date/Time?");
    SendMessageW(box, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    SendMessageW(box, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    EXPECT_TRUE(site->IsUiActive());
    EXPECT_TRUE(site->documentWindow->HasActiveObject());
    EXPECT_EQ(S_OK, As<IOleInPlaceObject>()->UIDeactivate());
    EXPECT_FALSE(site->IsUiActive());
    EXPECT_FALSE(site->documentWindow->HasActiveObject());
    EXPECT_TRUE(IsInPlaceActive());
    // Where there is nothing that takes the focus, too.
    SendMessageW(Window(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(0, 0));
    SendMessageW(Window(), WM_LBUTTONUP, 0, MAKELPARAM(0, 0));
    EXPECT_TRUE(site->IsUiActive());
}

}  // namespace
}  // namespace component
