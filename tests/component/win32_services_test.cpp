// What the PC and the framework give to the controls: fonts, timers, settings, arriving values.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <stdexcept>
#include <vector>

#include "comkit/Errors.h"
#include "comkit/Variant.h"
#include "platform/HostError.h"
#include "win32/LateBoundFramework.h"
#include "win32/MessageTimer.h"
#include "win32/OleFont.h"
#include "win32/RegistrySettings.h"
#include "win32/SystemClock.h"
#include "win32/SystemRegionalNames.h"
#include "win32/SystemTimeZone.h"
#include "win32/ValueSink.h"

namespace kiv::win32::test {

namespace {

void PumpFor(DWORD milliseconds) {
    const DWORD end = GetTickCount() + milliseconds;
    while (GetTickCount() < end) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
        Sleep(2);
    }
}

TEST(FontTest, TraitsComeBackFromTheFontObject) {
    FontTraits traits;
    traits.name = u"Liberation Sans";
    traits.size = 97500;
    traits.weight = 700;
    traits.italic = true;
    traits.underline = true;
    traits.strikethrough = true;
    const FontPtr font = MakeFont(traits);
    EXPECT_EQ(font->Traits(), traits);

    const comkit::ComPtr<IFontDisp> object = FontDispOf(font);
    const FontPtr again = WrapFont(object.Get());
    static_cast<OleFont&>(*font).Object()->put_Underline(FALSE);
    EXPECT_FALSE(again->Traits().underline) << "both are the same object";
}

TEST(FontTest, TheObjectIsMadeOnceAndItsWatcherIsToldBeforeAnybodyCanChangeIt) {
    struct Watcher final : OleFont::Watcher {
        void OnObjectMade() override { underlined.push_back(font->Traits().underline); }
        std::shared_ptr<OleFont> font;
        std::vector<bool> underlined;
    } watcher;
    FontTraits traits = DefaultFontTraits();
    traits.underline = true;
    watcher.font = std::make_shared<OleFont>(traits);
    watcher.font->SetWatcher(&watcher);
    EXPECT_EQ(watcher.font->Traits(), traits);
    EXPECT_FALSE(watcher.font->HasObject());
    const comkit::ComPtr<IFontDisp> first = FontDispOf(watcher.font);
    const comkit::ComPtr<IFontDisp> second = FontDispOf(watcher.font);
    EXPECT_EQ(first.Get(), second.Get());
    EXPECT_EQ(watcher.underlined, std::vector<bool>{true});
}

TEST(FontTest, WhatIsNoFontWrapsToNothing) {
    EXPECT_EQ(WrapFont(nullptr), nullptr);
    comkit::ComPtr<IStream> stream;
    ASSERT_HRESULT_SUCCEEDED(CreateStreamOnHGlobal(nullptr, TRUE, stream.Put()));
    EXPECT_EQ(WrapFont(stream.Get()), nullptr);
    EXPECT_FALSE(FontDispOf(nullptr));

    struct ForeignFont final : Font {
        FontTraits Traits() const override {
            FontTraits result = DefaultFontTraits();
            result.italic = true;
            return result;
        }
    };
    EXPECT_TRUE(WrapFont(FontDispOf(std::make_shared<ForeignFont>()).Get())->Traits().italic);
}

TEST(TimerTest, ATimerTicksWhileEnabledAndMayEndItselfInItsTick) {
    MessageTimerFactory factory;
    int ticks = 0;
    std::unique_ptr<Timer> timer = factory.CreateTimer(15, [&] { ++ticks; });
    PumpFor(60);
    EXPECT_EQ(ticks, 0) << "new timers are disabled";
    timer->SetEnabled(true);
    PumpFor(120);
    EXPECT_GE(ticks, 2);
    timer->SetEnabled(false);
    ticks = 0;
    PumpFor(60);
    EXPECT_EQ(ticks, 0);

    timer = factory.CreateTimer(15, [&timer, &ticks] {
        timer.reset();
        ++ticks;
        throw std::runtime_error("tick");
    });
    timer->SetEnabled(true);
    PumpFor(100);
    EXPECT_EQ(ticks, 1);
    EXPECT_EQ(timer, nullptr);
}

TEST(TimerTest, ATickThatWasOnItsWayIsLostWhenItsTimerStops) {
    MessageTimerFactory factory;
    int ticks = 0;
    std::unique_ptr<Timer> timer = factory.CreateTimer(10, [&] { ++ticks; });
    timer->SetEnabled(true);
    Sleep(50);
    MSG message;
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE));
    timer.reset();
    DispatchMessageW(&message);
    EXPECT_EQ(ticks, 0);
}

TEST(RegionalNamesTest, OneTableServesAllUntilTheSettingsAreOtherOnes) {
    const SystemRegionalNames names;
    const auto plain = names.Table(false);
    const auto upper = SystemRegionalNames().Table(true);
    for (int month = 1; month <= 12; ++month) {
        const auto place = static_cast<std::size_t>(month - 1);
        EXPECT_EQ(plain->months.at(place), names.AbbreviatedMonth(month));
        EXPECT_EQ(upper->months.at(place), names.ToUpper(names.AbbreviatedMonth(month)));
    }
    for (int day = 1; day <= 7; ++day) {
        const auto place = static_cast<std::size_t>(day - 1);
        EXPECT_EQ(plain->weekdays.at(place), names.Weekday(day));
        EXPECT_EQ(upper->weekdays.at(place), names.ToUpper(names.Weekday(day)));
    }
    EXPECT_NE(plain->weekdays, upper->weekdays);
    SystemRegionalNames::ForgetTables();
    EXPECT_NE(names.Table(false), plain) << "who still has the former one keeps it";
}

TEST(RegionalNamesTest, UpperCaseKnowsEveryAlphabetAndKeepsTheLength) {
    const SystemRegionalNames names;
    EXPECT_EQ(names.ToUpper(u""), u"");
    EXPECT_EQ(names.ToUpper(u"az, AZ @`{[09"), u"AZ, AZ @`{[09");
    EXPECT_EQ(names.ToUpper(u"m\u00e4rz \u0444\u0435\u0432"), u"M\u00c4RZ \u0424\u0415\u0412");
}

TEST(ClockTest, TheClockIsThePcsLocalTime) {
    SYSTEMTIME before{};
    SYSTEMTIME after{};
    DateTime now;
    do {
        GetLocalTime(&before);
        now = SystemClock().Now();
        GetLocalTime(&after);
    } while (before.wSecond != after.wSecond);
    EXPECT_EQ(now,
              (DateTime{{before.wYear, before.wMonth, before.wDay}, {before.wHour, before.wMinute, before.wSecond}}));
}

TEST(TimeZoneTest, AZoneWithoutDaylightSavingHasNoBias) {
    TIME_ZONE_INFORMATION zone{};
    GetTimeZoneInformation(&zone);
    EXPECT_EQ(SystemTimeZone().DaylightBias(), zone.DaylightDate.wMonth ? zone.DaylightBias : 0);
}

TEST(SettingsTest, NumbersGoToTheMachinesRegistryAndComeBack) {
    constexpr const wchar_t* Path = L"SOFTWARE\\KivDateTime Test\\Settings";
    const auto cleanUp = [] { RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\KivDateTime Test"); };
    cleanUp();
    RegistrySettings settings;
    EXPECT_THROW(settings.OpenKey(comkit::ToUtf16(Path)), comkit::ComError);
    settings.CreateKey(comkit::ToUtf16(Path))->SetNumber(u"UsePCDateTime", -1);

    DWORD type = 0;
    DWORD stored = 0;
    DWORD size = sizeof stored;
    EXPECT_EQ(RegGetValueW(HKEY_LOCAL_MACHINE, Path, L"UsePCDateTime", RRF_RT_ANY, &type, &stored, &size),
              ERROR_SUCCESS);
    EXPECT_EQ(type, static_cast<DWORD>(REG_DWORD));
    EXPECT_EQ(stored, 0xFFFFFFFFu);

    RegSetKeyValueW(HKEY_LOCAL_MACHINE, Path, L"Text", REG_SZ, L"0", 4);
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, Path, L"Odd", REG_BINARY, L"abc", 3);
    const std::wstring longText(1000, L'7');
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, Path, L"Long", REG_SZ, longText.c_str(), 2002);
    const auto key = settings.OpenKey(comkit::ToUtf16(Path));
    EXPECT_EQ(key->QueryValue(u"UsePCDateTime"), Value(std::int32_t{-1}));
    EXPECT_EQ(key->QueryValue(u"Text"), Value(std::u16string(u"0")));
    EXPECT_EQ(key->QueryValue(u"Odd"), Value(Unsupported{}));
    EXPECT_EQ(key->QueryValue(u"Long"), Value(std::u16string(comkit::ToUtf16(longText))));
    EXPECT_THROW(key->QueryValue(u"Missing"), comkit::ComError);
    cleanUp();
}

struct ReceivedValues final : DeviceValueListener {
    std::vector<std::pair<int, std::u16string>> values;
    std::function<void()> then;
    void OnValueReceived(std::int16_t index, std::u16string_view value) override {
        values.emplace_back(index, value);
        if (then) then();
    }
};

HRESULT Send(IDispatch& sink, DISPID member, std::vector<VARIANT> backwards) {
    DISPPARAMS params{backwards.data(), nullptr, static_cast<UINT>(backwards.size()), 0};
    return sink.Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, nullptr, nullptr, nullptr);
}

TEST(FrameworkTest, ValuesArriveWhateverTheirVariantForm) {
    ReceivedValues received;
    const auto sink = comkit::MakeObject<ValueSink>(received);
    const comkit::Variant index(std::int16_t{5});
    const comkit::Variant longIndex(std::int32_t{6});
    comkit::Variant text(u"12");
    const comkit::Variant number(31.0);
    comkit::Variant reference;
    VARIANT byReference{};
    byReference.vt = VT_BYREF | VT_BSTR;
    byReference.pbstrVal = &text.Get().bstrVal;

    EXPECT_EQ(Send(*sink, 1, {text.Get(), index.Get()}), S_OK);
    EXPECT_EQ(Send(*sink, 1, {byReference, longIndex.Get()}), S_OK);
    EXPECT_EQ(Send(*sink, 1, {number.Get(), index.Get()}), S_OK);
    const std::vector<std::pair<int, std::u16string>> expected{{5, u"12"}, {6, u"12"}, {5, u"31"}};
    EXPECT_EQ(received.values, expected);

    EXPECT_EQ(Send(*sink, 2, {text.Get(), index.Get()}), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(Send(*sink, 1, {index.Get()}), DISP_E_BADPARAMCOUNT);
    const comkit::Variant tooLarge(std::int32_t{70000});
    EXPECT_HRESULT_FAILED(Send(*sink, 1, {text.Get(), tooLarge.Get()}));
    sink->Detach();
    EXPECT_EQ(Send(*sink, 1, {text.Get(), index.Get()}), S_OK);
    EXPECT_EQ(received.values.size(), 3u) << "a detached sink hears nothing";
}

TEST(FrameworkTest, AListenerMayLetGoOfTheSinkThatCallsIt) {
    ReceivedValues received;
    auto sink = comkit::MakeObject<ValueSink>(received);
    const comkit::Variant index(std::int16_t{1});
    const comkit::Variant text(u"1");
    received.then = [&] {
        sink->Detach();
        sink.Reset();
        throw std::runtime_error("listener");
    };
    IDispatch* const raw = sink.Get();
    EXPECT_HRESULT_FAILED(Send(*raw, 1, {text.Get(), index.Get()}));
    EXPECT_FALSE(sink);
}

TEST(FrameworkTest, AFrameworkThatIsNotInstalledAnswersNothing) {
    CLSID clsid{};
    if (SUCCEEDED(CLSIDFromProgID(L"VexaBaseControls.VexaHidden", &clsid))) GTEST_SKIP() << "a framework is installed";
    ReceivedValues received;
    LateBoundFramework framework;
    EXPECT_FALSE(framework.CreateHiddenControl(8, received));
    EXPECT_FALSE(framework.CreateCollection());
    EXPECT_FALSE(framework.CreateHelpDefinition());
}

}  // namespace

}  // namespace kiv::win32::test
