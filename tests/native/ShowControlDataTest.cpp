// Values on their way from the device, from a variable object and from the PC's clock to the shown text.
#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <numeric>

#include "AllocationCount.h"
#include "ShowControlFixture.h"

namespace kiv {
namespace {

using namespace std::string_literals;

class ShowControlDataTest : public ShowControlTest {
protected:
    void Deliver(std::int16_t index, std::u16string_view value) { ASSERT_TRUE(world.framework.Deliver(index, value)); }
};

/// Element paths with their values; what is missing or Unsupported fails.
class MemoryVariable final : public VariableObject {
public:
    Value ElementValue(std::u16string_view path) override {
        asked.emplace_back(path);
        if (onElement) onElement(path);
        const auto known = values.find(path);
        if (known == values.end()) throw HostError(ErrorNumber::ObjectNotSet);
        return known->second;
    }
    std::map<std::u16string, Value, std::less<>> values{
        {u"nvoHour.value", std::int32_t{14}},
        {u"nvoMinute.value", std::int16_t{5}},
        {u"nvoSecond.value", u" 9 "s},
        {u"nvoMonth.value", 10.5},
        {u"nvoDay.value", u"31"s},
        {u"nvoYear.value", u"2026"s},
        {u"nciFormat.value", std::int32_t{1}},
    };
    std::vector<std::u16string> asked;
    std::function<void(std::u16string_view)> onElement;
};

TEST_F(ShowControlDataTest, ANewControlAtRunTimeShowsTheFirstOfJanuary2000AtMidnight) {
    const std::tuple<std::int32_t, std::vector<std::pair<const char16_t*, Value>>, const char*> cases[] = {
        {1, {{u"ProtoDateFormat", std::int32_t{1}}}, "01-Jan-2000"},
        {1, {{u"ProtoDateFormat", std::int32_t{1}}, {u"ShowCentury", false}}, "01-Jan-00"},
        {1, {{u"ProtoDateFormat", std::int32_t{7}}}, "Jan-01-2000"},
        {2, {}, "12:00 AM"},
        {2, {{u"ProtoShow24Hour", std::int32_t{1}}, {u"ShowLeadZeros", false}}, "0:00"},
        {2, {{u"ProtoShow24Hour", std::int32_t{7}}}, "00:00"},
        {2, {{u"ShowLongDay", true}, {u"UpperCase", true}}, "SATURDAY, 12:00 AM"},
        {2, {{u"AMPMFormat", u"AM, PM"s}, {u"BorderStyle", std::int32_t{1}}}, " 12:00 AM "},
    };
    for (const auto& [mode, settings, text] : cases) {
        MemoryBag bag = BoundBag(mode);
        for (const auto& [key, value] : settings) bag.Put(key, value);
        Load(bag);
        EXPECT_EQ(Text(), text);
    }
}

TEST_F(ShowControlDataTest, AnArrivingValueShowsAtOnceAndChangesNothingElse) {
    const std::tuple<std::int32_t, std::int16_t, const char16_t*, const char*> cases[] = {
        {2, 1, u"13", "01:00:00 PM"},     {2, 1, u"12abc", "12:00:00 PM"},       {2, 1, u"", "12:00:00 AM"},
        {2, 1, u"x", "12:00:00 AM"},      {2, 1, u"-5", "12:00:00 AM"},          {2, 1, u"24", "11:00:00 PM"},
        {2, 1, u" 1.5e0", "02:00:00 AM"}, {2, 1, u"99999999999", "12:00:00 AM"}, {2, 2, u"75", "12:59:00 AM"},
        {2, 3, u"75", "12:00:59 AM"},     {2, 7, u"5", "12:00:00 AM"},           {2, -1, u"5", "12:00:00 AM"},
        {1, 4, u"13", "Dec-01-2000"},     {1, 4, u"0", "Jan-01-2000"},           {1, 5, u"32", "Jan-31-2000"},
        {1, 6, u"7", "Jan-01-2007"},      {1, 6, u"99", "Jan-01-2099"},          {1, 6, u"150", "Jan-01-150"},
        {1, 6, u"3000", "Jan-01-1980"},   {1, 6, u"-1", "Jan-01-1980"},          {1, 6, u"2026.5", "Jan-01-2026"},
    };
    for (const auto& [mode, index, value, text] : cases) {
        Load(With(BoundBag(mode), u"ShowSeconds", true));
        const std::string before = Text();
        Deliver(index, value);
        EXPECT_EQ(Text(), text) << index << " " << Narrow(value);
        EXPECT_EQ(host.Take(), before == text ? Events{} : Events{"ValueChange"});
        EXPECT_EQ(world.container.TakeChanges(), Keys{});
    }
}

TEST_F(ShowControlDataTest, EveryOrderOfArrivalEndsAtTheDevicesDateAndTime) {
    const std::array<const char16_t*, 6> values{u"21", u"7", u"33", u"2", u"31", u"2024"};
    std::array<std::int16_t, 6> order{};
    std::iota(order.begin(), order.end(), std::int16_t{1});
    std::int32_t mode = 1;
    do {
        mode = 3 - mode;
        Load(With(BoundBag(mode), u"ShowLongDay", true));
        for (const std::int16_t index : order) Deliver(index, values.at(static_cast<std::size_t>(index - 1)));
        // The weekday of 31 February is that of 2 March.
        ASSERT_EQ(Text(), mode == 1 ? "Saturday, Feb-31-2024" : "Saturday, 09:07 PM");
    } while (std::ranges::next_permutation(order).found);
}

TEST_F(ShowControlDataTest, WhatWasCorrectedStaysCorrectedAndASecondThatIsNotShownIsLeftAlone) {
    Load(BoundBag());
    Deliver(4, u"13");
    control->SetShowLongDay(false);
    EXPECT_EQ(Text(), "Dec-01-2000");
    Load(BoundBag(2));
    Deliver(3, u"75");
    EXPECT_EQ(Text(), "12:00 AM");
    control->SetShowSeconds(true);
    EXPECT_EQ(Text(), "12:00:59 AM");
}

TEST_F(ShowControlDataTest, TheFormatElementSetsTheFormatOfTheModeOnlyWhileItsSlotIsInUse) {
    Load(BoundBag(1));
    Deliver(0, u"1");
    EXPECT_EQ(Text(), "01-Jan-2000");
    EXPECT_EQ(world.container.TakeChanges(), Keys{u"ProtoDateFormat"});
    EXPECT_EQ(control->TimeFormat(), 0);
    Deliver(0, u"1");
    EXPECT_EQ(world.container.TakeChanges(), Keys{});

    Load(BoundBag(2));
    Deliver(0, u"1");
    EXPECT_EQ(Text(), "00:00");
    EXPECT_EQ(world.container.TakeChanges(), Keys{u"ProtoShow24Hour"});
    EXPECT_EQ(control->DateFormat(), 0);

    for (const char16_t* blank : {u"", u"   "}) {
        Load(With(BoundBag(1), u"DataVarName0", std::u16string(blank)));
        Deliver(0, u"1");
        EXPECT_EQ(control->DateFormat(), 0);
        EXPECT_EQ(Text(), "Jan-01-2000");
        Deliver(4, u"3");  // the other slots need no name
        EXPECT_EQ(Text(), "Mar-01-2000");
    }
}

TEST_F(ShowControlDataTest, AValueThatLeavesTheTextAsItWasRepaintsRaisesAndAllocatesNothing) {
    for (const std::int32_t mode : {1, 2}) {
        Load(With(With(BoundBag(mode), u"ShowLongDay", true), u"UpperCase", true));
        for (const auto& [index, value] : {std::pair{1, u"13"}, {2, u"5"}, {4, u"11"}, {5, u"25"}, {6, u"2026"}}) {
            Deliver(static_cast<std::int16_t>(index), value);
        }
        Forget();
        const int repaints = ValueLabel().Repaints();
        const std::size_t allocations = AllocationCount();
        for (const auto& [index, value] :
             {std::pair{1, u"13"}, {2, u" 5x"}, {3, u"44"}, {4, u"11"}, {5, u"25"}, {6, u"2026"}, {9, u"1"}}) {
            world.framework.Deliver(static_cast<std::int16_t>(index), value);
        }
        EXPECT_EQ(AllocationCount(), allocations);
        EXPECT_EQ(ValueLabel().Repaints(), repaints);
        EXPECT_EQ(host.Take(), Events{});

        Deliver(mode == 1 ? 5 : 1, u"1");
        EXPECT_EQ(ValueLabel().Repaints(), repaints + 1);
        EXPECT_EQ(host.Take(), Events{"ValueChange"});
    }
}

TEST_F(ShowControlDataTest, RefreshingTakesAllSixNumbersWhateverTheModeAndNotTheFormat) {
    Load(BoundBag(1));
    MemoryVariable variable;
    control->RefreshDisplay(variable);
    EXPECT_EQ(variable.asked, (Keys{u"nvoHour.value", u"nvoMinute.value", u"nvoSecond.value", u"nvoMonth.value",
                                    u"nvoDay.value", u"nvoYear.value"}));
    EXPECT_EQ(Text(), "Oct-31-2026");
    EXPECT_EQ(host.Take(), Events{"ValueChange"});
    world.container.userMode = false;
    world.clock.now = {{1999, 1, 1}, {0, 0, 0}};
    control->SetMode(2);
    world.container.userMode = true;
    control->RefreshDisplay(variable);
    control->SetShowSeconds(true);
    EXPECT_EQ(Text(), "02:05:09 PM");
}

TEST_F(ShowControlDataTest, RefreshingStopsAtTheFirstFailureKeepsWhatItHasAndRebuildsNothing) {
    const Value failures[] = {Unsupported{}, u"12abc"s, u""s, 1e10, FontPtr{}};
    const char16_t* paths[] = {u"nvoHour.value",  u"nvoMinute.value", u"nvoSecond.value",
                               u"nvoMonth.value", u"nvoDay.value",    u"nvoYear.value"};
    const char* dates[] = {"Jan-01-2000", "Jan-01-2000", "Jan-01-2000", "Jan-01-2000", "Oct-01-2000", "Oct-31-2000"};
    const char* times[] = {"12:00:00 AM", "02:00:00 PM", "02:05:00 PM", "02:05:09 PM", "02:05:09 PM", "02:05:09 PM"};
    for (std::size_t failing = 0; failing < 6; ++failing) {
        for (std::size_t kind = 0; kind <= std::size(failures); ++kind) {
            for (const std::int32_t mode : {1, 2}) {
                Load(With(BoundBag(mode), u"ShowSeconds", true));
                const std::string before = Text();
                MemoryVariable variable;
                if (kind == std::size(failures)) {
                    variable.values.erase(paths[failing]);
                } else {
                    variable.values[paths[failing]] = failures[kind];
                }
                control->RefreshDisplay(variable);
                EXPECT_EQ(variable.asked.size(), failing + 1);
                EXPECT_EQ(Text(), before);
                EXPECT_EQ(host.Take(), Events{});
                control->SetShowLongDay(false);  // rebuilds
                EXPECT_EQ(Text(), mode == 1 ? dates[failing] : times[failing]);
            }
        }
    }
}

TEST_F(ShowControlDataTest, RefreshingGoesByThePathsThatTheFrameworkHasNow) {
    Load(BoundBag(1));
    world.framework.definitions.at(4).elementPath = u"elsewhere";
    MemoryVariable variable;
    variable.values[u"elsewhere"] = std::int32_t{2};
    control->RefreshDisplay(variable);
    EXPECT_EQ(Text(), "Feb-31-2026");
}

TEST_F(ShowControlDataTest, TheDesignerShowsThePcsClockAndNeverReachesTheFramework) {
    LoadInDesigner(BoundBag(1));
    EXPECT_EQ(Text(), "Jul-04-2001");
    world.clock.now = {{2026, 11, 5}, {23, 59, 59}};
    EXPECT_EQ(Text(), "Jul-04-2001");  // no clock runs
    control->SetDateFormat(1);
    EXPECT_EQ(Text(), "05-Nov-2026");
    control->SetDataVariableName(3, u"other");
    EXPECT_EQ(control->DataVariableName(3), u"other");
    EXPECT_EQ(world.framework.created, 0);
}

TEST_F(ShowControlDataTest, BindingsGoByTheUserModeOfEachMoment) {
    Load(BoundBag());
    world.container.userMode = false;  // nobody told the control
    control->SetDataVariableName(1, u"hidden");
    EXPECT_EQ(world.framework.TakeCalls(), std::vector<std::string>{});
    world.container.userMode = true;
    EXPECT_EQ(control->DataVariableName(1), u"nvoHour");
    control->SetDataVariableName(1, u"shown");
    EXPECT_EQ(world.framework.TakeCalls(), (std::vector<std::string>{"read 1", "read 1", "write 1 shown"}));
}

TEST_F(ShowControlDataTest, AFailingFrameworkLeavesTheRecordsAsTheyAre) {
    for (const std::string failing : {"element 2", "read 2", "write 2 new"}) {
        Load(BoundBag());
        world.framework.fails = [&](const std::string& call) { return call == failing; };
        EXPECT_NO_THROW(control->SetDataVariableName(2, u"new"));
        // A record that was not taken over is replaced by the framework's at the next look.
        const bool taken = failing != "write 2 new";
        EXPECT_EQ(control->DataVariableName(2), taken ? u"new" : u"nvoMinute");
        EXPECT_EQ(world.container.TakeChanges(), Keys{u"DataVarName2"});
        world.framework.fails = nullptr;
    }
    world.framework.fails = [](const std::string&) { return true; };
    Load(BoundBag());
    EXPECT_EQ(control->DataVariableName(2), u"nvoMinute");
    EXPECT_EQ(world.framework.created, 3);
}

TEST_F(ShowControlDataTest, EnteringRunModeGivesTheBindingsToTheFrameworkAndLeavingItLetsGo) {
    LoadInDesigner(BoundBag());
    world.container.userMode = true;
    control->OnUserModeChanged();
    EXPECT_EQ(world.framework.TakeCalls(),
              (std::vector<std::string>{"write 0 nciFormat", "write 1 nvoHour", "write 2 nvoMinute",
                                        "write 3 nvoSecond", "write 4 nvoMonth", "write 5 nvoDay", "write 6 nvoYear",
                                        "read 0", "read 1", "read 2", "read 3", "read 4", "read 5", "read 6"}));
    control->OnUserModeChanged();
    EXPECT_EQ(world.framework.TakeCalls(), std::vector<std::string>{});
    Deliver(4, u"2");
    EXPECT_EQ(Text(), "Feb-04-2001");

    world.container.userMode = false;
    control->OnUserModeChanged();
    EXPECT_EQ(Text(), "Jul-04-2001");
    EXPECT_EQ(world.framework.living, 0);
}

TEST_F(ShowControlDataTest, AfterItsEndAControlUsesNoFrameworkUntilItIsLoadedAgain) {
    Load(BoundBag());
    control->Terminate();
    control->Terminate();
    EXPECT_EQ(world.framework.living, 0);
    control->SetDataVariableName(1, u"late");
    EXPECT_EQ(control->DataVariableName(1), u"late");
    control->OnUserModeChanged();
    EXPECT_EQ(world.framework.living, 0);
    control->ReadProperties(BoundBag());
    EXPECT_EQ(world.framework.living, 1);
    control.reset();
    EXPECT_EQ(world.framework.living, 0);
}

}  // namespace
}  // namespace kiv
