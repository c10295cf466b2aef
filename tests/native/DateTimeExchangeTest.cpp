#include <algorithm>
#include <array>

#include "SetControlFixture.h"

namespace kiv {
namespace {

using namespace std::string_literals;

class DateTimeExchangeTest : public SetControlTest {
protected:
    MemoryBag BoundBagWithSeconds() {
        MemoryBag bag = BoundBag();
        bag.Put(u"ShowSeconds", true);
        return bag;
    }
    void Deliver(std::int16_t index, std::u16string_view text) { ASSERT_TRUE(world.framework.Deliver(index, text)); }
    static OleDate Serial(const DateTime& value) { return OleDate{ToOleDate(value)}; }
};

TEST_F(DateTimeExchangeTest, TheDevicesDateAndTimeShowInEveryOrderOfArrival) {
    const std::pair<std::int16_t, const char16_t*> parts[] = {{5, u"2"}, {6, u"29"}, {7, u"2000"}};
    std::array<int, 3> order{0, 1, 2};
    do {
        for (const CivilDate& before : {CivilDate{1899, 12, 30}, CivilDate{2001, 1, 31}, CivilDate{2001, 6, 30}}) {
            host.answer = Serial({before, {}});
            Load(BoundBagWithSeconds());
            for (const int i : order) Deliver(parts[i].first, parts[i].second);
            EXPECT_EQ(Calendar().Value(), (CivilDate{2000, 2, 29}));
            control.reset();
        }
    } while (std::ranges::next_permutation(order).found);
}

TEST_F(DateTimeExchangeTest, EachTimePartArrivesByItself) {
    Load(BoundBagWithSeconds());
    Deliver(2, u"23");
    Deliver(3, u" 59.5 minutes");  // halves to even: 60 is no minute, so the minute stays
    Deliver(4, u"58");
    EXPECT_EQ(Time().Value().time, (TimeOfDay{23, 0, 58}));
    Deliver(3, u"58.5");
    EXPECT_EQ(Time().Value().time, (TimeOfDay{23, 58, 58}));
    for (const char16_t* bad : {u"24", u"-1", u"99999999999", u"65536"}) Deliver(2, bad);
    EXPECT_EQ(Time().Value().time.hour, 23);
    Deliver(2, u"nothing");
    EXPECT_EQ(Time().Value().time.hour, 0);
}

TEST_F(DateTimeExchangeTest, SecondsAreIgnoredWhileTheyAreNotShown) {
    Load(BoundBag());
    const TimeOfDay before = Time().Value().time;
    Deliver(4, u"42");
    EXPECT_EQ(Time().Value().time, before);
}

TEST_F(DateTimeExchangeTest, WhatTheUserEditedStaysUntilTheControlReadsAgain) {
    Load(BoundBag());
    Calendar().UserPicks({2001, 7, 4});
    Time().UserEnters({13, 5, 0});
    Dst().UserToggles();
    const auto deliverAll = [&] {
        const char16_t* values[] = {u"0", u"0", u"1", u"2", u"3", u"4", u"5", u"1996"};
        for (std::int16_t i = 0; i < 8; ++i) Deliver(i, values[i]);
    };
    deliverAll();
    EXPECT_EQ(Calendar().Value(), (CivilDate{2001, 7, 4}));
    EXPECT_EQ(Time().Value().time, (TimeOfDay{13, 5, 0}));
    EXPECT_EQ(Dst().Value(), 1);
    control->SetDataInUpload(true);
    deliverAll();
    EXPECT_EQ(Calendar().Value(), (CivilDate{1996, 4, 5}));
    EXPECT_EQ(Time().Value().time, (TimeOfDay{1, 2, 0}));
    EXPECT_EQ(Dst().Value(), 0);
}

TEST_F(DateTimeExchangeTest, EachEditedPartProtectsItselfOnly) {
    Load(BoundBag());
    Time().UserEnters({13, 5, 0});
    Deliver(6, u"17");
    Deliver(1, u"1");
    Deliver(2, u"1");
    EXPECT_EQ(Calendar().Value().day, 17);
    EXPECT_EQ(Dst().Value(), 1);
    EXPECT_EQ(Time().Value().time.hour, 13);
}

TEST_F(DateTimeExchangeTest, WhileWritingOnlyTheClockFormatAndTheDaylightSavingFlagArrive) {
    Load(BoundBag());
    control->SetDataInUpload(false);
    const CivilDate date = Calendar().Value();
    const DateTime time = Time().Value();
    for (std::int16_t i = 2; i < 8; ++i) Deliver(i, u"7");
    EXPECT_EQ(Calendar().Value(), date);
    EXPECT_EQ(Time().Value(), time);
    Deliver(1, u"1");
    EXPECT_EQ(Dst().Value(), 1);
    Deliver(0, u"1");
    EXPECT_EQ(Time().Format(), u"HH:mm");
}

TEST_F(DateTimeExchangeTest, ValuesForSlotsThatAreNotInUseAndForOddElementsAreIgnored) {
    MemoryBag bag = BoundBag();
    bag.Put(u"DataVarName6", u" \t "s);
    Load(bag);
    const CivilDate date = Calendar().Value();
    for (const int index : {6, -1, 8, 13, 14, 32767, -32768}) Deliver(static_cast<std::int16_t>(index), u"17");
    EXPECT_EQ(Calendar().Value(), date);
    EXPECT_TRUE(world.container.changes.empty());
}

TEST_F(DateTimeExchangeTest, OnlyOneMeansDaylightSaving) {
    Load(BoundBag());
    for (const auto& [text, value] : {std::pair{u"1", 1}, {u"0", 0}, {u"1", 1}, {u"2", 0}, {u"-1", 0}}) {
        Deliver(1, text);
        EXPECT_EQ(Dst().Value(), value);
    }
}

TEST_F(DateTimeExchangeTest, TheClockFormatThatArrivesIsAPropertyChange) {
    Load(BoundBag());
    Deliver(0, u"1");
    Deliver(0, u"1");
    EXPECT_EQ(world.container.changes, Keys{u"ProtoShow24Hour"});
    EXPECT_EQ(control->TimeFormat(), 1);
}

TEST_F(DateTimeExchangeTest, TheHostsAnswerIsShownWhateverItsKind) {
    const DateTime now{{2001, 7, 4}, {9, 30, 15}};  // the PC's clock
    const struct {
        Value answer;
        bool fails;
        DateTime expected;
    } cases[] = {
        {Serial({{1996, 2, 29}, {23, 59, 58}}), false, {{1996, 2, 29}, {23, 59, 58}}},
        {Value{}, false, DateTime{}},
        {0.75, false, {{1899, 12, 30}, {18, 0, 0}}},
        {std::int32_t{37076}, false, {{2001, 7, 4}, {}}},
        {Serial({{1996, 2, 29}, {}}), true, now},
        {u"soon"s, false, now},  // no date: what was shown stays, and that is the PC's date from creation
        {OleDate{1e9}, false, now},
        {OleDate{-600000}, false, now},  // the calendar knows no year 257
        {Unsupported{}, false, now},
    };
    for (const auto& c : cases) {
        host.answer = c.answer;
        host.answerDst = true;
        host.onEvent = [&](const std::string& event) {
            if (c.fails && event == "GetDeviceDateTime") throw HostError(438);
        };
        Load(BoundBag());
        EXPECT_EQ(Calendar().Value(), c.expected.date);
        EXPECT_EQ(Time().Value(), c.expected);
        EXPECT_EQ(Dst().Value(), 1);
        control.reset();
    }
}

TEST_F(DateTimeExchangeTest, GetDeviceDateTimeIsRaisedAsOftenAsTheStateIsApplied) {
    Load();
    control->OnShown();
    EXPECT_TRUE(host.Take().empty());  // the PC's clock is followed
    control->SetUsePCDateTime(false);
    EXPECT_EQ(host.Take(), (Events{"GetDeviceDateTime", "Click", "GetDeviceDateTime"}));
    control->SetUsePCDateTime(false);
    EXPECT_EQ(host.Take(), Events{"GetDeviceDateTime"});
    control->SetEnabled(true);
    EXPECT_EQ(host.Take(), Events{"GetDeviceDateTime"});
    UseSystem().UserToggles();
    EXPECT_EQ(host.Take(), Events{"Click"});
    UseSystem().UserToggles();
    EXPECT_EQ(host.Take(), (Events{"GetDeviceDateTime", "Click"}));
}

TEST_F(DateTimeExchangeTest, TheFirstDisplayAsksOnceAndOnlyAtRunTime) {
    Load(BoundBag());
    control->OnShown();
    control->OnShown();
    EXPECT_EQ(host.Take(), Events{"GetDeviceDateTime"});
    control.reset();

    LoadInDesigner(BoundBag());
    control->OnShown();
    control->SetUsePCDateTime(true);
    control->SetUsePCDateTime(false);
    EXPECT_EQ(host.Take(), (Events{"Click", "Click"}));
    EXPECT_EQ(world.timers.EnabledCount(), 0U);
}

TEST_F(DateTimeExchangeTest, TheTimerFollowsThePCAndTouchesOnlyWhatIsStale) {
    Load();
    EXPECT_EQ(world.timers.EnabledCount(), 1U);
    Time().SetValue({{1999, 1, 1}, {9, 30, 1}});
    world.timers.Fire();
    EXPECT_EQ(Time().Value(), (DateTime{{1999, 1, 1}, {9, 30, 1}}));  // the same minute, and no seconds shown
    world.clock.now = {{2001, 12, 31}, {9, 31, 2}};
    world.timers.Fire();
    EXPECT_EQ(Time().Value(), world.clock.now);
    EXPECT_EQ(Calendar().Value(), world.clock.now.date);

    // What the timer shows is no edit: the next device value shows.
    control->SetUsePCDateTime(false);
    EXPECT_EQ(world.timers.EnabledCount(), 0U);
    control->SetDataVariableName(2, u"nvoHour");
    Deliver(2, u"4");
    EXPECT_EQ(Time().Value().time.hour, 4);
}

TEST_F(DateTimeExchangeTest, WithSecondsShownEverySecondIsFollowed) {
    MemoryBag bag;
    bag.Put(u"ShowSeconds", true);
    Load(bag);
    world.clock.now.time.second = 16;
    world.timers.Fire();
    EXPECT_EQ(Time().Value().time.second, 16);
}

TEST_F(DateTimeExchangeTest, FollowingThePCTakesDaylightSavingFromItsTimeZone) {
    Load();
    EXPECT_EQ(Dst().Value(), 1);
    world.timeZone.daylightBias = 0;
    control->SetUsePCDateTime(false);
    host.answerDst = true;
    control->SetUsePCDateTime(true);
    EXPECT_EQ(Dst().Value(), 0);
    world.timeZone.fails = true;
    control->SetEnabled(true);
    EXPECT_EQ(Dst().Value(), 0);
    EXPECT_EQ(world.timers.EnabledCount(), 1U);
}

TEST_F(DateTimeExchangeTest, UncheckingWithNoHandlerShowsTheZeroDate) {
    Load();
    UseSystem().UserToggles();
    EXPECT_EQ(Calendar().Value(), CivilDate{});
    EXPECT_EQ(Time().Value(), DateTime{});
    EXPECT_EQ(Dst().Value(), 0);
}

TEST_F(DateTimeExchangeTest, TheTimeFieldCountsAsEditedOnlyWhileThePCIsNotFollowed) {
    Load(BoundBag());
    control->SetUsePCDateTime(true);
    Inner().SetEnabled(true);
    Time().SetEnabled(true);
    ASSERT_TRUE(Time().UserEnters({1, 2, 3}));
    Deliver(2, u"22");
    EXPECT_EQ(Time().Value().time.hour, 22);
}

TEST_F(DateTimeExchangeTest, GetDateTimeInfoTellsWhatIsShownWhateverTheMode) {
    MemoryBag bag = BoundBag();
    bag.Put(u"Mode", std::int32_t{sdtSetDateOnly});
    host.answer = Serial({{1996, 2, 29}, {23, 59, 58}});
    host.answerDst = true;
    Load(bag);
    Calendar().UserPicks({1999, 9, 9});
    const DateTimeInfo info = control->GetDateTimeInfo();
    EXPECT_EQ(info.date, (CivilDate{1999, 9, 9}));
    EXPECT_EQ(info.time, (DateTime{{1996, 2, 29}, {23, 59, 58}}));
    EXPECT_TRUE(info.enableDst);
}

TEST_F(DateTimeExchangeTest, EnteringAndLeavingRunModeStartsAndEndsWhatBelongsToIt) {
    LoadInDesigner(BoundBag());
    control->SetUsePCDateTime(true);
    control->OnUserModeChanged();
    EXPECT_EQ(world.framework.created, 0);

    world.container.userMode = true;
    control->OnUserModeChanged();
    control->OnUserModeChanged();
    EXPECT_EQ(world.framework.living, 1);
    EXPECT_EQ(world.framework.definitions[5].variableName, u"nvoMonth");
    EXPECT_EQ(world.timers.EnabledCount(), 1U);
    EXPECT_EQ(ErrorOf([&] { control->SetMode(1); }), 382);
    EXPECT_TRUE(control->DataInUpload());

    world.container.userMode = false;
    control->OnUserModeChanged();
    EXPECT_EQ(world.framework.living, 0);
    EXPECT_EQ(world.timers.EnabledCount(), 0U);
    EXPECT_EQ(world.settings.keys.size(), 1U);
    EXPECT_EQ(ErrorOf([&] { control->SetMode(1); }), 0);
    EXPECT_EQ(control->DataVariableName(5), u"nvoMonth");
}

TEST_F(DateTimeExchangeTest, RunModeEnteredWhileWritingBindsTheWritingSlots) {
    Load(BoundBag());
    control->SetDataInUpload(false);
    world.container.userMode = false;
    control->OnUserModeChanged();
    world.framework.definitions.assign(8, {});
    world.container.userMode = true;
    control->OnUserModeChanged();
    EXPECT_EQ(world.framework.definitions[5].variableName, u"nviSetMonth");
    EXPECT_EQ(world.framework.definitions[1].variableName, u"nciDaylightSaving");
}

}  // namespace
}  // namespace kiv
