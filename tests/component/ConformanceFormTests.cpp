// What holds for the set control, and for the show control with a window of its own and without one alike.
#include <windows.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <string>
#include <string_view>

#include "PersistenceFixture.h"
#include "Sheet.h"

namespace component {
namespace {

using comkit::ComPtr;
using comkit::Variant;

struct Form {
    const char* name;
    const TestedClass* tested;
    bool windowless;
};

void PrintTo(const Form& form, std::ostream* out) {
    *out << form.name;
}

/// Counts what it is told; for data and for views.
class ChangeSink final : public comkit::ComObject<ChangeSink, IAdviseSink> {
public:
    int data = 0;
    int view = 0;
    void STDMETHODCALLTYPE OnDataChange(FORMATETC*, STGMEDIUM*) override { ++data; }
    void STDMETHODCALLTYPE OnViewChange(DWORD, LONG) override { ++view; }
    void STDMETHODCALLTYPE OnRename(IMoniker*) override {}
    void STDMETHODCALLTYPE OnSave() override {}
    void STDMETHODCALLTYPE OnClose() override {}
};

template <class T>
ULONG References(T& object) {
    object.AddRef();
    return object.Release();
}

class EveryForm : public PersistenceFixture, public testing::WithParamInterface<Form> {
protected:
    EveryForm() : PersistenceFixture(*GetParam().tested) { NewSite(); }
    void TearDown() override {
        Remove();
        EXPECT_EQ(S_OK, Server::Get().CanUnload()) << "something of the control still lives";
    }
    void NewSite() {
        site = comkit::MakeObject<RecordingSite>();
        site->extenderName = std::wstring(tested.name) + L"1";
        site->offersNoWindow = GetParam().windowless;
        site->Attach(control.Get());
    }
    bool IsSet() const { return &tested == &SetClass; }
    bool IsInPlaceActive() const {
        const int entered = site->Count("OnInPlaceActivate") + site->Count("OnInPlaceActivateEx(windowless)");
        return entered > site->Count("OnInPlaceDeactivate");
    }
    SIZEL Extent() {
        SIZEL extent{};
        EXPECT_EQ(S_OK, As<IOleObject>()->GetExtent(DVASPECT_CONTENT, &extent));
        return extent;
    }
    HRESULT SetExtent(SIZEL extent) { return As<IOleObject>()->SetExtent(DVASPECT_CONTENT, &extent); }
    HRESULT AmbientChanged(DISPID id) { return As<IOleControl>()->OnAmbientPropertyChange(id); }
    /// How a put of the mode ends: it is for designers only.
    HRESULT PutMode(int mode) {
        std::vector<Variant> args;
        args.emplace_back(mode);
        const CallResult result = Invoke(Members(), L"Mode", DISPATCH_PROPERTYPUT, args);
        return result.hr == DISP_E_EXCEPTION ? result.scode : result.hr;
    }
    Sheet Drawn() {
        return Sheet([&](HDC dc) {
            const RECTL bounds{0, 0, Sheet::Width, Sheet::Height};
            EXPECT_EQ(S_OK, As<IViewObject2>()->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc, &bounds,
                                                     nullptr, nullptr, 0));
        });
    }
    std::wstring FontName() { return Text(comkit::Call(*Get(L"Font").Get().pdispVal, L"Name").Get()); }
};

constexpr HRESULT NotAtRunTime = static_cast<HRESULT>(0x800A017E);

TEST_P(EveryForm, VerbsMoveItThroughItsStates) {
    Place(true);
    for (const LONG verb : {LONG{OLEIVERB_SHOW}, LONG{OLEIVERB_INPLACEACTIVATE}}) {
        ASSERT_EQ(S_OK, DoVerb(verb));
        EXPECT_TRUE(IsInPlaceActive());
        EXPECT_EQ(GetParam().windowless, Window() == nullptr);
        EXPECT_FALSE(site->IsUiActive());
    }
    for (const LONG verb : {LONG{OLEIVERB_UIACTIVATE}, LONG{OLEIVERB_PRIMARY}}) {
        ASSERT_EQ(S_OK, DoVerb(OLEIVERB_HIDE));
        EXPECT_FALSE(site->IsUiActive());
        ASSERT_EQ(S_OK, DoVerb(verb));
        EXPECT_EQ(IsSet(), site->IsUiActive());
    }
    EXPECT_EQ(OLEOBJ_S_INVALIDVERB, DoVerb(99));
    EXPECT_EQ(E_NOTIMPL, DoVerb(-4711));
    EXPECT_EQ(S_OK, As<IOleObject>()->Close(OLECLOSE_NOSAVE));
    EXPECT_FALSE(IsInPlaceActive());
    EXPECT_EQ(site->Count("OnUIActivate"), site->Count("OnUIDeactivate"));
}

TEST_P(EveryForm, TheContainersOwnPropertyFrameIsTheOneThatIsShown) {
    Place(false);
    site->onCall = [](const char* call) {
        return std::string_view(call) == "ShowPropertyFrame" ? std::optional<HRESULT>(S_OK) : std::nullopt;
    };
    EXPECT_EQ(S_OK, DoVerb(OLEIVERB_PROPERTIES));
    EXPECT_EQ(1, site->Count("ShowPropertyFrame"));
}

TEST_P(EveryForm, QuickActivationDoesItAllInOneCall) {
    control = Server::Get().CreateControl(tested.clsid);
    site->Attach(control.Get());
    dispatch = As<IDispatch>();
    const auto notify = comkit::MakeObject<NotifySink>();
    const auto events = comkit::MakeObject<EventSink>();
    const auto view = comkit::MakeObject<ChangeSink>();
    QACONTAINER container{};
    container.cbSize = sizeof(container);
    container.pClientSite = site.Get();
    container.pAdviseSink = reinterpret_cast<IAdviseSinkEx*>(static_cast<IAdviseSink*>(view.Get()));
    container.pPropertyNotifySink = notify.Get();
    container.pUnkEventSink = events.Get();
    QACONTROL answer{};
    answer.cbSize = sizeof(answer);
    ASSERT_EQ(S_OK, As<IQuickActivate>()->QuickActivate(&container, &answer));
    DWORD status = 0;
    As<IOleObject>()->GetMiscStatus(DVASPECT_CONTENT, &status);
    EXPECT_EQ(status, answer.dwMiscStatus);
    EXPECT_TRUE(answer.dwViewStatus & VIEWSTATUS_OPAQUE);
    EXPECT_NE(0u, answer.dwEventCookie);
    ComPtr<IOleClientSite> sited;
    As<IOleObject>()->GetClientSite(sited.Put());
    EXPECT_EQ(static_cast<IOleClientSite*>(site.Get()), sited.Get());
    As<IPersistStreamInit>()->InitNew();
    Put(L"Caption", u"quick");
    EXPECT_EQ(std::vector<DISPID>{DISPID_CAPTION}, notify->changed);
    EXPECT_GT(view->view, 0);
    EXPECT_EQ(S_OK, Unadvise(control.Get(), IID_IPropertyNotifySink, answer.dwPropNotifyCookie));
    EXPECT_EQ(S_OK, Unadvise(control.Get(), tested.events, answer.dwEventCookie));
    EXPECT_EQ(sizeof(answer), answer.cbSize);
    container.cbSize = 4;
    EXPECT_EQ(E_INVALIDARG, As<IQuickActivate>()->QuickActivate(&container, &answer));
    container.cbSize = sizeof(container);
    answer.cbSize = 4;
    EXPECT_EQ(E_INVALIDARG, As<IQuickActivate>()->QuickActivate(&container, &answer));
}

TEST_P(EveryForm, EveryPositiveExtentIsTakenAndWhatItAnswersItTakesAgain) {
    constexpr LONG Most = std::numeric_limits<LONG>::max();
    for (const bool active : {false, true}) {
        Place(true);
        if (active) {
            ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
        }
        for (const SIZEL asked :
             {SIZEL{1, 1}, SIZEL{5000, 1}, SIZEL{1, 5000}, SIZEL{20001, 17003}, SIZEL{Most, Most}}) {
            SCOPED_TRACE(testing::Message() << asked.cx << " x " << asked.cy << (active ? " active" : ""));
            ASSERT_EQ(S_OK, SetExtent(asked));
            const SIZEL got = Extent();
            EXPECT_GT(got.cx, 0);
            EXPECT_GT(got.cy, 0);
            EXPECT_GE(got.cx, std::min(asked.cx, 5000L)) << "no smaller than asked for";
            for (int i = 0; i < 3; ++i) EXPECT_EQ(S_OK, SetExtent(Extent()));
            EXPECT_EQ(got.cx, Extent().cx);
            EXPECT_EQ(got.cy, Extent().cy);
        }
        Remove();
    }
}

TEST_P(EveryForm, UnsitingSucceedsInEveryState) {
    const LONG none = 4711;
    for (const bool userMode : {false, true}) {
        for (const LONG verb : {none, LONG{OLEIVERB_SHOW}, LONG{OLEIVERB_HIDE}, LONG{OLEIVERB_UIACTIVATE}}) {
            SCOPED_TRACE(verb);
            NewSite();
            Place(userMode);
            if (verb != none) {
                EXPECT_EQ(S_OK, DoVerb(verb));
            }
            for (int i = 0; i < 2; ++i) EXPECT_EQ(S_OK, As<IOleObject>()->SetClientSite(nullptr));
            EXPECT_FALSE(IsInPlaceActive());
            EXPECT_EQ(nullptr, GetWindow(site->Window(), GW_CHILD));
            EXPECT_FALSE(site->IsUiActive());
            ComPtr<IOleClientSite> left;
            EXPECT_EQ(S_OK, As<IOleObject>()->GetClientSite(left.Put()));
            EXPECT_FALSE(left);
            EXPECT_EQ(L"True", TextOf(L"Enabled"));
            EXPECT_EQ(S_OK, As<IOleObject>()->SetClientSite(site.Get()));
            EXPECT_EQ(S_OK, DoVerb(OLEIVERB_SHOW));
            Remove();
        }
    }
    control = Server::Get().CreateControl(tested.clsid);
    EXPECT_EQ(S_OK, As<IOleObject>()->SetClientSite(nullptr));
    EXPECT_EQ(S_OK, As<IOleObject>()->Close(OLECLOSE_SAVEIFDIRTY));
}

TEST_P(EveryForm, CallsAfterTheEndAreHarmless) {
    Place(true);
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_UIACTIVATE));
    As<IOleObject>()->Close(OLECLOSE_NOSAVE);
    As<IOleObject>()->SetClientSite(nullptr);
    const auto active = As<IOleInPlaceActiveObject>();
    MSG tab{site->Window(), WM_KEYDOWN, VK_TAB, 0, 0, {}};
    EXPECT_EQ(S_FALSE, active->TranslateAccelerator(&tab));
    EXPECT_EQ(S_FALSE, As<IOleControl>()->OnMnemonic(&tab));
    if (const auto windowless = As<IOleInPlaceObjectWindowless>()) {
        LRESULT result = 1;
        for (const UINT id : {UINT{WM_LBUTTONDOWN}, UINT{WM_MOUSEMOVE}, UINT{WM_LBUTTONUP}, UINT{WM_KEYDOWN}})
            EXPECT_EQ(S_FALSE, windowless->OnWindowMessage(id, MK_LBUTTON, MAKELPARAM(25, 35), &result));
        EXPECT_EQ(0, result);
    }
    const RECT rect{0, 0, 10, 10};
    EXPECT_EQ(S_OK, As<IOleInPlaceObject>()->SetObjectRects(&rect, &rect));
    EXPECT_EQ(S_OK, As<IOleInPlaceObject>()->UIDeactivate());
    EXPECT_EQ(S_OK, As<IOleInPlaceObject>()->InPlaceDeactivate());
    EXPECT_EQ(S_OK, As<IOleObject>()->Close(OLECLOSE_SAVEIFDIRTY));
    EXPECT_EQ(S_OK, AmbientChanged(DISPID_UNKNOWN));
    EXPECT_TRUE(FAILED(DoVerb(OLEIVERB_SHOW)));
    CONTROLINFO info{};
    info.cb = sizeof(info);
    EXPECT_EQ(S_OK, As<IOleControl>()->GetControlInfo(&info));
    EXPECT_EQ(0, info.cAccel);
}

TEST_P(EveryForm, WhatTheContainerGaveIsLetGoOfAtTheEnd) {
    const std::function<void()> ends[] = {[&] { As<IOleObject>()->Close(OLECLOSE_NOSAVE); },
                                          [&] { As<IOleObject>()->SetClientSite(nullptr); }};
    for (const auto& end : ends) {
        NewSite();
        const ULONG frameAlone = References(site->Frame());
        Place(true);
        const ULONG sited = References(*site.Get());
        const auto events = AdviseEvents();
        const auto notified = AdviseNotifications();
        const auto changes = comkit::MakeObject<ChangeSink>();
        FORMATETC format{CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, -1, TYMED_ENHMF};
        DWORD cookie = 0;
        ASSERT_EQ(S_OK, As<IDataObject>()->DAdvise(&format, 0, changes.Get(), &cookie));
        ASSERT_EQ(S_OK, As<IViewObject>()->SetAdvise(DVASPECT_CONTENT, 0, changes.Get()));
        ASSERT_EQ(S_OK, DoVerb(OLEIVERB_UIACTIVATE));
        EXPECT_GT(References(site->Frame()), frameAlone);
        EXPECT_EQ(S_OK, As<IOleInPlaceObject>()->UIDeactivate());
        EXPECT_FALSE(site->IsUiActive()) << "the frame holds it no longer";
        ASSERT_EQ(S_OK, DoVerb(OLEIVERB_UIACTIVATE));
        end();
        EXPECT_EQ(frameAlone, References(site->Frame()));
        EXPECT_LE(References(*site.Get()), sited) << "what it held as the place of its windows";
        EXPECT_EQ(1u, References(*events.Get()));
        EXPECT_EQ(1u, References(*notified.Get()));
        EXPECT_EQ(1u, References(*changes.Get()));
        notified->changed.clear();
        Put(L"Caption", u"nobody hears of it");
        EXPECT_TRUE(notified->changed.empty());
        As<IOleObject>()->SetClientSite(nullptr);
        EXPECT_EQ(1u, References(*site.Get()));
        Remove();
    }
}

TEST_P(EveryForm, ManySinksHearEachChangeAndOneMayLeaveWhileItIsCalled) {
    Place(false);
    Put(L"Caption", u"nobody listens");
    const auto leaving = AdviseNotifications();
    const DWORD cookie = notifyCookie;
    const auto one = AdviseNotifications();
    const auto two = AdviseNotifications();
    leaving->onChanged = [&](DISPID) { return Unadvise(control.Get(), IID_IPropertyNotifySink, cookie); };
    Put(L"Caption", u"first");
    Put(L"Caption", u"second");
    EXPECT_EQ(1u, leaving->changed.size());
    for (const auto& sink : {one, two}) EXPECT_EQ((std::vector<DISPID>(2, DISPID_CAPTION)), sink->changed);
    const auto ole = As<IOleControl>();
    ole->FreezeEvents(TRUE);
    ole->FreezeEvents(TRUE);
    Put(L"Caption", u"third");
    Put(L"Caption", u"fourth");
    ole->FreezeEvents(FALSE);
    EXPECT_EQ(2u, one->changed.size()) << "freezing nests";
    ole->FreezeEvents(FALSE);
    EXPECT_EQ(3u, one->changed.size()) << "and what was held back is told once";
}

TEST_P(EveryForm, SavingMakesItCleanOnlyWhereItIsToldTo) {
    Place(false);
    const std::pair<const char*, std::function<HRESULT(BOOL)>> ways[] = {
        {"bag",
         [&](BOOL clear) {
             return As<IPersistPropertyBag>()->Save(comkit::MakeObject<TestBag>().Get(), clear, FALSE);
         }},
        {"stream", [&](BOOL clear) { return As<IPersistStreamInit>()->Save(StreamOf({}).Get(), clear); }},
    };
    int number = 0;
    for (const auto& [name, save] : ways) {
        SCOPED_TRACE(name);
        Put(L"Caption", std::to_wstring(++number).c_str());
        EXPECT_TRUE(IsDirty());
        EXPECT_EQ(S_OK, save(FALSE));
        EXPECT_TRUE(IsDirty()) << "a copy was saved, not the document";
        EXPECT_EQ(S_OK, save(TRUE));
        EXPECT_FALSE(IsDirty());
    }
    Put(L"Caption", u"other");
    ComPtr<IStorage> storage;
    ASSERT_EQ(S_OK,
              StgCreateDocfile(nullptr, STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE | STGM_DELETEONRELEASE, 0,
                               storage.Put()));
    for (const bool own : {false, true}) {
        EXPECT_EQ(S_OK, As<IPersistStorage>()->Save(storage.Get(), own));
        EXPECT_TRUE(IsDirty());
        EXPECT_EQ(S_OK, As<IPersistStorage>()->SaveCompleted(nullptr));
        EXPECT_EQ(!own, IsDirty());
    }
}

TEST_P(EveryForm, ANewControlTakesTheContainersFontAndShowsItsChanges) {
    site->font = ComPtr<IDispatch>::From(MakeFont(L"Liberation Serif", 9).Get());
    Place(true);
    EXPECT_EQ(L"Liberation Serif", FontName());
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
    const auto changes = comkit::MakeObject<ChangeSink>();
    ASSERT_EQ(S_OK, As<IViewObject>()->SetAdvise(DVASPECT_CONTENT, 0, changes.Get()));
    site->outdated.clear();
    const Sheet small = Drawn();
    EXPECT_FALSE(IsDirty());
    comkit::Put(*site->font, L"Size", 24);
    EXPECT_GT(Drawn().DifferenceTo(small), 0.01);
    EXPECT_GT(changes->view + static_cast<int>(site->outdated.size()), 0) << "somebody is told to draw it anew";
    EXPECT_TRUE(IsDirty());
    site->font = ComPtr<IDispatch>::From(MakeFont(L"Liberation Mono", 9).Get());
    EXPECT_EQ(S_OK, AmbientChanged(DISPID_AMBIENT_FONT));
    EXPECT_EQ(L"Liberation Serif", FontName()) << "which one it has is saved with it from then on";
}

TEST_P(EveryForm, AFontOfItsOwnShowsItsChangesFromWhenItIsAskedFor) {
    Place(true);
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
    const Sheet small = Drawn();
    const Variant font = Get(L"Font");
    EXPECT_FALSE(IsDirty());
    comkit::Put(*font.Get().pdispVal, L"Size", 24);
    EXPECT_GT(Drawn().DifferenceTo(small), 0.01);
    EXPECT_TRUE(IsDirty());
    Remove();
    comkit::Put(*font.Get().pdispVal, L"Size", 10);  // nobody is there any more
}

TEST_P(EveryForm, AContainerThatDoesNotTellTheModeRunsAndTheModeMayChangeBothWays) {
    site->userMode.reset();
    control = Server::Get().CreateControl(tested.clsid);
    site->Attach(control.Get());
    dispatch = As<IDispatch>();
    ASSERT_EQ(S_OK, As<IOleObject>()->SetClientSite(site.Get()));
    ASSERT_EQ(S_OK, As<IPersistStreamInit>()->InitNew());
    EXPECT_EQ(NotAtRunTime, PutMode(2));
    Remove();

    Place(false);
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
    for (const bool userMode : {false, true, false, true}) {
        site->userMode = userMode;
        EXPECT_EQ(S_OK, AmbientChanged(userMode ? DISPID_AMBIENT_USERMODE : DISPID_UNKNOWN));
        for (const int mode : {1, 2}) EXPECT_EQ(userMode ? NotAtRunTime : S_OK, PutMode(mode));
        EXPECT_EQ(L"2", TextOf(L"Mode"));
    }
}

TEST_P(EveryForm, ADeadUserInterfaceTakesNoInput) {
    Place(true);
    site->uiDead = true;
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
    const auto takesInput = [&] {
        if (!GetParam().windowless) return IsWindowEnabled(Window()) != FALSE;
        LRESULT result = 0;
        return As<IOleInPlaceObjectWindowless>()->OnWindowMessage(WM_MOUSEMOVE, 0, MAKELPARAM(30, 35), &result) == S_OK;
    };
    EXPECT_FALSE(takesInput());
    site->uiDead = false;
    EXPECT_EQ(S_OK, AmbientChanged(DISPID_AMBIENT_UIDEAD));
    EXPECT_TRUE(takesInput());
    site->uiDead = true;
    EXPECT_EQ(S_OK, AmbientChanged(DISPID_UNKNOWN));
    EXPECT_FALSE(takesInput());
    EXPECT_EQ(L"True", TextOf(L"Enabled")) << "it is not the control's own state";
}

TEST_P(EveryForm, MessagesWithoutTheirStructureAreIgnored) {
    Place(true);
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
    for (const UINT id : {UINT{WM_NOTIFY}, UINT{WM_HELP}}) {
        LRESULT result = 0;
        if (Window()) SendMessageW(Window(), id, 0, 0);
        if (GetParam().windowless) As<IOleInPlaceObjectWindowless>()->OnWindowMessage(id, 0, 0, &result);
    }
    Put(L"Caption", u"alive");
    EXPECT_EQ(L"alive", TextOf(L"Caption"));
}

INSTANTIATE_TEST_SUITE_P(Of, EveryForm,
                         testing::Values(Form{"TheSetControl", &SetClass, false},
                                         Form{"TheShowControlInAWindow", &ShowClass, false},
                                         Form{"TheShowControlWithoutAWindow", &ShowClass, true}),
                         [](const auto& form) { return form.param.name; });

}  // namespace
}  // namespace component
