// KivSetDateTime towards the framework: the collection of its data elements, the help object and what its events do,
// the focus. The answers that never change are tested through the component.
#include "SetControlFixture.h"

namespace kiv {
namespace {

using headless::FireHelpContextID;
using headless::FireHelpFile;
using headless::FireWhatsThisID;
using headless::FireWhatsThisIDs;

class VexaSupportSetControlTest : public SetControlTest {
protected:
    /// Variable names in the collection that the control hands out, in its order.
    std::vector<std::u16string> SubElements() const {
        std::vector<std::u16string> names;
        const auto collection = std::dynamic_pointer_cast<headless::HeadlessCollection>(control->VexaSubElements());
        if (!collection) return {u"none"};
        for (const DataElementPtr& element : collection->items) {
            names.push_back(element->Definition()->ReadDefinition().variableName);
        }
        return names;
    }
    std::shared_ptr<headless::HeadlessHelp> HelpObject() const {
        return std::dynamic_pointer_cast<headless::HeadlessHelp>(control->VexaHelpObject());
    }
    /// What's-this IDs of outer frame, PC box, inner frame, daylight box, calendar, time field.
    std::vector<std::int32_t> WhatsThisIDs() {
        return {Outer().Help().whatsThisID, UseSystem().Help().whatsThisID, Inner().Help().whatsThisID,
                Dst().Help().whatsThisID,   Calendar().Help().whatsThisID,  Time().Help().whatsThisID};
    }
    std::vector<std::int32_t> ContextIDs() {
        return {Outer().Help().contextID, UseSystem().Help().contextID, Inner().Help().contextID,
                Dst().Help().contextID,   Calendar().Help().contextID,  Time().Help().contextID};
    }
    void FailAt(const std::string& failing) {
        world.framework.fails = [failing](const std::string& call) { return call == failing; };
    }
    static MemoryBag With(MemoryBag bag, std::u16string_view key, const Value& value) {
        bag.Put(key, value);
        return bag;
    }
    void ChangeUserMode(bool userMode) {
        world.container.userMode = userMode;
        control->OnUserModeChanged();
    }

    using Names = std::vector<std::u16string>;
    using IDs = std::vector<std::int32_t>;
};

TEST_F(VexaSupportSetControlTest, SubElementsAreTheElementsWithANameAsTheyWereAtTheLoad) {
    MemoryBag bag = With(With(BoundBag(), u"DataVarName1", u""), u"DataVarName4", u"   ");
    world.framework.walkOrder = {7, 4, 1, 0};
    Load(bag);
    EXPECT_EQ(SubElements(), (Names{u"nvoYear", u"   ", u"nciClockFormat"}));
    const FrameworkObjectPtr before = control->VexaSubElements();
    control->SetDataVariableName(1, u"late");
    EXPECT_EQ(control->VexaSubElements(), before);
    EXPECT_EQ(SubElements().size(), 3U);
}

TEST_F(VexaSupportSetControlTest, AStepThatFailsInTheWalkCostsItsOwnElementOnly) {
    const Names withoutThree{u"nciClockFormat", u"nciDaylightSaving", u"nvoHour", u"nvoSecond", u"nvoMonth", u"nvoDay",
                             u"nvoYear"};
    const std::vector<std::pair<std::string, Names>> cases{
        {"data 3", withoutThree},
        {"read 3", withoutThree},
        {"add 8",
         {u"nciClockFormat", u"nciDaylightSaving", u"nvoHour", u"nvoMinute", u"nvoSecond", u"nvoMonth", u"nvoDay"}},
        {"next 3", {u"nciClockFormat", u"nciDaylightSaving", u"nvoHour"}},  // the walk itself is broken
        {"elements", {}},
        {"create", {}},
        {"create collection", {u"none"}},
    };
    for (const auto& [failing, expected] : cases) {
        SCOPED_TRACE(failing);
        control.reset();
        LoadInDesigner(BoundBag());
        bool walking = false;
        world.framework.fails = [&, failing = failing](const std::string& call) {
            if (call == "create collection") walking = true;
            return call == failing && (walking || call == "create");
        };
        ChangeUserMode(true);
        world.framework.fails = nullptr;
        EXPECT_EQ(SubElements(), expected);
        EXPECT_NE(HelpObject(), nullptr);
    }
}

TEST_F(VexaSupportSetControlTest, BothObjectsLiveExactlyAsLongAsRunMode) {
    LoadInDesigner(BoundBag());
    EXPECT_EQ(control->VexaHelpObject(), nullptr);
    EXPECT_EQ(control->VexaSubElements(), nullptr);

    ChangeUserMode(true);
    const auto help = HelpObject();
    const auto elements = std::dynamic_pointer_cast<headless::HeadlessCollection>(control->VexaSubElements());
    ASSERT_NE(help, nullptr);
    EXPECT_NE(help->listener, nullptr);
    ASSERT_NE(elements, nullptr);
    EXPECT_EQ(elements->walks, 0);

    ChangeUserMode(false);
    EXPECT_EQ(control->VexaHelpObject(), nullptr);
    EXPECT_EQ(control->VexaSubElements(), nullptr);
    EXPECT_EQ(help->listener, nullptr);
    EXPECT_EQ(elements->walks, 1);

    ChangeUserMode(true);
    const auto second = HelpObject();
    EXPECT_NE(second, help);
    control->InitProperties();
    EXPECT_EQ(HelpObject(), second);  // whoever holds it still reaches the control
    EXPECT_EQ(SubElements(), Names{});
    FailAt("walk");
    control->Terminate();
    EXPECT_EQ(control->VexaHelpObject(), nullptr);
    EXPECT_EQ(control->VexaSubElements(), nullptr);
    EXPECT_EQ(second->listener, nullptr);
    EXPECT_EQ(second.use_count(), 1);
}

TEST_F(VexaSupportSetControlTest, TheFrameworksPartIsStartedAfterTheChoiceAndStoppedAfterItsSaving) {
    std::vector<std::string> calls;
    world.framework.fails = [&](const std::string& call) {
        if (call == "create help" || call == "create collection" || call == "walk") {
            calls.push_back(call + (world.settings.keys.empty() ? "" : " saved"));
        }
        return false;
    };
    Load(BoundBag());
    EXPECT_EQ(calls, (std::vector<std::string>{"create help", "create collection"}));
    control.reset();
    EXPECT_EQ(calls.back(), "walk saved");
    EXPECT_EQ(calls.size(), 3U);
    calls.clear();
    world.framework.fails = nullptr;
}

TEST_F(VexaSupportSetControlTest, AHelpObjectWhoseEventsCannotBeHadIsHandedOutAllTheSame) {
    FailAt("attach");
    Load();
    ASSERT_NE(HelpObject(), nullptr);
    EXPECT_EQ(HelpObject()->listener, nullptr);
    control.reset();
    FailAt("create help");
    Load();
    EXPECT_EQ(HelpObject(), nullptr);
    EXPECT_EQ(SubElements(), Names{});
}

TEST_F(VexaSupportSetControlTest, AStartThatIsStoppedOrRepeatedInItsMiddleLeavesNothingBehind) {
    for (const std::string moment :
         {"create help", "attach", "create collection", "elements", "next 2", "data 2", "read 2", "add 2"}) {
        for (const bool again : {false, true}) {
            SCOPED_TRACE(moment + (again ? ", again" : ""));
            control.reset();
            LoadInDesigner(BoundBag());
            bool done = false;
            std::shared_ptr<headless::HeadlessHelp> help;
            world.framework.fails = [&](const std::string& call) {
                if (call != moment || std::exchange(done, true)) return false;
                help = HelpObject();
                ChangeUserMode(false);
                if (again) ChangeUserMode(true);
                return false;
            };
            ChangeUserMode(true);
            world.framework.fails = nullptr;
            EXPECT_TRUE(!help || !help->listener);
            EXPECT_EQ(SubElements().size(), again ? 8U : 1U);
            EXPECT_EQ(HelpObject() != nullptr, again);
            if (again) {
                FireHelpContextID(control->VexaHelpObject(), 5);
                EXPECT_EQ(Time().Help().contextID, 5);
                EXPECT_EQ(HelpObject().use_count(), 2);
            }
        }
    }
}

TEST_F(VexaSupportSetControlTest, HelpTopicsGoToTheChildrenThatTheyAreMeantFor) {
    Load();
    FireHelpContextID(control->VexaHelpObject(), -77);
    FireWhatsThisID(control->VexaHelpObject(), 2000000000);
    EXPECT_EQ(ContextIDs(), (IDs{0, -77, 0, -77, -77, -77}));
    EXPECT_EQ(WhatsThisIDs(), IDs(6, 2000000000));
    FireHelpFile(control->VexaHelpObject(), u"C:\\Help\\device.hlp");
    EXPECT_EQ(world.help.helpFile, u"C:\\Help\\device.hlp");
    EXPECT_EQ(world.container.TakeChanges(), Keys{});
}

TEST_F(VexaSupportSetControlTest, AnArrayOfTopicsCountsOnlyWithSixValuesEachOnItsOwn) {
    Load();
    FireWhatsThisID(control->VexaHelpObject(), 9);
    const auto fire = [&](const std::vector<HelpIDText>& ids) {
        FireWhatsThisIDs(control->VexaHelpObject(), ids);
        return WhatsThisIDs();
    };
    const IDs before(6, 9);
    EXPECT_EQ(fire({}), before);
    EXPECT_EQ(fire({u"1", u"2", u"3", u"4", u"5"}), before);
    EXPECT_EQ(fire({u"1", u"2", u"3", u"4", u"5", u"6", u"7"}), before);
    EXPECT_EQ(fire({u"1", u"2", u"3", u"4", u"5", u"6"}), (IDs{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(fire({u" 2.5", u"3.5x", u"-1e2", u"True", u"", u"99999999999"}), (IDs{2, 4, -100, 0, 0, 6}));
    EXPECT_EQ(fire({std::nullopt, u"8", std::nullopt, u"8", u"8", u"8"}), (IDs{2, 8, -100, 8, 8, 8}));
}

TEST_F(VexaSupportSetControlTest, AChildThatRefusesItsTopicKeepsNoOtherFromItsOwn) {
    Load();
    for (int refusing = 0; refusing < 6; ++refusing) {
        FireWhatsThisID(control->VexaHelpObject(), 1);
        int child = 0;
        world.surface.onSetHelp = [&] {
            if (child++ == refusing) throw HostError(5);
        };
        FireWhatsThisID(control->VexaHelpObject(), 2);
        world.surface.onSetHelp = nullptr;
        IDs expected(6, 2);
        expected[static_cast<std::size_t>(refusing)] = 1;
        EXPECT_EQ(WhatsThisIDs(), expected);
    }
    // What is stored is what the inner frame gets in place of a value without a number.
    int child = 0;
    world.surface.onSetHelp = [&] {
        if (child++ == 2) throw HostError(5);
    };
    FireWhatsThisID(control->VexaHelpObject(), 4);
    world.surface.onSetHelp = nullptr;
    FireWhatsThisIDs(control->VexaHelpObject(), std::vector<HelpIDText>(6));
    EXPECT_EQ(WhatsThisIDs(), IDs(6, 4));

    world.help.onSet = [] { throw HostError(5); };
    FireHelpFile(control->VexaHelpObject(), u"other.hlp");  // ends here
}

TEST_F(VexaSupportSetControlTest, TheFocusGoesToTheCalendarOrWithoutOneToTheTimeField) {
    for (const auto& [mode, expected] :
         std::vector<std::pair<std::int32_t, std::u16string>>{{0, u"mvDate"}, {1, u"mvDate"}, {2, u"dtpTimeSP"}}) {
        control.reset();
        Load(With(BoundBag(), u"Mode", mode));
        world.surface.focused.clear();
        control->VexaSetControlFocus();
        EXPECT_EQ(world.surface.focused, expected);
    }
    control->SetUsePCDateTime(true);  // disables the fields
    world.surface.focused.clear();
    control->VexaSetControlFocus();
    EXPECT_EQ(world.surface.focused, u"");
}

}  // namespace
}  // namespace kiv
