#include <algorithm>
#include <limits>
#include <random>

#include "common/PropertyStream.h"
#include "SetControlFixture.h"

namespace kiv {
namespace {

using namespace std::string_literals;

class SetControlPersistenceTest : public SetControlTest {
protected:
    MemoryBag Save(bool all = false) const {
        MemoryBag bag(all);
        control->WriteProperties(bag);
        return bag;
    }
    Keys SavedKeys(bool all = false) const {
        Keys keys;
        const MemoryBag bag = Save(all);
        for (const auto& [key, value] : bag.Entries()) keys.push_back(key);
        return keys;
    }
};

constexpr std::size_t KeysOfTheSlots = std::size_t{14} * 4;
const std::vector<std::u16string> KeysAfterTheSlots = {u"Data12HourValue",
                                                       u"Data24HourValue",
                                                       u"BackColor",
                                                       u"ForeColor",
                                                       u"CalBackColor",
                                                       u"CalDisabledBackColor",
                                                       u"CalDisabledForeColor",
                                                       u"CalEnabledTitleBack",
                                                       u"CalEnabledTitleFore",
                                                       u"CalDisabledTitleBack",
                                                       u"CalDisabledTitleFore",
                                                       u"CalTrailerColor",
                                                       u"Mode",
                                                       u"Caption",
                                                       u"Enabled",
                                                       u"Font",
                                                       u"TimeHeight",
                                                       u"TimeWidth",
                                                       u"ProtoShow24Hour",
                                                       u"ShowDST",
                                                       u"ShowSeconds",
                                                       u"ShowToday",
                                                       u"StartOfWeek",
                                                       u"UsePCDateTime"};

TEST_F(SetControlPersistenceTest, ANewInstanceSavesNothingButItsFont) {
    for (const bool userMode : {true, false}) {
        world.container.userMode = userMode;
        Create();
        control->InitProperties();
        EXPECT_EQ(SavedKeys(), Keys{u"Font"});
        control.reset();
    }
}

TEST_F(SetControlPersistenceTest, AllKeysAreWrittenInTheirOrderWhenAllAreAskedFor) {
    LoadInDesigner();
    const Keys keys = SavedKeys(true);
    ASSERT_EQ(keys.size(), KeysOfTheSlots + KeysAfterTheSlots.size());
    EXPECT_EQ(Keys(keys.begin(), keys.begin() + 5),
              (Keys{u"DataLMObject0", u"DataType0", u"DataVarName0", u"DataElemPath0", u"DataLMObject1"}));
    EXPECT_EQ(keys[13 * 4 + 1], u"DataType13");
    EXPECT_EQ(Keys(keys.begin() + KeysOfTheSlots, keys.end()), KeysAfterTheSlots);
}

TEST_F(SetControlPersistenceTest, NothingIsAnnouncedWhileLoading) {
    world.container.userMode = false;
    Create();
    control->InitProperties();
    MemoryBag bag = BoundBag();
    bag.Put(u"Caption", u"Clock"s);
    bag.Put(u"Mode", std::int32_t{2});
    control->ReadProperties(bag);
    EXPECT_TRUE(world.container.changes.empty());
}

/// Every key with a value that differs from its default.
MemoryBag UnusualBag() {
    MemoryBag bag;
    for (std::int32_t slot = 0; slot < 14; ++slot) {
        const std::string digits = std::to_string(slot);
        const std::u16string number(digits.begin(), digits.end());
        bag.Put(u"DataLMObject" + number, 100 + slot);
        bag.Put(u"DataType" + number, std::int32_t{3});
        bag.Put(u"DataVarName" + number, u"nv" + number);
        bag.Put(u"DataElemPath" + number, u"Path." + number);
    }
    std::int32_t number = 11;
    for (std::size_t i = 0; i < 12; ++i) bag.Put(KeysAfterTheSlots[i], number++);
    bag.Put(u"Mode", std::int32_t{2});
    bag.Put(u"Caption", u"Uhr \u00fc\xD83D\xDE00"s);
    bag.Put(u"Enabled", false);
    bag.Put(u"Font", headless::MakeFont(u"Tahoma", 80000));
    bag.Put(u"TimeHeight", std::int32_t{555});
    bag.Put(u"TimeWidth", std::int32_t{3333});
    bag.Put(u"ProtoShow24Hour", std::int32_t{11});
    bag.Put(u"ShowDST", false);
    bag.Put(u"ShowSeconds", true);
    bag.Put(u"ShowToday", false);
    bag.Put(u"StartOfWeek", std::int32_t{7});
    bag.Put(u"UsePCDateTime", false);
    return bag;
}

TEST_F(SetControlPersistenceTest, RoundTripsThroughBagAndStreamInDesignAndInRunMode) {
    const MemoryBag saved = UnusualBag();
    for (const bool userMode : {true, false}) {
        world.container.userMode = userMode;
        world.settings.keys.clear();
        Create();
        control->ReadProperties(saved);
        const MemoryBag again = Save();
        EXPECT_EQ(again.Entries(), saved.Entries()) << userMode;

        const std::vector<std::byte> stream = EncodeProperties(again);
        const auto makeFont = [](const FontTraits& traits) { return headless::MakeFont(traits); };
        const std::span<const std::byte> bytes(stream);
        const MemoryBag decoded = DecodeProperties(bytes.subspan(PropertyStreamHeaderSize), makeFont);
        control->ReadProperties(decoded);
        EXPECT_EQ(EncodeProperties(Save()), stream) << userMode;
        control.reset();
    }
}

/// Holds the same value under every key, or fails every time.
class HostileBag final : public PropertyBag {
public:
    explicit HostileBag(Value value, bool fail = false) : m_value(std::move(value)), m_bFails(fail) {}
    Value Read(std::u16string_view /*key*/, const Value& /*fallback*/) const override {
        if (m_bFails) throw std::bad_alloc();
        return m_value;
    }
    void Write(std::u16string_view /*key*/, const Value& /*value*/, const Value* /*defaultValue*/) override {}
    void ReportBadValue(std::u16string_view key) const override { reported.emplace_back(key); }
    mutable std::vector<std::u16string> reported;

private:
    Value m_value;
    bool m_bFails;
};

TEST_F(SetControlPersistenceTest, ABagThatFailsOrHoldsNonsenseLoadsTheDefaultsAndReportsEachKey) {
    world.container.userMode = false;
    const HostileBag bags[] = {HostileBag(Value{}, true), HostileBag(Unsupported{}),
                               HostileBag(std::numeric_limits<double>::quiet_NaN())};
    for (const HostileBag& bag : bags) {
        Create();
        control->ReadProperties(bag);
        EXPECT_EQ(SavedKeys(), Keys{u"Font"});
        EXPECT_EQ(control->GetFont(), nullptr);
        EXPECT_EQ(bag.reported.size(), KeysOfTheSlots + KeysAfterTheSlots.size());
        control.reset();
    }
}

TEST_F(SetControlPersistenceTest, ValuesThatAPropertyDoesNotTakeLoadAsItsDefault) {
    const struct {
        const char16_t* key;
        Value value;
    } cases[] = {
        {u"Mode", std::int32_t{5}},        {u"Mode", u"two"s},
        {u"DataType5", std::int32_t{7}},   {u"DataType0", std::int32_t{-1}},
        {u"StartOfWeek", std::int32_t{9}}, {u"StartOfWeek", 1e300},
        {u"Enabled", u"perhaps"s},         {u"TimeHeight", u"tall"s},
        {u"DataLMObject3", 4294967296.0},  {u"Caption", Unsupported{}},
        {u"BackColor", 2147483663.0},      {u"Font", u"Arial"s},
        {u"UsePCDateTime", FontPtr()},
    };
    for (const auto& c : cases) {
        world.settings.keys.clear();
        MemoryBag bag;
        bag.Put(c.key, c.value);
        LoadInDesigner(bag);
        EXPECT_EQ(SavedKeys(), Keys{u"Font"}) << testing::PrintToString(c.key);
        control.reset();
    }
}

TEST_F(SetControlPersistenceTest, ASavedShowDSTOverridesWhatTheModeForces) {
    MemoryBag bag;
    bag.Put(u"ShowDST", false);
    LoadInDesigner(bag);
    EXPECT_EQ(control->Mode(), sdtSetDateTime);
    EXPECT_FALSE(control->ShowDST());
    EXPECT_FALSE(Dst().IsVisible());
}

TEST_F(SetControlPersistenceTest, ALoadStartsFromTheDefaultsWhateverWasLoadedBefore) {
    LoadInDesigner(UnusualBag());
    control->ReadProperties(MemoryBag());
    EXPECT_EQ(SavedKeys(), Keys{u"Font"});
    ASSERT_NE(control->GetFont(), nullptr);  // a bag without a font leaves the present one
    EXPECT_EQ(control->GetFont()->Traits().name, u"Tahoma");
}

TEST_F(SetControlPersistenceTest, ANewInstanceTakesTheContainersFontAndTheSizeThatItNeedsInIt) {
    world.container.ambientFont = headless::MakeFont(u"Tahoma", 165000);
    Create();
    control->InitProperties();
    EXPECT_EQ(control->GetFont(), world.container.ambientFont);
    EXPECT_EQ(world.surface.Bounds().height, 3 * 390 + 600 + 4740 + 390 + 120);
    EXPECT_EQ(world.surface.setSizeCalls, 1);
}

TEST_F(SetControlPersistenceTest, TheRememberedChoiceOverridesTheSavedOneAtRunTimeOnly) {
    const std::u16string path = u"SOFTWARE\\The Corvale Company\\Controls\\KivSetDateTime";
    const struct {
        Value stored;
        bool savedChoice;
        bool expected;
    } cases[] = {{std::int32_t{0}, true, false}, {u"0"s, true, false},        {std::int32_t{-1}, false, true},
                 {std::int32_t{7}, false, true}, {Unsupported{}, true, true}, {Unsupported{}, false, false}};
    for (const auto& c : cases) {
        MemoryBag bag;
        bag.Put(u"UsePCDateTime", c.savedChoice);
        world.settings.keys[path][u"UsePCDateTime"] = c.stored;
        world.container.userMode = true;
        Load(bag);
        EXPECT_EQ(control->UsePCDateTime(), c.expected);
        control.reset();
        EXPECT_EQ(world.settings.keys[path][u"UsePCDateTime"], Value{std::int32_t{c.expected ? -1 : 0}});
    }

    world.settings.calls = 0;
    LoadInDesigner();
    control.reset();
    EXPECT_EQ(world.settings.calls, 0);
}

TEST_F(SetControlPersistenceTest, ASettingsStoreThatFailsHarmsNothing) {
    world.settings.fails = true;
    Load();
    EXPECT_TRUE(control->UsePCDateTime());
    control->Terminate();
    control->Terminate();
    control.reset();
    EXPECT_EQ(world.settings.calls, 2);
}

}  // namespace
}  // namespace kiv
