#include <algorithm>

#include "setcontrol/SetControlBindings.h"
#include "SetControlFixture.h"

namespace kiv {
namespace {

class SetControlBindingsTest : public SetControlTest {
protected:
    Events TakeCallsThatStartWith(const std::string& word) {
        Events calls = world.framework.TakeCalls();
        std::erase_if(calls, [&](const std::string& call) { return !call.starts_with(word); });
        return calls;
    }
};

TEST_F(SetControlBindingsTest, AnIndexOutsideTheSlotsIsAnErrorEverywhereAndChangesNothing) {
    Load();
    using C = SetControl;
    const std::function<void(C&, std::int32_t)> operations[] = {
        [](C& c, std::int32_t i) { c.DataLMObject(i); },
        [](C& c, std::int32_t i) { c.SetDataLMObject(i, 1); },
        [](C& c, std::int32_t i) { c.DataType(i); },
        [](C& c, std::int32_t i) { c.SetDataType(i, 9); },
        [](C& c, std::int32_t i) { c.DataVariableName(i); },
        [](C& c, std::int32_t i) { c.SetDataVariableName(i, u"x"); },
        [](C& c, std::int32_t i) { c.DataElementPath(i); },
        [](C& c, std::int32_t i) { c.SetDataElementPath(i, u"x"); },
    };
    for (const auto& operation : operations) {
        for (const std::int32_t index : {-1, 14, 2147483647, -2147483647 - 1}) {
            EXPECT_EQ(ErrorOf([&] { operation(*control, index); }), 381);
        }
        EXPECT_EQ(ErrorOf([&] { operation(*control, 13); }), 0);
    }
}

TEST_F(SetControlBindingsTest, ADataTypeThatThereIsNotIsIgnoredSilently) {
    LoadInDesigner();
    for (const std::int32_t bad : {-1, 4, 7}) control->SetDataType(5, bad);
    EXPECT_EQ(control->DataType(5), 1);
    EXPECT_TRUE(world.container.changes.empty());
}

TEST_F(SetControlBindingsTest, AtDesignTimeTheFrameworkIsNeverTouched) {
    world.framework.fails = [](const std::string& call) {
        ADD_FAILURE() << call;
        return true;
    };
    LoadInDesigner(BoundBag());
    control->SetDataElementPath(9, u"a");
    EXPECT_EQ(control->DataElementPath(9), u"a");
    EXPECT_EQ(ErrorOf([&] { (void)control->DataInUpload(); }), 394);
    EXPECT_EQ(ErrorOf([&] { control->SetDataInUpload(false); }), 383);
    control.reset();
    EXPECT_EQ(world.framework.created, 0);
}

TEST_F(SetControlBindingsTest, LoadingBindsTheReadingSlotsAndKeepsTheWritingOnesBack) {
    Load(BoundBag());
    EXPECT_EQ(world.framework.created, 1);
    const auto& definitions = world.framework.definitions;
    ASSERT_EQ(definitions.size(), 8U);
    EXPECT_EQ(definitions[0], (DataElementBinding{0, 2, u"nciClockFormat", u""}));
    EXPECT_EQ(definitions[7], (DataElementBinding{0, 1, u"nvoYear", u""}));
    EXPECT_EQ(control->DataVariableName(13), u"nviSetYear");
}

TEST_F(SetControlBindingsTest, TheFrameworksCopyIsTheOneThatIsReadAndCompared) {
    Load(BoundBag());
    world.framework.definitions[3] = {77, 0, u"other", u"p"};
    EXPECT_EQ(control->DataLMObject(3), 77);
    EXPECT_EQ(control->DataVariableName(3), u"other");
    world.framework.TakeCalls();
    control->SetDataVariableName(3, u"other");
    EXPECT_EQ(world.framework.TakeCalls(), Events{"read 3"});
    EXPECT_TRUE(world.container.changes.empty());
    control->SetDataVariableName(3, u"Other");
    EXPECT_EQ(world.framework.TakeCalls(), (Events{"read 3", "write 3 Other"}));
    EXPECT_EQ(world.container.changes, Keys{u"DataVarName3"});
}

TEST_F(SetControlBindingsTest, ASlotThatIsNotBoundNowIsStoredAndReachesTheFrameworkAtTheNextRebind) {
    Load(BoundBag());
    control->SetDataElementPath(9, u"Set.Minute");
    EXPECT_TRUE(world.framework.TakeCalls().empty());
    control->SetDataInUpload(false);
    EXPECT_EQ(world.framework.definitions[3].elementPath, u"Set.Minute");
    // Now it is the reading slot that is out of use.
    world.framework.TakeCalls();
    control->SetDataElementPath(3, u"x");
    EXPECT_TRUE(world.framework.TakeCalls().empty());
}

TEST_F(SetControlBindingsTest, SwitchingDirectionTakesRecordsOverRebindsAndWritesInOrder) {
    Load(BoundBag());
    Calendar().UserPicks({2001, 7, 4});
    Time().UserEnters({13, 5, 59});
    world.framework.TakeCalls();
    control->SetDataInUpload(false);
    const Events expected = {"read 2",
                             "read 3",
                             "read 4",
                             "read 5",
                             "read 6",
                             "read 7",
                             "write 2 nviSetHour",
                             "enable 2 True",
                             "write 3 nviSetMinute",
                             "enable 3 True",
                             "write 4 nviSetSecond",
                             "enable 4 True",
                             "write 5 nviSetMonth",
                             "enable 5 True",
                             "write 6 nviSetDay",
                             "enable 6 True",
                             "write 7 nviSetYear",
                             "enable 7 True",
                             "value 5 7",
                             "value 6 4",
                             "value 7 2001",
                             "value 2 13",
                             "value 3 5",
                             "value 4 0",
                             "value 1 0"};
    EXPECT_EQ(world.framework.TakeCalls(), expected);

    control->SetDataInUpload(false);
    EXPECT_EQ(TakeCallsThatStartWith("value").size(), 7U);
    control->SetDataInUpload(true);
    const Events back = world.framework.TakeCalls();
    EXPECT_EQ(std::ranges::count(back, "enable 5 False"), 1);
    EXPECT_EQ(std::ranges::count(back, "write 5 nvoMonth"), 1);
    EXPECT_TRUE(std::ranges::none_of(back, [](const std::string& call) { return call.starts_with("value"); }));
}

TEST_F(SetControlBindingsTest, ModeAndOptionsDecideWhatIsWritten) {
    const struct {
        std::int32_t mode;
        bool dst;
        bool seconds;
        Events expected;
    } cases[] = {
        {sdtSetDateOnly, true, true, {"value 5 7", "value 6 4", "value 7 2001"}},
        {sdtSetTimeOnly, true, true, {"value 2 23", "value 3 5", "value 4 59", "value 1 1"}},
        {sdtSetTimeOnly, false, false, {"value 2 23", "value 3 5", "value 4 0"}},
    };
    for (const auto& c : cases) {
        MemoryBag bag = BoundBag();
        bag.Put(u"Mode", c.mode);
        bag.Put(u"ShowDST", c.dst);
        bag.Put(u"ShowSeconds", c.seconds);
        host.answer = OleDate{ToOleDate({{2001, 7, 4}, {23, 5, 59}})};
        host.answerDst = true;
        world.settings.keys.clear();
        Load(bag);
        control->SetDataInUpload(false);
        EXPECT_EQ(TakeCallsThatStartWith("value"), c.expected);
        control.reset();
    }
}

TEST_F(SetControlBindingsTest, AnyOneFailingCallLeavesTheOthersInPlace) {
    host.answer = OleDate{ToOleDate({{2001, 7, 4}, {23, 5, 59}})};
    const MemoryBag bag = BoundBag();
    Load(bag);
    control->SetDataInUpload(false);
    const Events all = world.framework.TakeCalls();
    for (const std::string& victim : all) {
        control.reset();
        Load(bag);
        world.framework.fails = [&](const std::string& call) { return call == victim; };
        control->SetDataInUpload(false);
        world.framework.fails = nullptr;
        Events expected = all;
        std::erase(expected, victim);
        EXPECT_EQ(world.framework.TakeCalls(), expected) << victim;
    }
}

TEST_F(SetControlBindingsTest, AnElementThatCannotBeHadIsLeftOutAndTheRestGoesOn) {
    Load(BoundBag());
    world.framework.TakeCalls();
    world.framework.fails = [](const std::string& call) { return call == "element 5"; };
    control->SetDataInUpload(false);
    for (const std::string& call : world.framework.TakeCalls()) EXPECT_EQ(call.find(" 5"), std::string::npos) << call;
    EXPECT_EQ(control->DataVariableName(11), u"nviSetMonth");
}

TEST_F(SetControlBindingsTest, WithNoFrameworkTheRecordsArePlainValuesAndItIsLookedForOnce) {
    int asked = 0;
    world.framework.fails = [&](const std::string& call) {
        asked += call == "create";
        return true;
    };
    Load(BoundBag());
    EXPECT_EQ(control->DataVariableName(4), u"nvoSecond");
    control->SetDataVariableName(4, u"other");
    EXPECT_EQ(control->DataVariableName(4), u"other");
    control->SetDataInUpload(false);
    EXPECT_FALSE(control->DataInUpload());
    control->SetDataInUpload(true);
    EXPECT_EQ(asked, 1);
}

// The rules by which the show control uses the same records: every slot active, its own reaction to a bad type.
class PlainRules final : public BindingRules {
public:
    bool IsUserMode() const override { return userMode; }
    bool IsActive(std::int32_t /*slot*/) const override { return true; }
    std::int16_t ElementIndexForSlot(std::int32_t slot) const override { return static_cast<std::int16_t>(slot); }
    void OnBadDataType() override { throw HostError(380); }
    void OnBindingChanged(std::u16string_view key) override { changes.emplace_back(key); }
    bool userMode = true;
    std::vector<std::u16string> changes;
};

class NoValues final : public DeviceValueListener {
    void OnValueReceived(std::int16_t /*index*/, std::u16string_view /*value*/) override {}
};

TEST(DataBindings, ServeSevenSlotsThatAreAlwaysActive) {
    headless::HeadlessFramework framework;
    NoValues listener;
    const Lifeline lifeline;
    FrameworkLink link(framework, 7, listener, lifeline);
    PlainRules rules;
    DataBindings slots(7, link, rules);
    slots.SetVariableName(6, u"nvoYear");
    EXPECT_EQ(framework.definitions[6].variableName, u"nvoYear");
    EXPECT_EQ(ErrorOf([&] { slots.SetDataType(6, 4); }), 380);
    EXPECT_EQ(ErrorOf([&] { slots.SetDataType(6, 0); }), 0);
    EXPECT_EQ(ErrorOf([&] { slots.SetLMObject(7, 1); }), 9);
    EXPECT_EQ(ErrorOf([&] { slots.SetLMObject(-1, 1); }), 9);
    EXPECT_EQ(rules.changes, std::vector<std::u16string>{u"DataVarName6"});
}

}  // namespace
}  // namespace kiv
