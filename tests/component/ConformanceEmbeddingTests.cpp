// Embedding beyond the plain path: extents at the edges, ambient properties at run time, design time, refused edits,
// exact dirty state, containers with manners of their own.
#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <optional>

#include "ControlFixture.h"

namespace component {
namespace {

using comkit::ComPtr;
using comkit::Variant;

class Conformance : public ControlFixture {
protected:
    SIZEL Extent() {
        SIZEL extent{};
        EXPECT_EQ(S_OK, As<IOleObject>()->GetExtent(DVASPECT_CONTENT, &extent));
        return extent;
    }
    HRESULT AmbientChanged(DISPID id) { return As<IOleControl>()->OnAmbientPropertyChange(id); }
    std::wstring FontName() { return Text(comkit::Call(*Get(L"Font").Get().pdispVal, L"Name").Get()); }
    CallResult TryPut(const wchar_t* name, Variant value) {
        std::vector<Variant> args;
        args.push_back(std::move(value));
        return Invoke(Members(), name, DISPATCH_PROPERTYPUT, args);
    }
};

TEST_F(Conformance, EveryPositiveExtentIsTakenAndGrownToWhatIsNeeded) {
    Place(false);
    const SIZEL required = Extent();
    constexpr LONG Most = std::numeric_limits<LONG>::max();
    for (const SIZEL asked : {SIZEL{1, 1}, SIZEL{required.cx, required.cy}, SIZEL{required.cx + 1, required.cy + 1},
                              SIZEL{20001, 17003}, SIZEL{1000000, 1000000}, SIZEL{Most, Most}, SIZEL{0, 0}}) {
        SCOPED_TRACE(testing::Message() << asked.cx << " x " << asked.cy);
        SIZEL copy = asked;
        ASSERT_EQ(S_OK, As<IOleObject>()->SetExtent(DVASPECT_CONTENT, &copy));
        const SIZEL got = Extent();
        EXPECT_EQ(std::max(asked.cx, required.cx), got.cx);
        EXPECT_EQ(std::max(asked.cy, required.cy), got.cy);
        // What it answers it takes again unchanged, however often.
        for (int i = 0; i < 3; ++i) {
            copy = Extent();
            As<IOleObject>()->SetExtent(DVASPECT_CONTENT, &copy);
        }
        EXPECT_EQ(got.cx, Extent().cx);
        EXPECT_EQ(got.cy, Extent().cy);
        copy = required;
        As<IOleObject>()->SetExtent(DVASPECT_CONTENT, &copy);
    }
    SIZEL quick{15000, 12000};
    EXPECT_EQ(S_OK, As<IQuickActivate>()->SetContentExtent(&quick));
    EXPECT_EQ(15000, Extent().cx);
    SIZEL back{};
    EXPECT_EQ(S_OK, As<IQuickActivate>()->GetContentExtent(&back));
    EXPECT_EQ(12000, back.cy);
}

TEST_F(Conformance, AmbientFontAndColoursOfALaterDayLeaveTheControlsOwn) {
    site->font = ComPtr<IDispatch>::From(MakeFont(L"Liberation Serif", 12).Get());
    Place(false);
    EXPECT_EQ(L"Liberation Serif", FontName());
    const std::wstring back = TextOf(L"BackColor");
    const std::wstring fore = TextOf(L"ForeColor");
    site->font = ComPtr<IDispatch>::From(MakeFont(L"Liberation Mono", 9).Get());
    site->onAmbient = [](DISPID id, VARIANT& out) {
        if (id != DISPID_AMBIENT_BACKCOLOR && id != DISPID_AMBIENT_FORECOLOR) return false;
        out = Variant(0x123456).Detach();
        return true;
    };
    for (const DISPID id : std::initializer_list<DISPID>{DISPID_AMBIENT_FONT, DISPID_AMBIENT_BACKCOLOR,
                                                         DISPID_AMBIENT_FORECOLOR, DISPID_UNKNOWN})
        EXPECT_EQ(S_OK, AmbientChanged(id));
    EXPECT_EQ(L"Liberation Serif", FontName());
    EXPECT_EQ(back, TextOf(L"BackColor"));
    EXPECT_EQ(fore, TextOf(L"ForeColor"));
}

TEST_F(Conformance, AFontThatTheContainerChangesInPlaceShowsAtOnce) {
    const auto font = MakeFont(L"Liberation Sans", 8);
    site->font = ComPtr<IDispatch>::From(font.Get());
    Place(true);
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
    const auto notified = AdviseNotifications();
    const SIZEL small = Extent();
    comkit::Put(*site->font, L"Size", 30);
    EXPECT_GT(Extent().cy, small.cy);
    LOGFONTW used{};
    const auto handle = reinterpret_cast<HFONT>(SendMessageW(Child(L"SysMonthCal32"), WM_GETFONT, 0, 0));
    ASSERT_NE(0, GetObjectW(handle, sizeof(used), &used));
    EXPECT_LE(used.lfHeight, -35);
    EXPECT_EQ(S_OK, As<IPersistStreamInit>()->IsDirty());
    // The same for a font that was put in its place, and the former one counts no more.
    const auto another = MakeFont(L"Liberation Sans", 9);
    Put(L"Font", another.Get());
    const SIZEL plain = Extent();
    comkit::Put(*site->font, L"Size", 40);
    EXPECT_EQ(plain.cy, Extent().cy);
    comkit::Put(*ComPtr<IDispatch>::From(another.Get()), L"Size", 50);
    EXPECT_GT(Extent().cy, plain.cy);
    Remove();
    comkit::Put(*site->font, L"Size", 10);  // nobody is there any more
}

TEST_F(Conformance, TheContainerOfADeadUserInterfaceGetsNoInputThrough) {
    Place(true);
    site->uiDead = true;
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
    EXPECT_FALSE(IsWindowEnabled(Window()));
    site->uiDead = false;
    EXPECT_EQ(S_OK, AmbientChanged(DISPID_AMBIENT_UIDEAD));
    EXPECT_TRUE(IsWindowEnabled(Window()));
    site->uiDead = true;
    EXPECT_EQ(S_OK, AmbientChanged(DISPID_UNKNOWN));
    EXPECT_FALSE(IsWindowEnabled(Window()));
    Put(L"Enabled", false);
    Put(L"Enabled", true);
    EXPECT_FALSE(IsWindowEnabled(Window())) << "the container's word stands";
    EXPECT_EQ(L"True", TextOf(L"Enabled")) << "it is not the control's own state";
    Put(L"Enabled", false);
    site->uiDead = false;
    AmbientChanged(DISPID_AMBIENT_UIDEAD);
    EXPECT_FALSE(IsWindowEnabled(Window())) << "so does the control's";
}

TEST_F(Conformance, OtherAmbientPropertiesMayChangeAtAnyTime) {
    Place(true);
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_UIACTIVATE));
    const auto notified = AdviseNotifications();
    for (const DISPID id :
         std::initializer_list<DISPID>{DISPID_AMBIENT_LOCALEID, DISPID_AMBIENT_DISPLAYNAME, DISPID_AMBIENT_SCALEUNITS,
                                       DISPID_AMBIENT_DISPLAYASDEFAULT, 0, 4711, DISPID_UNKNOWN})
        EXPECT_EQ(S_OK, AmbientChanged(id));
    EXPECT_TRUE(notified->changed.empty());
    EXPECT_TRUE(site->IsUiActive());
}

TEST_F(Conformance, ARefusedEditRaisesAnErrorAndLeavesTheValue) {
    Place(false);
    const auto sink = AdviseNotifications();
    struct Case {
        const wchar_t* name;
        DISPID id;
        std::function<Variant()> value;
    };
    const Case cases[] = {{L"Caption", DISPID_CAPTION, [] { return Variant(u"refused"); }},
                          {L"BackColor", 1, [] { return Variant(255); }},
                          {L"Mode", 12, [] { return Variant(2); }},
                          {L"Enabled", DISPID_ENABLED, [] { return Variant(false); }},
                          {L"TimeWidth", 19, [] { return Variant(5000); }},
                          {L"UsePCDateTime", 20, [] { return Variant(false); }},
                          {L"StartOfWeek", 16, [] { return Variant(5); }},
                          {L"Font", 10, [] { return Variant(MakeFont(L"Liberation Mono", 9).Get()); }}};
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.name);
        const bool isFont = c.id == 10;
        const std::wstring before = isFont ? FontName() : TextOf(c.name);
        sink->refuses = c.id;
        const CallResult result = TryPut(c.name, c.value());
        EXPECT_EQ(DISP_E_EXCEPTION, result.hr);
        EXPECT_EQ(static_cast<HRESULT>(0x800A017F), result.scode);
        EXPECT_EQ(u"Property is read-only", result.description);
        EXPECT_EQ(before, isFont ? FontName() : TextOf(c.name));
        EXPECT_TRUE(sink->changed.empty());
        EXPECT_EQ(S_FALSE, As<IPersistStreamInit>()->IsDirty());
        sink->refuses = DISPID_UNKNOWN;
        EXPECT_EQ(S_OK, TryPut(c.name, c.value()).hr);
        EXPECT_EQ(1, std::count(sink->changed.begin(), sink->changed.end(), c.id));
        sink->changed.clear();
        As<IPersistStreamInit>()->InitNew();
    }
}

TEST_F(Conformance, DirtyIsWhatSavingWouldWriteAnew) {
    Place(false);
    const auto dirty = [&] { return As<IPersistStreamInit>()->IsDirty() == S_OK; };
    const auto bag = comkit::MakeObject<TestBag>();
    const auto save = [&](BOOL clear) { return As<IPersistPropertyBag>()->Save(bag.Get(), clear, FALSE); };
    EXPECT_FALSE(dirty());
    TryPut(L"Mode", Variant(9));
    TryPut(L"Caption", Variant(u"Set Date/Time"));
    EXPECT_FALSE(dirty()) << "neither an error nor the same value changes anything";
    Get(L"Caption");
    DoVerb(OLEIVERB_INPLACEACTIVATE);
    As<IOleInPlaceObject>()->InPlaceDeactivate();
    EXPECT_FALSE(dirty());
    Put(L"Caption", u"x");
    EXPECT_TRUE(dirty());
    EXPECT_EQ(S_OK, save(FALSE));
    EXPECT_TRUE(dirty());
    EXPECT_EQ(S_OK, save(TRUE));
    EXPECT_FALSE(dirty());
    comkit::Put(Members(), L"DataLMObject", 13, 7);
    EXPECT_TRUE(dirty());
    EXPECT_EQ(S_OK, As<IPersistPropertyBag>()->Load(bag.Get(), nullptr));
    EXPECT_FALSE(dirty());
}

TEST_F(Conformance, EachBadValueOfABagIsReportedByItsKey) {
    const auto bag = comkit::MakeObject<TestBag>();
    bag->Put(L"Mode", u"five");
    bag->Put(L"BackColor", u"red");
    bag->Put(L"DataLMObject3", u"");
    bag->Put(L"ShowToday", u"perhaps");
    bag->Put(L"StartOfWeek", 12);
    bag->Put(L"Caption", u"good");
    const auto log = comkit::MakeObject<TestErrorLog>();
    control = Server::Get().CreateControl();
    dispatch = As<IDispatch>();
    As<IOleObject>()->SetClientSite(site.Get());
    EXPECT_EQ(S_OK, As<IPersistPropertyBag>()->Load(bag.Get(), log.Get()));
    for (const wchar_t* key : {L"Mode", L"BackColor", L"DataLMObject3", L"ShowToday", L"StartOfWeek"})
        EXPECT_EQ(1, std::count(log->keys.begin(), log->keys.end(), key)) << testing::Message() << key;
    EXPECT_EQ(5u, log->keys.size());
    for (const HRESULT code : log->codes) EXPECT_EQ(static_cast<HRESULT>(0x800A017C), code);
    for (const std::wstring& source : log->sources) EXPECT_EQ(L"KivSetDateTime", source);
    EXPECT_EQ(L"good", TextOf(L"Caption"));
    EXPECT_EQ(L"0", TextOf(L"Mode"));
    EXPECT_EQ(L"1", TextOf(L"StartOfWeek"));
    EXPECT_EQ(S_FALSE, As<IPersistStreamInit>()->IsDirty());
}

/// The machine-wide value, or nothing.
std::optional<DWORD> RememberedChoice() {
    DWORD value = 0;
    DWORD size = sizeof(value);
    const LSTATUS status = RegGetValueW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\The Corvale Company\\Controls\\KivSetDateTime",
                                        L"UsePCDateTime", RRF_RT_REG_DWORD, nullptr, &value, &size);
    return status == ERROR_SUCCESS ? std::optional<DWORD>(value) : std::nullopt;
}

TEST_F(Conformance, DesignTimeTouchesNeitherRegistryNorClock) {
    Place(false);
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
    const auto events = AdviseEvents();
    SYSTEMTIME before{};
    SYSTEMTIME after{};
    SendMessageW(Child(L"SysDateTimePick32"), DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&before));
    const ULONGLONG end = GetTickCount64() + 1600;
    while (GetTickCount64() < end) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
        Sleep(20);
    }
    SendMessageW(Child(L"SysDateTimePick32"), DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&after));
    EXPECT_EQ(before.wSecond, after.wSecond);
    Put(L"UsePCDateTime", false);
    Put(L"UsePCDateTime", true);
    EXPECT_EQ(0, std::count(events->events.begin(), events->events.end(), DISPID{10}));
    Remove();
    EXPECT_FALSE(RememberedChoice());
}

TEST_F(Conformance, TheModeMayChangeBothWaysUnderALivingControl) {
    Place(false);
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
    Put(L"UsePCDateTime", false);
    site->userMode = true;
    EXPECT_EQ(S_OK, AmbientChanged(DISPID_AMBIENT_USERMODE));
    EXPECT_FALSE(RememberedChoice());
    EXPECT_EQ(382, static_cast<int>(TryPut(L"Mode", Variant(1)).scode & 0xFFFF));
    site->userMode = false;
    EXPECT_EQ(S_OK, AmbientChanged(DISPID_AMBIENT_USERMODE));
    EXPECT_EQ(0u, RememberedChoice().value_or(99)) << "leaving run mode stores the choice";
    EXPECT_EQ(S_OK, TryPut(L"Mode", Variant(1)).hr);
    Remove();
}

TEST_F(Conformance, KeysOfTheContainerAreAskedForAnewWhenTheyChange) {
    Place(true);
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
    EXPECT_GE(site->Count("OnControlInfoChanged"), 1);
    const auto keys = [&] {
        CONTROLINFO info{};
        info.cb = sizeof(info);
        EXPECT_EQ(S_OK, As<IOleControl>()->GetControlInfo(&info));
        return info.cAccel;
    };
    const int enabled = keys();
    Put(L"Caption", u"Date && time");
    EXPECT_EQ(enabled, keys()) << "two of them stand for the character itself";
    Put(L"Caption", u"Date && &time");
    EXPECT_EQ(enabled + 1, keys());
    const int told = site->Count("OnControlInfoChanged");
    Put(L"Enabled", false);
    EXPECT_GT(site->Count("OnControlInfoChanged"), told);
    EXPECT_LT(keys(), enabled);
    Remove();
    Place(false);
    ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
    const int before = site->Count("OnControlInfoChanged");
    Put(L"Mode", 1);
    EXPECT_GT(site->Count("OnControlInfoChanged"), before) << "another mode shows other captions";
}

}  // namespace
}  // namespace component
