// Help topics on the native children, and the framework's help events as they come in.
#include <gtest/gtest.h>

#include <algorithm>

#include "comkit/Bstr.h"
#include "comkit/Variant.h"
#include "win32/ApplicationHelpFile.h"
#include "win32/HelpSink.h"
#include "win32_SurfaceFixture.h"

namespace kiv::win32::test {

namespace {

std::vector<std::string> g_shown;
int g_passedOn = 0;
WNDPROC g_hostProcedure = nullptr;

bool NoteTopic(const std::wstring& file, const HelpRequest& request) {
    g_shown.push_back((request.popUp ? "pop-up " : "topic ") + std::to_string(request.topic) +
                      (file.find(L"device.hlp") != std::wstring::npos ? " of device.hlp" : ""));
    return true;
}

LRESULT CALLBACK CountHelp(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    if (id == WM_HELP) return ++g_passedOn;
    return CallWindowProcW(g_hostProcedure, window, id, wParam, lParam);
}

class HelpTest : public SurfaceTest {
protected:
    void SetUp() override {
        SurfaceTest::SetUp();
        g_hostProcedure =
            reinterpret_cast<WNDPROC>(SetWindowLongPtrW(host, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&CountHelp)));
        g_shown.clear();
        g_passedOn = 0;
        ApplicationHelpFile::UseViewer(&NoteTopic);
        wchar_t folder[MAX_PATH];
        GetTempPathW(MAX_PATH, folder);
        file = std::wstring(folder) + L"device.hlp";
        CloseHandle(CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    }
    void TearDown() override {
        PressF1(false);
        DeleteFileW(file.c_str());
        ApplicationHelpFile::UseViewer(nullptr);
        ApplicationHelpFile().SetHelpFile(u"");
        SurfaceTest::TearDown();
    }
    static void PressF1(bool down) {
        BYTE keys[256];
        GetKeyboardState(keys);
        keys[VK_F1] = down ? 0x80 : 0;
        SetKeyboardState(keys);
    }
    static void AskForHelp(HWND window) {
        HELPINFO help{};
        help.cbSize = sizeof help;
        help.iContextType = HELPINFO_WINDOW;
        help.hItemHandle = window;
        SendMessageW(window, WM_HELP, 0, reinterpret_cast<LPARAM>(&help));
    }
    static std::u16string_view Utf16(const std::wstring& text) { return comkit::ToUtf16(text); }

    std::wstring file;
};

TEST_F(HelpTest, AChildShowsItsTopicsFromTheApplicationsFileAndPassesOnWhatHasNone) {
    parts->time->SetHelp({.contextID = 7, .whatsThisID = 8});
    Activate();
    EXPECT_EQ(GetWindowContextHelpId(TimeWindow()), 8u);
    AskForHelp(TimeWindow());
    EXPECT_EQ(g_passedOn, 1) << "there is no help file";

    ApplicationHelpFile().SetHelpFile(u"Z:\\no\\such\\file.hlp");
    AskForHelp(TimeWindow());
    EXPECT_EQ(g_passedOn, 2);

    ApplicationHelpFile().SetHelpFile(Utf16(file));
    AskForHelp(TimeWindow());
    AskForHelp(SpinWindow());
    PressF1(true);
    AskForHelp(TimeWindow());
    EXPECT_EQ(g_shown,
              (std::vector<std::string>{"pop-up 8 of device.hlp", "pop-up 8 of device.hlp", "topic 7 of device.hlp"}));
    EXPECT_EQ(g_passedOn, 2);
    AskForHelp(CalendarWindow());
    EXPECT_EQ(g_passedOn, 3) << "a child without a topic";

    parts->time->SetHelp({.contextID = 0, .whatsThisID = 9});
    EXPECT_EQ(GetWindowContextHelpId(TimeWindow()), 9u);
    AskForHelp(TimeWindow());
    EXPECT_EQ(g_passedOn, 4);
}

TEST_F(HelpTest, TheFocusGoesToAChildThatCanHaveItOnly) {
    parts->calendar->TakeFocus();  // no window yet
    Activate();
    SetFocus(host);
    parts->calendar->TakeFocus();
    EXPECT_EQ(GetFocus(), CalendarWindow());
    parts->time->SetEnabled(false);
    parts->time->TakeFocus();
    EXPECT_EQ(GetFocus(), CalendarWindow());
    parts->time->SetEnabled(true);
    log.then = [this](const std::string& line) {
        if (line == "focus 1") parts.reset();
    };
    SetFocus(host);
    parts->time->TakeFocus();  // ends all of it
    EXPECT_FALSE(parts);
}

struct ReceivedHelp final : HelpListener {
    std::vector<std::string> lines;
    void OnHelpContextIDChange(std::int32_t id) override { lines.push_back("context " + std::to_string(id)); }
    void OnHelpFileChange(std::u16string_view path) override {
        lines.push_back("file " + std::string(path.begin(), path.end()));
    }
    void OnWhatsThisHelpIDChange(std::int32_t id) override { lines.push_back("this " + std::to_string(id)); }
    void OnWhatsThisHelpIDsChange(std::span<const HelpIDText> ids) override {
        std::string line = "these";
        for (const HelpIDText& id : ids) line += id ? " " + std::string(id->begin(), id->end()) : " -";
        lines.push_back(line);
    }
};

HRESULT Send(IDispatch& sink, DISPID member, VARIANT argument) {
    DISPPARAMS params{&argument, nullptr, 1, 0};
    return sink.Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, nullptr, nullptr, nullptr);
}

template <class Element>
comkit::Variant ArrayOf(VARTYPE type, LONG first, std::vector<Element> elements) {
    comkit::Variant result;
    SAFEARRAYBOUND bound{static_cast<ULONG>(elements.size()), first};
    result.Get().parray = SafeArrayCreate(type, 1, &bound);
    result.Get().vt = static_cast<VARTYPE>(VT_ARRAY | type);
    for (Element& element : elements) {
        LONG index = first++;
        SafeArrayPutElement(result.Get().parray, &index, &element);
    }
    return result;
}

TEST(HelpSinkTest, EventsArriveWhateverTheFormOfTheirArguments) {
    ReceivedHelp received;
    const auto sink = comkit::MakeObject<HelpSink>(received);
    EXPECT_EQ(Send(*sink, 1, comkit::Variant(u"12").Get()), S_OK);
    EXPECT_EQ(Send(*sink, 2, comkit::Variant(u"a.hlp").Get()), S_OK);
    EXPECT_EQ(Send(*sink, 3, comkit::Variant(std::int16_t{-3}).Get()), S_OK);

    EXPECT_EQ(Send(*sink, 4, ArrayOf<LONG>(VT_I4, 1, {5, -6}).Get()), S_OK);
    comkit::Variant halves = ArrayOf<double>(VT_R8, -2, {2.5, 1e10});
    VARIANT reference{};
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = &halves.Get();
    EXPECT_EQ(Send(*sink, 4, reference), S_OK);
    std::vector<VARIANT> mixed(4);
    comkit::Variant text(u"x7");
    comkit::Variant flag(true);
    comkit::Variant object(static_cast<IDispatch*>(sink.Get()));
    mixed[0] = text.Get();
    mixed[1] = flag.Get();
    mixed[2] = object.Get();
    comkit::Variant variants = ArrayOf<VARIANT>(VT_VARIANT, 0, mixed);
    reference = {};
    reference.vt = VT_BYREF | VT_ARRAY | VT_VARIANT;
    reference.pparray = &variants.Get().parray;
    EXPECT_EQ(Send(*sink, 4, reference), S_OK);
    EXPECT_EQ(received.lines, (std::vector<std::string>{"context 12", "file a.hlp", "this -3", "these 5 -6",
                                                        "these 2.5 10000000000", "these x7 True - "}));

    received.lines.clear();
    EXPECT_EQ(Send(*sink, 5, comkit::Variant(u"12").Get()), DISP_E_MEMBERNOTFOUND);
    EXPECT_HRESULT_FAILED(Send(*sink, 1, comkit::Variant(u"topic").Get()));
    EXPECT_HRESULT_FAILED(Send(*sink, 4, comkit::Variant(std::int32_t{6}).Get()));
    sink->Detach();
    EXPECT_EQ(Send(*sink, 1, comkit::Variant(u"12").Get()), S_OK);
    EXPECT_EQ(received.lines.size(), 0u);
}

TEST(HelpSinkTest, ArraysAtTheEndOfTheNumbersAndReferencesToNothingAreNoTrap) {
    ReceivedHelp received;
    const auto sink = comkit::MakeObject<HelpSink>(received);
    const auto sendArray = [&](ULONG count, LONG first) {
        comkit::Variant array;
        SAFEARRAYBOUND bound{count, first};
        array.Get().parray = SafeArrayCreate(VT_UI1, 1, &bound);
        array.Get().vt = VT_ARRAY | VT_UI1;
        return Send(*sink, 4, array.Get());
    };
    EXPECT_EQ(sendArray(6, MAXLONG - 5), S_OK);
    EXPECT_EQ(sendArray(6, static_cast<LONG>(MINLONG)), S_OK);
    EXPECT_EQ(sendArray(100'000'000, 0), S_OK);
    // What such an element holds is the system's affair (Wine 8 does not find it): there are six.
    std::vector<std::ptrdiff_t> topics;
    for (const std::string& line : received.lines) topics.push_back(std::ranges::count(line, ' '));
    EXPECT_EQ(topics, (std::vector<std::ptrdiff_t>{6, 6, 0}));

    VARIANT circle{};
    circle.vt = VT_BYREF | VT_VARIANT;
    circle.pvarVal = &circle;
    VARIANT nothing{};
    for (const VARENUM type : {VT_VARIANT, VT_I4, VT_BSTR, VT_ARRAY}) {
        nothing.vt = static_cast<VARTYPE>(VT_BYREF | type);
        for (const DISPID event : {1, 2, 3, 4}) {
            EXPECT_HRESULT_FAILED(Send(*sink, event, nothing));
            EXPECT_HRESULT_FAILED(Send(*sink, event, circle));
        }
        comkit::Variant holder = ArrayOf<VARIANT>(VT_VARIANT, 0, {nothing, circle});
        received.lines.clear();
        EXPECT_EQ(Send(*sink, 4, holder.Get()), S_OK);
        ASSERT_EQ(received.lines.size(), 1u);
        EXPECT_EQ(std::ranges::count(received.lines.front(), ' '), 2);
    }
}

}  // namespace

}  // namespace kiv::win32::test
