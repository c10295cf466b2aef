// Random user input on both controls, with a container that does what it likes in between:
// nothing ends the process, what is shown stays a date and a time, and nothing is written that nobody asked to write.
#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <utility>

#include "ControlFixture.h"
#include "InstalledSimulator.h"
#include "ModalEnder.h"
#include "RandomLives.h"
#include "tests/Effort.h"

namespace component {
namespace {

using comkit::ComPtr;
using comkit::Variant;

constexpr long EventsInAll = 20000;

/// The container's window belongs to the test: it is not moved or closed by the keys that the control passes on.
LRESULT CALLBACK KeepOpen(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    if (id == WM_CLOSE || id == WM_SYSCOMMAND) return 0;
    return DefWindowProcW(window, id, wParam, lParam);
}

/// How a control lives.
struct Setting {
    std::uint32_t number;
    const TestedClass* tested;
    bool userMode;
    bool windowless;
};
constexpr Setting Settings[] = {
    {0, &SetClass, true, false},  {1, &SetClass, true, false},  {2, &SetClass, true, false},
    {3, &SetClass, false, false}, {4, &ShowClass, true, false}, {5, &ShowClass, true, true},
};

class RandomInput : public ControlFixture, public testing::WithParamInterface<Setting> {
protected:
    RandomInput() : ControlFixture(*GetParam().tested), choices(Seed() + GetParam().number), user(choices) {
        SetWindowLongPtrW(site->Window(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&KeepOpen));
        user.filter = [this](MSG& message) {
            const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
            const auto object = control ? As<IOleInPlaceActiveObject>() : nullptr;
            return isKey && object && object->TranslateAccelerator(&message) == S_OK;
        };
    }

    bool IsSet() const { return &tested == &SetClass; }

    void Begin() {
        const Setting& setting = GetParam();
        site->offersNoWindow = setting.windowless;
        site->position = {20, 30, 320, IsSet() ? 330 : 60};
        Place(false);
        mode = IsSet() ? choices.Between(0, 2) : choices.Between(1, 2);
        Put(L"Mode", mode);
        Put(L"ShowSeconds", choices.OneIn(2));
        if (IsSet()) Put(L"ShowDST", choices.OneIn(2));
        Bind();
        site->userMode = setting.userMode;
        As<IOleControl>()->OnAmbientPropertyChange(DISPID_AMBIENT_USERMODE);
        if (IsSet() && setting.userMode) Put(L"UsePCDateTime", choices.OneIn(4));
        ASSERT_EQ(S_OK, DoVerb(choices.OneIn(2) ? OLEIVERB_UIACTIVATE : OLEIVERB_INPLACEACTIVATE));
        if (setting.windowless) {
            user.windowless = [this](UINT id, WPARAM wParam, LPARAM lParam) {
                LRESULT result = 0;
                As<IOleInPlaceObjectWindowless>()->OnWindowMessage(id, wParam, lParam, &result);
            };
        }
        ownChildren = CountChildren();
    }
    void Bind() {
        const wchar_t* const set[] = {L"nciClockFormat", L"nciDaylightSaving", L"nvoHour",      L"nvoMinute",
                                      L"nvoSecond",      L"nvoMonth",          L"nvoDay",       L"nvoYear",
                                      L"nviSetHour",     L"nviSetMinute",      L"nviSetSecond", L"nviSetMonth",
                                      L"nviSetDay",      L"nviSetYear"};
        const wchar_t* const show[] = {L"nciClockFormat", L"nvoHour", L"nvoMinute", L"nvoSecond",
                                       L"nvoMonth",       L"nvoDay",  L"nvoYear"};
        LONG slot = 0;
        const auto bind = [&](const wchar_t* name) {
            comkit::Put(Members(), L"DataLMObject", slot, 1);
            comkit::Put(Members(), L"DataVariableName", slot++, name);
        };
        if (IsSet()) {
            std::ranges::for_each(set, bind);
        } else {
            std::ranges::for_each(show, bind);
        }
    }

    // --- What a container does ---------------------------------------------------------------------------------------

    void Deed() {
        switch (choices.Below(16)) {
            case 0:
                return TranslateKey();
            case 1:
                return MoveTo();
            case 2:
                return Put(L"Enabled", !choices.OneIn(4));
            case 3:
                return PutMode();
            case 4:
                As<IOleInPlaceObject>()->UIDeactivate();
                return;
            case 5: {
                constexpr LONG Verbs[] = {OLEIVERB_PRIMARY,   OLEIVERB_SHOW,       OLEIVERB_OPEN,
                                          OLEIVERB_HIDE,      OLEIVERB_UIACTIVATE, OLEIVERB_INPLACEACTIVATE,
                                          OLEIVERB_UIACTIVATE};
                DoVerb(choices.Of(Verbs));
                return;
            }
            case 6:
                As<IOleInPlaceObject>()->InPlaceDeactivate();
                return;
            case 7:
            case 8:
                return Deliver();
            case 9:
                return PutAppearance();
            case 10:
                if (IsSet()) return Put(L"UsePCDateTime", choices.OneIn(2));
                break;
            case 11:
                return Write();
            case 12:
                As<IOleInPlaceActiveObject>()->OnFrameWindowActivate(choices.OneIn(2));
                As<IOleInPlaceActiveObject>()->OnDocWindowActivate(choices.OneIn(2));
                return;
            case 13:
                ShowWindow(site->Window(), choices.OneIn(2) ? SW_HIDE : SW_SHOWNA);
                EnableWindow(site->Window(), !choices.OneIn(3));
                return;
            case 14:
                As<IOleControl>()->FreezeEvents(choices.OneIn(2));
                return;
            default:
                if (choices.OneIn(6)) comkit::Call(Members(), L"ShowAboutBox");
        }
        DoVerb(OLEIVERB_UIACTIVATE);
    }
    void TranslateKey() {
        MSG message{Window(), choices.OneIn(4) ? UINT{WM_SYSKEYDOWN} : UINT{WM_KEYDOWN}, choices.Below(256), 1, 0, {}};
        As<IOleInPlaceActiveObject>()->TranslateAccelerator(&message);
        MSG mnemonic{Window(), WM_SYSCHAR, choices.Below(128), 1, 0, {}};
        As<IOleControl>()->OnMnemonic(&mnemonic);
    }
    void MoveTo() {
        const int left = choices.Between(-500, 500);
        const int top = choices.Between(-500, 500);
        const bool huge = choices.OneIn(10);
        const RECT place{left, top, left + choices.Between(0, huge ? 30000 : 700),
                         top + choices.Between(0, huge ? 30000 : 600)};
        As<IOleInPlaceObject>()->SetObjectRects(&place, &place);
    }
    void PutMode() {
        const int wanted = choices.Between(0, 3);
        std::vector<Variant> value;
        value.emplace_back(wanted);
        const CallResult result = Invoke(Members(), L"Mode", DISPATCH_PROPERTYPUT, value);
        if (result.hr == S_OK) mode = wanted;
        EXPECT_TRUE(result.hr != S_OK || !GetParam().userMode) << "at run time it cannot be put";
    }
    void PutAppearance() {
        const wchar_t* const texts[] = {L"", L"&Caption", L"a longer caption that will not fit"};
        Put(L"Caption", choices.Of(texts));
        Put(L"BackColor", static_cast<std::int32_t>(choices.Below(0x1000000)));
        if (!IsSet()) return Put(L"ShowLongDay", choices.OneIn(2));
        Put(L"StartOfWeek", choices.Between(1, 7));
        Put(L"ShowToday", choices.OneIn(2));
    }
    /// Values of the device, as they come while somebody sets its clock.
    void Deliver() {
        const std::pair<const wchar_t*, int> limits[] = {
            {L"nvoHour", 23}, {L"nvoMinute", 59}, {L"nvoSecond", 59},        {L"nvoMonth", 12},
            {L"nvoDay", 31},  {L"nvoYear", 2100}, {L"nciDaylightSaving", 1}, {L"nciClockFormat", 1}};
        for (int i = 0; i < 3; ++i) {
            const auto& [name, most] = choices.Of(limits);
            const int value = choices.OneIn(20) ? choices.Between(-40000, 40000) : choices.Between(0, most);
            std::vector<Variant> arguments;
            arguments.emplace_back(name);
            arguments.emplace_back(std::to_wstring(value).c_str());
            Invoke(*device, L"Value", DISPATCH_PROPERTYPUT, arguments);  // which not every variable can take
        }
        comkit::Call(*device, L"Refresh");
    }
    /// The only thing that may write to the device.
    void Write() {
        if (!IsSet() || !GetParam().userMode) return;
        EXPECT_EQ(0, Writes());
        const bool reads = choices.OneIn(2);
        Put(L"DataInUpload", reads);
        if (reads) {
            EXPECT_EQ(0, Writes());
        }
        comkit::Call(*device, L"ClearLog");
    }

    // --- What has to be true after it --------------------------------------------------------------------------------

    long Writes() const {
        const LONG count = comkit::Call(*device, L"LogCount").Get().lVal;
        long writes = 0;
        for (LONG i = std::max<LONG>(0, count - 1900); i < count; ++i)
            writes += Text(comkit::Call(*device, L"LogLine", i).Get()).rfind(L"write value", 0) == 0;
        return writes;
    }
    static BOOL CALLBACK CountOne(HWND, LPARAM count) {
        ++*reinterpret_cast<long*>(count);
        return TRUE;
    }
    long CountChildren() const {
        long count = 0;
        if (Window()) EnumChildWindows(Window(), &CountOne, reinterpret_cast<LPARAM>(&count));
        return count;
    }
    void Check() {
        EXPECT_EQ(std::to_wstring(mode), TextOf(L"Mode"));
        EXPECT_EQ(0, Writes());
        comkit::Call(*device, L"ClearLog");
        if (IsSet()) CheckDateAndTime();
        const HWND window = Window();
        if (GetParam().windowless) {
            EXPECT_EQ(nullptr, window);
        }
        if (!window) return;
        EXPECT_EQ(site->Window(), GetParent(window));
        EXPECT_EQ(window, GetWindow(site->Window(), GW_CHILD)) << "nothing else was left in the container";
        EXPECT_EQ(nullptr, GetWindow(window, GW_HWNDNEXT));
        const long children = CountChildren();
        EXPECT_GE(children, ownChildren);
        EXPECT_LE(children, ownChildren + 2) << "but for the calendar's year and its spin buttons";
    }
    void CheckDateAndTime() {
        Variant date;
        Variant time;
        VARIANT_BOOL dst = VARIANT_FALSE;
        EXPECT_EQ(S_OK, As<_KivSetDateTime>()->GetDateTimeInfo(&date.Get(), &time.Get(), &dst));
        for (const Variant* const value : {&date, &time}) {
            ASSERT_EQ(VT_DATE, value->Type());
            SYSTEMTIME parts{};
            EXPECT_TRUE(VariantTimeToSystemTime(value->Get().date, &parts)) << value->Get().date;
            EXPECT_GE(parts.wYear, 1753);
            EXPECT_LE(parts.wYear, 9999);
        }
        EXPECT_EQ(date.Get().date, std::floor(date.Get().date)) << "a date has no time";
        EXPECT_TRUE(dst == VARIANT_TRUE || dst == VARIANT_FALSE);
        SYSTEMTIME shown{};
        const HWND calendar = Window() ? Child(L"SysMonthCal32") : nullptr;
        if (!calendar || !SendMessageW(calendar, MCM_GETCURSEL, 0, reinterpret_cast<LPARAM>(&shown))) return;
        shown.wHour = shown.wMinute = shown.wSecond = shown.wMilliseconds = 0;
        DOUBLE asDate = 0;
        EXPECT_TRUE(SystemTimeToVariantTime(&shown, &asDate));
        EXPECT_EQ(asDate, date.Get().date) << "what it says is what it shows";
    }

    /// One control from its placing to its end.
    void Live() {
        Begin();
        const auto sink = AdviseEvents();
        for (int done = 0; done < EventsOfALife && !HasFailure(); done += EventsOfABatch) {
            for (int i = 0; i < EventsOfABatch; ++i) user.Act(site->Window(), Window());
            Deed();
            user.Pump();
            Check();
        }
        SetKeyboardState(std::array<BYTE, 256>{}.data());
        ReleaseCapture();
        EXPECT_LE(sink->events.size(), EventsOfALife * 20U) << "events that nobody caused";
        user.windowless = nullptr;
        Remove();
        user.Pump();
        EXPECT_EQ(nullptr, GetWindow(site->Window(), GW_CHILD));
        EnableWindow(site->Window(), TRUE);
        ForgetRememberedChoice();
        site->outdated.clear();
        EXPECT_EQ(S_OK, Server::Get().CanUnload()) << "something of the control still lives";
    }

    static void TearDownTestSuite() {
        std::printf(
            "%ld events, seed %u: %+ld heap blocks, %+ld drawing objects of the controls' own in the second halves\n",
            events, Seed(), gained.heapBlocks, gained.gdiObjects);
    }

    static inline long events = 0;
    static inline Holdings gained;
    Choices choices;
    RandomUser user;
    const ModalEnder boxes;
    const InstalledSimulator simulator;
    ComPtr<IDispatch> device = InstalledSimulator::Make(L"VexaSimulator.Device");
    int mode = 0;
    long ownChildren = 0;
};

std::string NameOf(const testing::TestParamInfo<Setting>& info) {
    return std::to_string(info.param.number) + NameOfControl({info.param.tested, 0}) +
           (info.param.windowless ? "Windowless"
            : info.param.userMode ? ""
                                  : "Designed");
}
INSTANTIATE_TEST_SUITE_P(, RandomInput, testing::ValuesIn(Settings), NameOf);

TEST_P(RandomInput, LeavesEachControlWholeAndTheDeviceAlone) {
    const long all = kiv::OurShare().Of(kiv::Effort(EventsInAll)) / EventsOfALife;
    const long settings = std::size(Settings);
    const long lives = all / settings + (static_cast<long>(GetParam().number) < all % settings);
    long calendars = 0;
    long life = 0;
    const Holdings gain = GainOfLives(lives, user, [&] {
        site->calls.clear();
        Live();
        if (IsSet() && life++ >= lives / 2) calendars += site->Count("OnInPlaceActivate");
    });
    // A leak of one in each life would show. A new month calendar keeps a font for ever under Wine.
    EXPECT_LT(gain.heapBlocks, lives / 4 + Noise);
    EXPECT_LT(gain.gdiObjects - calendars, lives / 4 + Noise);
    events += lives * EventsOfALife;
    gained.heapBlocks += gain.heapBlocks;
    gained.gdiObjects += gain.gdiObjects - calendars;
}

}  // namespace
}  // namespace component
