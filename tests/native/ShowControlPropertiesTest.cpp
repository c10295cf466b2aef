// What the setters compare, refuse, announce and show.
#include <functional>

#include "ShowControlFixture.h"

namespace kiv {
namespace {

using Act = std::function<void(ShowControl&)>;

class ShowControlPropertiesTest : public ShowControlTest {};

TEST_F(ShowControlPropertiesTest, EachErrorCarriesItsNumberItsSourceAndItsTextAndChangesNothing) {
    static constexpr std::u16string_view BadIndex = u"Invalid Property array index: Must be a value between 0 and 3.";
    static constexpr std::u16string_view BadFields =
        u"Invalid Property Value!  Must have two fields separated by a comma.  (Ex. \"AM,PM\")";
    static constexpr std::u16string_view BadBorder =
        u"Invalid Property Value!  Border Style must be 0 (None) or 1 (Sunken).";
    static constexpr std::u16string_view BadDate =
        u"Invalid Property Value!  Date delimiter must be a single character.  (Ex. \"/\")";
    static constexpr std::u16string_view BadTime =
        u"Invalid Property Value!  Time delimiter must be a single character.  (Ex. \":\")";
    static constexpr std::u16string_view BadMode =
        u"Invalid Property Value!  Mode must be either 1 (Show Date) or 2 (Show Time).";
    static constexpr std::u16string_view BadType =
        u"Invalid Property Value!  Date Type must be value in the range of 0 - 3.";
    struct Case {
        Act act;
        std::int32_t number;
        std::u16string_view text;
    };
    const Case cases[] = {
        {[](ShowControl& c) { (void)c.DataLMObject(7); }, 381, BadIndex},
        {[](ShowControl& c) { (void)c.DataLMObject(-1); }, 381, BadIndex},
        {[](ShowControl& c) { (void)c.DataType(7); }, 381, BadIndex},
        {[](ShowControl& c) { c.SetDataType(7, 1); }, 381, BadIndex},
        {[](ShowControl& c) { (void)c.DataVariableName(7); }, 381, BadIndex},
        {[](ShowControl& c) { c.SetDataVariableName(-1, u"x"); }, 381, BadIndex},
        {[](ShowControl& c) { (void)c.DataElementPath(7); }, 381, BadIndex},
        {[](ShowControl& c) { c.SetDataElementPath(7, u"x"); }, 381, BadIndex},
        {[](ShowControl& c) { c.SetDataType(6, 4); }, 380, BadType},
        {[](ShowControl& c) { c.SetDataType(6, -1); }, 380, BadType},
        {[](ShowControl& c) { c.SetAMPMFormat(u"AM"); }, 380, BadFields},
        {[](ShowControl& c) { c.SetAMPMFormat(u"a,b,c"); }, 380, BadFields},
        {[](ShowControl& c) { c.SetAMPMFormat(u""); }, 380, BadFields},
        {[](ShowControl& c) { c.SetBorderStyle(2); }, 380, BadBorder},
        {[](ShowControl& c) { c.SetBorderStyle(-1); }, 380, BadBorder},
        {[](ShowControl& c) { c.SetDateDelimiter(u""); }, 380, BadDate},
        {[](ShowControl& c) { c.SetDateDelimiter(u"--"); }, 380, BadDate},
        {[](ShowControl& c) { c.SetTimeDelimiter(u""); }, 380, BadTime},
        {[](ShowControl& c) { c.SetTimeDelimiter(u"::"); }, 380, BadTime},
        {[](ShowControl& c) { c.SetMode(0); }, 380, BadMode},
        {[](ShowControl& c) { c.SetMode(3); }, 380, BadMode},
    };
    LoadInDesigner(BoundBag());
    MemoryBag before(true);
    control->WriteProperties(before);
    for (const Case& c : cases) {
        SCOPED_TRACE(&c - cases);
        try {
            c.act(*control);
            ADD_FAILURE() << "no error";
        } catch (const HostError& error) {
            EXPECT_EQ(error.Number(), c.number);
            EXPECT_EQ(error.Source(), u"KivShowDateTime (KivShowDateTime1)");
            EXPECT_EQ(error.Description(), c.text);
        }
        MemoryBag after(true);
        control->WriteProperties(after);
        EXPECT_EQ(after.Entries(), before.Entries());
        EXPECT_EQ(world.container.TakeChanges(), Keys{});
        EXPECT_EQ(world.container.dirtyMarks, 0);
    }
}

TEST_F(ShowControlPropertiesTest, OnlySettingTheLmObjectOfAnUnknownSlotIsASubscriptError) {
    Load();
    for (const std::int32_t index : {-1, 7, 2147483647}) {
        try {
            control->SetDataLMObject(index, 5);
            ADD_FAILURE() << index;
        } catch (const HostError& error) {
            EXPECT_EQ(error.Number(), 9);
            EXPECT_EQ(error.Source(), u"");
            EXPECT_EQ(error.Description(), u"");
        }
    }
    control->SetDataLMObject(6, 5);
    EXPECT_EQ(control->DataLMObject(6), 5);
}

TEST_F(ShowControlPropertiesTest, AtRunTimeTheModeIsRefusedBeforeAnythingElse) {
    Load(BoundBag());
    for (const std::int32_t mode : {1, 2, 3}) {
        EXPECT_EQ(ErrorOf([&] { control->SetMode(mode); }), 382) << mode;
    }
    EXPECT_EQ(control->Mode(), 1);
    // Asked of the container each time, not remembered.
    world.container.userMode = false;
    control->SetMode(2);
    EXPECT_EQ(control->Mode(), 2);
}

TEST_F(ShowControlPropertiesTest, AnotherModeShowsAtOnceAndNeedsSavingButIsNotAnnounced) {
    LoadInDesigner(BoundBag());
    EXPECT_EQ(Text(), "Jul-04-2001");
    control->SetMode(2);
    EXPECT_EQ(Text(), "09:30 AM");
    EXPECT_EQ(world.container.TakeChanges(), Keys{});
    EXPECT_EQ(world.container.dirtyMarks, 1);
    EXPECT_EQ(host.Take(), Events{"ValueChange"});

    world.clock.now.time.minute = 31;
    control->SetMode(2);
    EXPECT_EQ(Text(), "09:31 AM");
    EXPECT_EQ(world.container.dirtyMarks, 1);
}

TEST_F(ShowControlPropertiesTest, ARealChangeIsAnnouncedOnceUnderItsKey) {
    const std::pair<const char16_t*, Act> cases[] = {
        {u"BackColor", [](ShowControl& c) { c.SetBackColor(0x123456); }},
        {u"BorderStyle", [](ShowControl& c) { c.SetBorderStyle(1); }},
        {u"Caption", [](ShowControl& c) { c.SetCaption(u"date/time:"); }},
        {u"CaptionHeight", [](ShowControl& c) { c.SetCaptionHeight(300); }},
        {u"CaptionWidth", [](ShowControl& c) { c.SetCaptionWidth(2000); }},
        {u"Data12HourValue", [](ShowControl& c) { c.SetData12HrValue(5); }},
        {u"Data24HourValue", [](ShowControl& c) { c.SetData24HrValue(5); }},
        {u"DataDMYValue", [](ShowControl& c) { c.SetDataDMYValue(5); }},
        {u"DataMDYValue", [](ShowControl& c) { c.SetDataMDYValue(5); }},
        {u"DataElemPath6", [](ShowControl& c) { c.SetDataElementPath(6, u"NVOYEAR.value"); }},
        {u"DataLMObject0", [](ShowControl& c) { c.SetDataLMObject(0, 1); }},
        {u"DataType3", [](ShowControl& c) { c.SetDataType(3, 3); }},
        {u"DataVarName5", [](ShowControl& c) { c.SetDataVariableName(5, u""); }},
        {u"AMPMFormat", [](ShowControl& c) { c.SetAMPMFormat(u","); }},
        {u"DateDelimiter", [](ShowControl& c) { c.SetDateDelimiter(u"/"); }},
        {u"ProtoDateFormat", [](ShowControl& c) { c.SetDateFormat(7); }},
        {u"Enabled", [](ShowControl& c) { c.SetEnabled(false); }},
        {u"ForeColor", [](ShowControl& c) { c.SetForeColor(1); }},
        {u"LockCapWidth", [](ShowControl& c) { c.SetLockCaptionWidth(true); }},
        {u"LockValWidth", [](ShowControl& c) { c.SetLockValueWidth(true); }},
        {u"ShowCentury", [](ShowControl& c) { c.SetShowCentury(false); }},
        {u"ShowLeadZeros", [](ShowControl& c) { c.SetShowLeadingZeros(false); }},
        {u"ShowLongDay", [](ShowControl& c) { c.SetShowLongDay(true); }},
        {u"ShowSeconds", [](ShowControl& c) { c.SetShowSeconds(true); }},
        {u"TimeDelimiter", [](ShowControl& c) { c.SetTimeDelimiter(u"."); }},
        {u"ProtoShow24Hour", [](ShowControl& c) { c.SetTimeFormat(-1); }},
        {u"UpperCase", [](ShowControl& c) { c.SetUpperCase(true); }},
        {u"ValueHeight", [](ShowControl& c) { c.SetValueHeight(400); }},
        {u"ValueWidth", [](ShowControl& c) { c.SetValueWidth(2000); }},
    };
    for (const bool userMode : {true, false}) {
        world.container.userMode = userMode;
        Load(BoundBag());
        for (const auto& [key, act] : cases) {
            act(*control);
            EXPECT_EQ(world.container.TakeChanges(), Keys{key});
            act(*control);
            EXPECT_EQ(world.container.TakeChanges(), Keys{});
        }
    }
}

TEST_F(ShowControlPropertiesTest, WhatIsSetForBothLabelsReachesBoth) {
    Load();
    const FontPtr font = headless::MakeFont(u"Tahoma", 165000);
    control->SetBackColor(1);
    control->SetForeColor(2);
    control->SetEnabled(false);
    world.container.changes.clear();
    control->SetFont(font);
    EXPECT_EQ(world.container.changes, std::vector<std::u16string>{u"Font"});
    for (const headless::HeadlessLabel* label : {&CaptionLabel(), &ValueLabel()}) {
        EXPECT_EQ(label->BackColor(), 1U);
        EXPECT_EQ(label->ForeColor(), 2U);
        EXPECT_FALSE(label->IsEnabled());
        EXPECT_EQ(label->GetFont(), font);
    }
    EXPECT_EQ(ErrorOf([&] { control->SetFont(nullptr); }), 380);
    EXPECT_EQ(control->GetFont(), font);
}

TEST_F(ShowControlPropertiesTest, TheTextIsRebuiltByTheSettersThatItDependsOnEvenIfTheySetWhatIsThere) {
    // The PC's clock moves on between load and setter: only a rebuilt text shows it.
    enum When { Never, Always, InDateMode, InTimeMode };
    const std::tuple<const char*, When, Act> cases[] = {
        {"ShowLeadingZeros", Always, [](ShowControl& c) { c.SetShowLeadingZeros(c.ShowLeadingZeros()); }},
        {"ShowLongDay", Always, [](ShowControl& c) { c.SetShowLongDay(c.ShowLongDay()); }},
        {"UpperCase", Always, [](ShowControl& c) { c.SetUpperCase(c.UpperCase()); }},
        {"Mode", Always, [](ShowControl& c) { c.SetMode(c.Mode()); }},
        {"DateFormat", InDateMode, [](ShowControl& c) { c.SetDateFormat(c.DateFormat()); }},
        {"DateDelimiter", InDateMode, [](ShowControl& c) { c.SetDateDelimiter(c.DateDelimiter()); }},
        {"ShowCentury", InDateMode, [](ShowControl& c) { c.SetShowCentury(c.ShowCentury()); }},
        {"TimeFormat", InTimeMode, [](ShowControl& c) { c.SetTimeFormat(c.TimeFormat()); }},
        {"TimeDelimiter", InTimeMode, [](ShowControl& c) { c.SetTimeDelimiter(c.TimeDelimiter()); }},
        {"AMPMFormat", InTimeMode, [](ShowControl& c) { c.SetAMPMFormat(c.AMPMFormat()); }},
        {"ShowSeconds", InTimeMode, [](ShowControl& c) { c.SetShowSeconds(c.ShowSeconds()); }},
        {"BorderStyle", Never, [](ShowControl& c) { c.SetBorderStyle(1); }},
        {"Caption", Never, [](ShowControl& c) { c.SetCaption(u"other"); }},
        {"Data12HrValue", Never, [](ShowControl& c) { c.SetData12HrValue(9); }},
        {"Data24HrValue", Never, [](ShowControl& c) { c.SetData24HrValue(9); }},
        {"DataDMYValue", Never, [](ShowControl& c) { c.SetDataDMYValue(0); }},
        {"DataMDYValue", Never, [](ShowControl& c) { c.SetDataMDYValue(9); }},
        {"ValueWidth", Never, [](ShowControl& c) { c.SetValueWidth(3000); }},
    };
    for (const std::int32_t mode : {1, 2}) {
        for (const auto& [name, when, act] : cases) {
            LoadInDesigner(BoundBag(mode));
            world.clock.now = {{2001, 8, 5}, {10, 31, 16}};
            act(*control);
            const bool rebuilt = when == Always || when == (mode == 1 ? InDateMode : InTimeMode);
            EXPECT_EQ(host.Take(), rebuilt ? Events{"ValueChange"} : Events{}) << name << " in mode " << mode;
            world.clock.now = {{2001, 7, 4}, {9, 30, 15}};
        }
    }
}

TEST_F(ShowControlPropertiesTest, SettingsThatRebuildNothingShowWithTheNextText) {
    Load(BoundBag());
    control->SetBorderStyle(1);
    control->SetDataDMYValue(0);
    EXPECT_EQ(Text(), "Jan-01-2000");
    world.framework.Deliver(5, u"2");
    EXPECT_EQ(Text(), " 02-Jan-2000 ");
    EXPECT_EQ(control->Value(), ValueLabel().Caption());

    Load(BoundBag(2));
    control->SetData12HrValue(1);
    EXPECT_EQ(Text(), "12:00 AM");
    control->SetUpperCase(false);
    EXPECT_EQ(Text(), "00:00");
}

TEST_F(ShowControlPropertiesTest, RegionalNamesAreTakenAnewOnceTheyChanged) {
    struct OtherNames final : RegionalNames {
        std::u16string AbbreviatedMonth(int) const override { return months; }
        std::u16string Weekday(int) const override { return u"x"; }
        std::u16string ToUpper(std::u16string_view text) const override { return std::u16string(text); }
        std::u16string months = u"old";
    } names;
    ShowPlatform platform{world.area, world.container, world.clock, names, world.framework, world.help};
    control = std::make_unique<ShowControl>(platform, host);
    control->InitProperties();
    EXPECT_EQ(Text(), "old-01-2000");
    names.months = u"new";
    control->OnRegionalSettingsChanged();
    world.framework.Deliver(5, u"2");
    EXPECT_EQ(Text(), "new-02-2000");
}

}  // namespace
}  // namespace kiv
