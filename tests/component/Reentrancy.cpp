#include "Reentrancy.h"

#include <algorithm>
#include <iterator>
#include <set>

#include "ModalEnder.h"

namespace component {

using comkit::ComPtr;
using comkit::Variant;

namespace {

constexpr const wchar_t* UseSystem = L"&Use PC System Date/Time?";
constexpr const wchar_t* Daylight = L"&Automatically Adjust for Daylight Savings Time?";
constexpr int Deepest = 50;
constexpr LONG Slot = 3;

/// A user's input that raises one of the events, and the child that gets it.
struct Input {
    const wchar_t* windowClass;
    const wchar_t* caption;
    UINT message;
    WPARAM param;
    DISPID event;
};

// Event 1 is never raised.
constexpr Input SetInputs[] = {
    {L"Button", Daylight, BM_CLICK, 0, 2},
    {L"SysMonthCal32", L"", WM_LBUTTONDBLCLK, MK_LBUTTON, 3},
    {L"Button", L"Custom Date/Time", WM_LBUTTONDBLCLK, MK_LBUTTON, 3},
    {L"SysDateTimePick32", L"", WM_KEYUP, 'A', 4},
    {L"Button", Daylight, WM_CHAR, 'a', 5},
    {L"Button", Daylight, WM_KEYDOWN, 'A', 6},
    {L"Button", Daylight, WM_RBUTTONDOWN, 0, 7},
    {L"Button", Daylight, WM_MOUSEMOVE, 0, 8},
    {L"Button", Daylight, WM_RBUTTONUP, 0, 9},
};
constexpr Input ShowInputs[] = {
    {nullptr, nullptr, WM_LBUTTONUP, 0, DISPID_CLICK},
    {nullptr, nullptr, WM_LBUTTONDBLCLK, MK_LBUTTON, DISPID_DBLCLICK},
    {nullptr, nullptr, WM_KEYDOWN, 'A', DISPID_KEYDOWN},
    {nullptr, nullptr, WM_CHAR, 'a', DISPID_KEYPRESS},
    {nullptr, nullptr, WM_KEYUP, 'A', DISPID_KEYUP},
    {nullptr, nullptr, WM_RBUTTONDOWN, MK_RBUTTON, DISPID_MOUSEDOWN},
    {nullptr, nullptr, WM_MOUSEMOVE, 0, DISPID_MOUSEMOVE},
    {nullptr, nullptr, WM_RBUTTONUP, 0, DISPID_MOUSEUP},
};

bool IsIn(const std::set<std::wstring>& names, const Member& member) {
    return names.contains(member.name);
}

}  // namespace

void PrintTo(const Form& form, std::ostream* out) {
    *out << form.name;
}

ReentrancyFixture::ReentrancyFixture(const Form& which) : PersistenceFixture(*which.tested), form(which) {
    site->offersNoWindow = which.windowless;
    site->position = {20, 30, 346, IsSet() ? 330 : 43};
    Place(false);
    members = MembersOf(Members());
    Put(L"Caption", u"loaded");
    m_stream = SaveStream();
    Remove();
    for (const wchar_t* path : {L"h", L"m", L"s", L"M", L"d", L"y"}) m_variable->elements.emplace(path, Variant(5));
}

// --- Occasions -------------------------------------------------------------------------------------------------------

std::vector<Occasion> ReentrancyFixture::Events() {
    std::vector<Occasion> all = UserEvents();
    const auto add = [&](const char* name, DISPID id, std::function<void()> cause) {
        all.push_back({name, SinkCall::Event, id, std::move(cause)});
    };
    if (!IsSet()) {
        add("new data", 1, [this] {
            m_variable->elements[L"d"] = Variant(1 + ++m_number % 28);
            Variant variable(static_cast<IDispatch*>(m_variable.Get()));
            As<_KivShowDateTime>()->RefreshDisplay(&variable.Get());
        });
        add("a put of a setting", 1, [this] {
            const auto held = As<_KivShowDateTime>();
            VARIANT_BOOL shown = VARIANT_FALSE;
            held->get_ShowCentury(&shown);
            held->put_ShowCentury(shown ? VARIANT_FALSE : VARIANT_TRUE);
        });
        return all;
    }
    add("the box let go of", 10, [this] {
        // The device's date is asked for when the box is let go of.
        for (int i = 0; i < 2; ++i) Send(L"Button", UseSystem, BM_CLICK, 0);
    });
    add("a day chosen by key", 2, [this] { Send(L"SysMonthCal32", L"", WM_KEYDOWN, VK_LEFT); });
    const auto put = [this](const wchar_t* name, bool value) {
        const ComPtr<IDispatch> held = dispatch;
        comkit::Put(*held, name, value);
    };
    add("the box put", 2, [this, put] { put(L"UsePCDateTime", TextOf(L"UsePCDateTime") != L"True"); });
    add("Enabled put", 10, [put] { put(L"Enabled", true); });
    all.push_back({"the first activation", SinkCall::Event, 10,
                   [this] {
                       const auto held = As<IOleObject>();
                       held->DoVerb(OLEIVERB_UIACTIVATE, nullptr, site.Get(), 0, site->Window(), &site->position);
                   },
                   true, true});
    return all;
}

std::vector<Occasion> ReentrancyFixture::UserEvents() {
    std::vector<Occasion> all;
    const auto add = [&](const Input& input) {
        all.push_back({"input", SinkCall::Event, input.event, [this, input] {
                           if (input.message == WM_LBUTTONUP)
                               Send(input.windowClass, input.caption, WM_LBUTTONDOWN, MK_LBUTTON);
                           Send(input.windowClass, input.caption, input.message, input.param);
                       }});
    };
    if (IsSet()) {
        std::ranges::for_each(SetInputs, add);
    } else {
        std::ranges::for_each(ShowInputs, add);
    }
    return all;
}

std::vector<Occasion> ReentrancyFixture::Notifications() {
    // Slots do not ask, the direction of the device's data is no saved property, the show control's mode notifies
    // nobody.
    static const std::set<std::wstring> silent = {L"DataInUpload"};
    static const std::set<std::wstring> forDesigners = {L"Mode", L"ShowDST", L"ShowSeconds"};
    std::vector<Occasion> all;
    for (const Member& member : members) {
        if (!(member.kinds & INVOKE_PROPERTYPUT) || IsIn(silent, member) || (!IsSet() && member.name == L"Mode"))
            continue;
        const bool userMode = !IsSet() || !IsIn(forDesigners, member);
        const std::string name(member.name.begin(), member.name.end());
        const auto put = [this, &member] { PutAnother(member); };
        all.push_back({name + " changed", SinkCall::Changed, member.id, put, userMode});
        if (!member.isIndexed) all.push_back({name + " asked for", SinkCall::Requested, member.id, put, userMode});
    }
    return all;
}

void ReentrancyFixture::PlaceFor(const Occasion& next) {
    occasion = &next;
    depth = 0;
    m_number = 0;
    m_last.clear();
    site->position = {20, 30, 346, IsSet() ? 330 : 43};
    Place(next.userMode);
    if (IsSet() && next.userMode) Put(L"UsePCDateTime", false);
    LONG slot = 1;
    if (!IsSet()) {
        for (const wchar_t* path : {L"h", L"m", L"s", L"M", L"d", L"y"})
            comkit::Put(Members(), L"DataElementPath", slot++, path);
    }
    if (!next.inactive) {
        ASSERT_EQ(S_OK, DoVerb(OLEIVERB_UIACTIVATE));
    }
}

void ReentrancyFixture::Send(const wchar_t* windowClass, const wchar_t* caption, UINT id, WPARAM wParam) {
    if (!control) return;
    if (form.windowless) {
        LRESULT result = 0;
        const RECT& place = site->position;
        As<IOleInPlaceObjectWindowless>()->OnWindowMessage(id, wParam, MAKELPARAM(place.left + 4, place.top + 4),
                                                           &result);
    } else if (const HWND window = !Window() ? nullptr : windowClass ? Child(windowClass, caption) : Window()) {
        SendMessageW(window, id, wParam, MAKELPARAM(4, 4));
    }
}

// --- Values ----------------------------------------------------------------------------------------------------------

bool ReentrancyFixture::CanBePut(const Member& member) const {
    static const std::set<std::wstring> forDesigners = {L"Mode", L"ShowDST", L"ShowSeconds"};
    if (!(member.kinds & INVOKE_PROPERTYPUT)) return false;
    if (member.name == L"DataInUpload") return occasion->userMode;
    const bool designed = member.name == L"Mode" || (IsSet() && IsIn(forDesigners, member));
    return !designed || !occasion->userMode;
}

Variant ReentrancyFixture::Read(const Member& member) {
    const std::wstring& name = member.name;
    return member.isIndexed ? comkit::Call(Members(), name.c_str(), Slot) : Get(name.c_str());
}

Variant ReentrancyFixture::AnotherValue(const Member& member) {
    const std::wstring& name = member.name;
    const Variant now = Read(member);
    const LONG number = now.Type() == VT_I4 ? now.Get().lVal : now.Type() == VT_I2 ? now.Get().iVal : 0;
    ++m_number;
    if (member.value == VT_BOOL) return Variant(now.Get().boolVal == VARIANT_FALSE);
    if (member.value == VT_DISPATCH) return Variant(static_cast<IDispatch*>(m_fonts[m_number % 2].Get()));
    if (member.value == VT_BSTR) {
        if (name == L"DateDelimiter" || name == L"TimeDelimiter") return Variant(Text(now.Get()) == L"-" ? L"/" : L"-");
        const std::wstring text = L"text " + std::to_wstring(m_number);
        return Variant((name == L"AMPMFormat" ? text + L",p" : text).c_str());
    }
    // Without 1, the date alone, with which there is no daylight saving.
    if (name == L"Mode") return Variant(IsSet() ? 2 - number : 3 - number);
    if (name == L"StartOfWeek") return Variant(1 + number % 7);
    if (name == L"BorderStyle") return Variant(1 - number);
    if (name == L"DataType") return Variant((number + 1) % 4);
    if (name.ends_with(L"Height") || name.ends_with(L"Width")) return Variant(1500 + 15 * m_number);
    return Variant(1000 + m_number);
}

void ReentrancyFixture::Note(const Member& member, const VARIANT& value) {
    // Sizes of labels depend on one another and on the font.
    if (!IsSet() && (member.name.ends_with(L"Height") || member.name.ends_with(L"Width"))) return;
    m_last[member.id] = Shown(member, value);
    if (IsSet() && member.name == L"Mode") NoteDaylightSaving();
}

void ReentrancyFixture::NoteDaylightSaving() {
    const auto dst = std::ranges::find(members, L"ShowDST", &Member::name);
    m_last[dst->id] = L"True";
}

void ReentrancyFixture::PutAnother(const Member& member) {
    const ComPtr<IDispatch> held = dispatch;
    const Variant value = AnotherValue(member);
    Note(member, value.Get());
    std::vector<Variant> args;
    if (member.isIndexed) args.emplace_back(Slot);
    args.emplace_back();
    EXPECT_EQ(S_OK, args.back().CopyFrom(value.Get()));
    const CallResult result = Invoke(*held, member.name.c_str(), DISPATCH_PROPERTYPUT, args);
    EXPECT_EQ(S_OK, result.hr) << result.scode;
    if (occasion->id != member.id) return;
    // What a handler puts when it is asked comes before the value that it was asked about; what it puts when the mode
    // has changed, before the daylight saving that the mode brings with it.
    if (occasion->call == SinkCall::Requested && m_last.contains(member.id))
        m_last[member.id] = Shown(member, value.Get());
    if (occasion->call == SinkCall::Changed && IsSet() && member.name == L"Mode") NoteDaylightSaving();
}

std::wstring ReentrancyFixture::Shown(const Member& member, const VARIANT& value) {
    return member.value == VT_DISPATCH ? FontText(value) : Text(value);
}

void ReentrancyFixture::PutAll() {
    for (const Member& member : members)
        if (CanBePut(member)) PutAnother(member);
}

void ReentrancyFixture::ExpectLastValues() {
    for (const auto& [id, text] : m_last) {
        const auto member = std::ranges::find(members, id, &Member::id);
        const Variant now = Read(*member);
        EXPECT_EQ(text, Shown(*member, now.Get())) << testing::PrintToString(member->name);
    }
}

// --- Deeds -----------------------------------------------------------------------------------------------------------

void ReentrancyFixture::LoadFromWithin(bool fromBag) {
    const auto bag = comkit::MakeObject<TestBag>();
    bag->Put(L"Caption", u"loaded");
    EXPECT_EQ(S_OK, fromBag ? LoadBag(*bag) : LoadStream(m_stream));
    m_last.clear();
    const auto caption = std::ranges::find(members, L"Caption", &Member::name);
    m_last[caption->id] = L"loaded";
}

void ReentrancyFixture::PumpPostedInput() {
    const HWND window = Window() ? Window() : site->Window();
    PostMessageW(window, WM_MOUSEMOVE, 0, MAKELPARAM(2, 2));
    if (const HWND child = Window() ? GetWindow(Window(), GW_CHILD) : nullptr) {
        PostMessageW(child, WM_KEYDOWN, VK_SHIFT, 1);
        PostMessageW(child, WM_KEYUP, VK_SHIFT, static_cast<LPARAM>(0xC0000001));
    }
    MSG message{};
    int count = 0;
    while (count < 200 && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        ++count;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    EXPECT_GE(count, 1);
    EXPECT_LT(count, 200) << "messages without an end";
}

void ReentrancyFixture::ShowABox() {
    const ModalEnder ender;
    EXPECT_NE(0, MessageBoxW(site->Window(), L"from within", L"box", MB_OK));
}

std::vector<Deed> ReentrancyFixture::Deeds() {
    const auto extent = [this](LONG cx, LONG cy) {
        SIZEL size{cx, cy};
        EXPECT_EQ(S_OK, As<IOleObject>()->SetExtent(DVASPECT_CONTENT, &size));
    };
    const RECT larger{0, 0, 640, 560};
    return {
        {"puts every property", [this] { PutAll(); }, nullptr, true},
        {"loads from a bag", [this] { LoadFromWithin(true); }, nullptr, true},
        {"loads from a stream", [this] { LoadFromWithin(false); }, nullptr, true},
        {"saves", [this] { EXPECT_FALSE(SaveStream().empty()); }},
        {"saves to a bag", [this] { EXPECT_EQ(TextOf(L"Caption"), Text(*SaveBag(true)->Find(L"Caption"))); }},
        {"sets the extent", [=] { extent(18000, 15000); },
         [this] {
             if (occasion->call != SinkCall::Event) return;  // the property may be a size
             SIZEL size{};
             EXPECT_EQ(S_OK, As<IOleObject>()->GetExtent(DVASPECT_CONTENT, &size));
             EXPECT_GE(size.cx, 17900);
         }},
        {"moves it", [=, this] { EXPECT_EQ(S_OK, As<IOleInPlaceObject>()->SetObjectRects(&larger, &larger)); }},
        {"pumps messages", [this] { PumpPostedInput(); }, nullptr, true},
        {"shows a box", [this] { ShowABox(); }, nullptr, true},
        {"unadvises itself",
         [this] {
             Unadvise(control.Get(), occasion->call == SinkCall::Event ? tested.events : IID_IPropertyNotifySink,
                      deedCookie);
         }},
        {"unadvises all others",
         [this] {
             for (const DWORD cookie : otherCookies)
                 Unadvise(control.Get(), occasion->call == SinkCall::Event ? tested.events : IID_IPropertyNotifySink,
                          cookie);
         },
         nullptr, true},
        {"advises another",
         [this] {
             AdviseEvents();
             AdviseNotifications();
         }},
        {"raises it again",
         [this] {
             if (++depth <= Deepest) occasion->cause();
         },
         nullptr, true, true},
        {"hides", [this] { DoVerb(OLEIVERB_HIDE); }, nullptr, true},
        {"ends the windows and makes them anew",
         [this] {
             As<IOleInPlaceObject>()->InPlaceDeactivate();
             DoVerb(OLEIVERB_INPLACEACTIVATE);
         },
         nullptr, true},
        {"closes", [this] { As<IOleObject>()->Close(OLECLOSE_NOSAVE); }, nullptr, true},
        {"takes the site away", [this] { As<IOleObject>()->SetClientSite(nullptr); }, nullptr, true},
        {"lets go of the last reference", [this] { Remove(); }, nullptr, true},
    };
}

}  // namespace component
