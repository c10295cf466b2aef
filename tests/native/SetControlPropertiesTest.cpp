#include <limits>

#include "SetControlFixture.h"

namespace kiv {
namespace {

using namespace std::string_literals;

class SetControlPropertiesTest : public SetControlTest {};

TEST_F(SetControlPropertiesTest, EveryChangeIsAnnouncedOnceUnderItsKeyAndRepeatingItIsNot) {
    LoadInDesigner();
    using C = SetControl;
    const struct {
        std::function<void(C&)> put;
        const char16_t* key;
    } cases[] = {
        {[](C& c) { c.SetBackColor(1); }, u"BackColor"},
        {[](C& c) { c.SetForeColor(2); }, u"ForeColor"},
        {[](C& c) { c.SetCalBackColor(3); }, u"CalBackColor"},
        {[](C& c) { c.SetCalBackColorDisabled(4); }, u"CalDisabledBackColor"},
        {[](C& c) { c.SetCalForeColorDisabled(5); }, u"CalDisabledForeColor"},
        {[](C& c) { c.SetCalTitleBackColor(6); }, u"CalEnabledTitleBack"},
        {[](C& c) { c.SetCalTitleBackColorDisabled(7); }, u"CalDisabledTitleBack"},
        {[](C& c) { c.SetCalTitleForeColor(8); }, u"CalEnabledTitleFore"},
        {[](C& c) { c.SetCalTitleForeColorDisabled(9); }, u"CalDisabledTitleFore"},
        {[](C& c) { c.SetCalTrailingForeColor(10); }, u"CalTrailerColor"},
        {[](C& c) { c.SetCaption(u"set date/time"); }, u"Caption"},
        {[](C& c) { c.SetEnabled(false); }, u"Enabled"},
        {[](C& c) { c.SetShowSeconds(true); }, u"ShowSeconds"},
        {[](C& c) { c.SetShowToday(false); }, u"ShowToday"},
        {[](C& c) { c.SetStartOfWeek(2); }, u"StartOfWeek"},
        {[](C& c) { c.SetTimeFormat(5); }, u"ProtoShow24Hour"},
        {[](C& c) { c.SetTimeHeight(600); }, u"TimeHeight"},
        {[](C& c) { c.SetTimeWidth(2000); }, u"TimeWidth"},
        {[](C& c) { c.SetUsePCDateTime(false); }, u"UsePCDateTime"},
        {[](C& c) { c.SetShowDST(false); }, u"ShowDST"},
        {[](C& c) { c.SetMode(sdtSetTimeOnly); }, u"Mode"},
        {[](C& c) { c.SetData12HrValue(5); }, u"Data12HourValue"},
        {[](C& c) { c.SetData24HrValue(6); }, u"Data24HourValue"},
        {[](C& c) { c.SetDataLMObject(0, 4); }, u"DataLMObject0"},
        {[](C& c) { c.SetDataType(5, 3); }, u"DataType5"},
        {[](C& c) { c.SetDataVariableName(9, u"nvi"); }, u"DataVarName9"},
        {[](C& c) { c.SetDataVariableName(9, u"NVI"); }, u"DataVarName9"},
        {[](C& c) { c.SetDataElementPath(13, u"a.b"); }, u"DataElemPath13"},
    };
    for (const auto& c : cases) {
        Forget();
        c.put(*control);
        c.put(*control);
        const Keys changes = world.container.TakeChanges();
        ASSERT_FALSE(changes.empty()) << testing::PrintToString(c.key);
        EXPECT_EQ(changes[0], c.key);
        // The mode brings the daylight-saving box along.
        EXPECT_EQ(changes.size(), c.key == u"Mode"s ? 2U : 1U) << testing::PrintToString(c.key);
    }
}

TEST_F(SetControlPropertiesTest, AFontIsAnnouncedAlwaysAndReachesEveryChild) {
    LoadInDesigner();
    const FontPtr font = headless::MakeFont(u"Tahoma", 120000);
    control->SetFont(font);
    control->SetFont(font);
    EXPECT_EQ(world.container.TakeChanges(), (Keys{u"Font", u"Font"}));
    EXPECT_EQ(Outer().GetFont(), font);
    EXPECT_EQ(Inner().GetFont(), font);
    EXPECT_EQ(UseSystem().GetFont(), font);
    EXPECT_EQ(Dst().GetFont(), font);
    EXPECT_EQ(Calendar().GetFont(), font);
    EXPECT_EQ(Time().GetFont(), font);
    EXPECT_EQ(ErrorOf([&] { control->SetFont(nullptr); }), 380);
    EXPECT_EQ(control->GetFont(), font);
}

TEST_F(SetControlPropertiesTest, ColoursReachEveryChildThatShowsThem) {
    LoadInDesigner();
    control->SetBackColor(11);
    control->SetForeColor(12);
    for (const Widget* const child : std::initializer_list<const Widget*>{&Outer(), &Inner(), &UseSystem(), &Dst()}) {
        EXPECT_EQ(child->BackColor(), 11U);
        EXPECT_EQ(child->ForeColor(), 12U);
    }
}

TEST_F(SetControlPropertiesTest, TheTimeFieldIsHeldToItsMinimumAndAskingForLessIsAlwaysAChange) {
    LoadInDesigner();
    control->SetTimeHeight(0);
    EXPECT_EQ(control->TimeHeight(), 315);
    control->SetTimeWidth(500);
    EXPECT_EQ(control->TimeWidth(), 1080);
    world.container.TakeChanges();
    control->SetTimeHeight(100);
    control->SetTimeHeight(315);
    EXPECT_EQ(world.container.TakeChanges(), Keys{u"TimeHeight"});
    control->SetTimeHeight(std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(control->TimeHeight(), 315);
    control->SetTimeWidth(std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(control->TimeWidth(), std::numeric_limits<std::int32_t>::max());
}

TEST_F(SetControlPropertiesTest, WiderScrollBarsOfTheSystemTakeAWiderTimeField) {
    LoadInDesigner();
    headless::HeadlessPlatform wide;
    wide.container.userMode = false;
    wide.surface.scrollBarWidth += 100;
    SetControl other(wide.Platform(), host);
    other.ReadProperties(MemoryBag());
    EXPECT_GT(wide.surface.Find<headless::HeadlessTimeField>(u"dtpTimeSP").Bounds().width, Time().Bounds().width);
}

TEST_F(SetControlPropertiesTest, ModeShowDSTAndShowSecondsCannotBeSetAtRunTimeNotEvenToTheirOwnValue) {
    Load();
    for (const std::int32_t mode : {0, 1, 9}) EXPECT_EQ(ErrorOf([&] { control->SetMode(mode); }), 382);
    EXPECT_EQ(ErrorOf([&] { control->SetShowDST(control->ShowDST()); }), 382);
    EXPECT_EQ(ErrorOf([&] { control->SetShowSeconds(true); }), 382);
    EXPECT_FALSE(control->ShowSeconds());
    EXPECT_TRUE(world.container.changes.empty());
}

TEST_F(SetControlPropertiesTest, ModeBringsShowDSTAlongAndRefusesWhatIsNoMode) {
    LoadInDesigner();
    control->SetMode(sdtSetDateOnly);
    EXPECT_FALSE(control->ShowDST());
    world.container.TakeChanges();
    control->SetShowDST(true);
    EXPECT_FALSE(control->ShowDST());
    EXPECT_TRUE(world.container.TakeChanges().empty());

    for (const std::int32_t bad : {-1, 3, 2147483647}) EXPECT_EQ(ErrorOf([&] { control->SetMode(bad); }), 380);
    EXPECT_EQ(control->Mode(), sdtSetDateOnly);
    control->SetMode(sdtSetDateTime);
    EXPECT_TRUE(control->ShowDST());
    EXPECT_EQ(world.container.TakeChanges(), (Keys{u"Mode", u"ShowDST"}));
}

TEST_F(SetControlPropertiesTest, TheTimeFormatIsDecidedByThe12HourValueAlone) {
    LoadInDesigner();
    const struct {
        std::int32_t format;
        std::int32_t value12;
        std::int32_t value24;
        bool seconds;
        const char16_t* expected;
    } cases[] = {{1, 1, 0, true, u"hh:mm:ss tt"},
                 {0, 1, 5, true, u"HH:mm:ss"},
                 {0, 0, 0, false, u"hh:mm tt"},
                 {7, 0, 1, false, u"HH:mm"},
                 {1, 1, 1, false, u"hh:mm tt"}};
    for (const auto& c : cases) {
        control->SetTimeFormat(c.format);
        control->SetData12HrValue(c.value12);
        control->SetData24HrValue(c.value24);
        control->SetShowSeconds(c.seconds);
        EXPECT_EQ(Time().Format(), c.expected);
    }
    // Each of the three shows at once.
    control->SetData12HrValue(2);
    EXPECT_EQ(Time().Format(), u"HH:mm");
    control->SetTimeFormat(2);
    EXPECT_EQ(Time().Format(), u"hh:mm tt");
    control->SetShowSeconds(true);
    EXPECT_EQ(Time().Format(), u"hh:mm:ss tt");
}

TEST_F(SetControlPropertiesTest, CalendarColoursShowAtOnceOrWhenTheCalendarChangesItsState) {
    LoadInDesigner();
    control->SetUsePCDateTime(false);
    ASSERT_TRUE(Calendar().IsEnabled());
    control->SetCalBackColor(1);
    control->SetCalBackColorDisabled(2);
    control->SetCalForeColorDisabled(3);
    control->SetCalTitleBackColor(4);
    control->SetCalTitleBackColorDisabled(5);
    control->SetCalTitleForeColor(6);
    control->SetCalTitleForeColorDisabled(7);
    control->SetCalTrailingForeColor(8);
    control->SetForeColor(9);
    control->SetBackColor(10);
    const auto colours = [&] {
        return std::vector<OleColor>{Calendar().MonthBackColor(),    Calendar().ForeColor(),
                                     Calendar().TitleBackColor(),    Calendar().TitleForeColor(),
                                     Calendar().TrailingForeColor(), Calendar().BackColor()};
    };
    EXPECT_EQ(colours(), (std::vector<OleColor>{1, 9, 4, 6, 8, 10}));
    control->SetEnabled(false);
    EXPECT_EQ(colours(), (std::vector<OleColor>{2, 3, 5, 7, 3, 10}));
    control->SetCalBackColor(11);
    control->SetCalTitleBackColorDisabled(12);
    control->SetForeColor(13);
    control->SetBackColor(14);
    EXPECT_EQ(colours(), (std::vector<OleColor>{2, 3, 12, 7, 3, 10}));
    EXPECT_EQ(Inner().BackColor(), 14U);
    EXPECT_EQ(Dst().ForeColor(), 13U);
    control->SetEnabled(true);
    EXPECT_EQ(colours(), (std::vector<OleColor>{11, 13, 4, 6, 8, 10}));
}

TEST_F(SetControlPropertiesTest, DisablingReachesEveryChildAndEnablingLeavesTheCustomPartToTheCheckBox) {
    LoadInDesigner();
    const auto enabled = [&] {
        return std::vector<bool>{Outer().IsEnabled(), UseSystem().IsEnabled(), Inner().IsEnabled(),
                                 Dst().IsEnabled(),   Calendar().IsEnabled(),  Time().IsEnabled()};
    };
    EXPECT_EQ(enabled(), (std::vector<bool>{true, true, false, false, false, false}));
    control->SetUsePCDateTime(false);
    EXPECT_EQ(enabled(), std::vector<bool>(6, true));
    control->SetEnabled(false);
    EXPECT_EQ(enabled(), std::vector<bool>(6, false));
    control->SetUsePCDateTime(true);
    control->SetEnabled(true);
    EXPECT_EQ(enabled(), (std::vector<bool>{true, true, false, false, false, false}));
}

TEST_F(SetControlPropertiesTest, AFirstDayOfTheWeekThatThereIsNotIsRefused) {
    LoadInDesigner();
    for (const std::int32_t bad : {0, 8, -1}) EXPECT_EQ(ErrorOf([&] { control->SetStartOfWeek(bad); }), 380);
    EXPECT_EQ(control->StartOfWeek(), 1);
    EXPECT_TRUE(world.container.changes.empty());
}

}  // namespace
}  // namespace kiv
