// Defaults, saving and loading: the keys with their order, hostile bags, and what the container hears of it.
#include "common/PropertyStream.h"
#include "ShowControlFixture.h"

namespace kiv {
namespace {

using namespace std::string_literals;

class ShowControlPersistenceTest : public ShowControlTest {
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
    static Keys KeysOfSlots() {
        Keys keys;
        for (char16_t slot = u'0'; slot < u'7'; ++slot) {
            for (const char16_t* name : {u"DataLMObject", u"DataType", u"DataVarName", u"DataElemPath"}) {
                keys.push_back(std::u16string(name) + slot);
            }
        }
        return keys;
    }
    static Keys Joined(Keys first, const Keys& second) {
        first.insert(first.end(), second.begin(), second.end());
        return first;
    }
    /// Every key with a value other than its default.
    static MemoryBag OtherBag() {
        MemoryBag bag;
        std::int32_t number = 1;
        for (char16_t slot = u'0'; slot < u'7'; ++slot) {
            bag.Put(u"DataLMObject"s + slot, number++);
            bag.Put(u"DataType"s + slot, std::int32_t{3});
            bag.Put(u"DataVarName"s + slot, u"name"s + slot);
            bag.Put(u"DataElemPath"s + slot, u"path\U0001F552"s + slot);
        }
        for (const char16_t* key : {u"Data12HourValue", u"Data24HourValue", u"DataDMYValue", u"DataMDYValue",
                                    u"ProtoDateFormat", u"ProtoShow24Hour", u"BackColor", u"ForeColor"}) {
            bag.Put(key, --number - 100);
        }
        bag.Put(u"Mode", std::int32_t{2});
        bag.Put(u"Caption", u"\u00C4nderung, \0"s);
        bag.Put(u"BorderStyle", std::int32_t{1});
        bag.Put(u"Enabled", false);
        bag.Put(u"Font", headless::MakeFont(u"Tahoma", 120000));
        for (const char16_t* key : {u"CaptionHeight", u"ValueHeight"}) bag.Put(key, std::int16_t{600});
        bag.Put(u"CaptionWidth", std::int16_t{1111});
        bag.Put(u"ValueWidth", std::int16_t{32767});
        for (const char16_t* key : {u"LockCapWidth", u"LockValWidth", u"ShowSeconds", u"ShowLongDay"}) {
            bag.Put(key, true);
        }
        for (const char16_t* key : {u"ShowCentury", u"ShowLeadZeros", u"UpperCase"}) bag.Put(key, false);
        bag.Put(u"DateDelimiter", u"\u2013"s);
        bag.Put(u"TimeDelimiter", u"."s);
        bag.Put(u"AMPMFormat", u"vorm., nachm."s);
        return bag;
    }

    /// Notes what is asked for, answers with the same value to every key, and what was reported as bad.
    class OneAnswerBag final : public PropertyBag {
    public:
        explicit OneAnswerBag(Value answer, std::u16string onlyKey = {})
            : m_answer(std::move(answer)), m_onlyKey(std::move(onlyKey)) {}
        Value Read(std::u16string_view key, const Value& fallback) const override {
            asked.emplace_back(key);
            if (!m_onlyKey.empty() && key != m_onlyKey) return fallback;
            if (throws) throw std::bad_alloc();
            return m_answer;
        }
        void Write(std::u16string_view, const Value&, const Value*) override {}
        void ReportBadValue(std::u16string_view key) const override { reported.emplace_back(key); }

        bool throws = false;
        mutable Keys asked;
        mutable Keys reported;

    private:
        Value m_answer;
        std::u16string m_onlyKey;
    };
};

const std::vector<std::u16string> ValueKeys = {
    u"Data12HourValue", u"Data24HourValue", u"DataDMYValue", u"DataMDYValue", u"Mode",
    u"Caption",         u"BackColor",       u"ForeColor",    u"BorderStyle",  u"Enabled"};
const std::vector<std::u16string> SizeKeys = {u"CaptionHeight", u"CaptionWidth", u"ValueHeight",
                                              u"ValueWidth",    u"LockCapWidth", u"LockValWidth"};
const std::vector<std::u16string> FormatKeys = {
    u"DateDelimiter", u"ProtoDateFormat", u"ShowCentury", u"AMPMFormat",    u"ProtoShow24Hour",
    u"ShowSeconds",   u"TimeDelimiter",   u"ShowLongDay", u"ShowLeadZeros", u"UpperCase"};

TEST_F(ShowControlPersistenceTest, ANewControlHasItsSizeAndSavesNothingButItsFont) {
    for (const bool userMode : {true, false}) {
        world.container.userMode = userMode;
        world.container.ambientFont = headless::MakeFont(u"Tahoma", 165000);
        Create();
        control->InitProperties();
        EXPECT_EQ(SavedKeys(), Keys{u"Font"});
        // The font comes last: what it asks of the sizes follows with the next resize.
        EXPECT_EQ(control->GetFont(), world.container.ambientFont);
        EXPECT_EQ(world.area.Bounds(), (Rect{0, 0, 4890, 195}));
        world.area.Resize({4890, 195});
        EXPECT_EQ(world.area.Bounds(), (Rect{0, 0, 4890, 390}));
    }
}

TEST_F(ShowControlPersistenceTest, KeysAreWrittenInOneOrderAndReadInAnother) {
    Load();
    EXPECT_EQ(SavedKeys(true),
              Joined(KeysOfSlots(), Joined(ValueKeys, Joined({u"Font"}, Joined(SizeKeys, FormatKeys)))));
    const OneAnswerBag bag(Value{}, u"none");
    control->ReadProperties(bag);
    EXPECT_EQ(bag.asked, Joined(KeysOfSlots(), Joined(ValueKeys, Joined(FormatKeys, Joined(SizeKeys, {u"Font"})))));
}

TEST_F(ShowControlPersistenceTest, EveryValueSurvivesBagAndStreamInDesignAndInRunMode) {
    for (const bool userMode : {true, false}) {
        world.container.userMode = userMode;
        const MemoryBag original = OtherBag();
        Load(original);
        const std::vector<std::byte> stream = EncodeProperties(Save(true));
        control.reset();
        world.framework.definitions.clear();
        const MemoryBag decoded = DecodeProperties(std::span(stream).subspan(PropertyStreamHeaderSize),
                                                   [](const FontTraits& traits) { return headless::MakeFont(traits); });
        Load(decoded);
        const MemoryBag saved = Save();
        EXPECT_EQ(saved.Entries().size(), original.Entries().size());
        for (const auto& [key, value] : original.Entries()) {
            const Value after = saved.Read(key, Value{Unsupported{}});
            if (const auto* font = std::get_if<FontPtr>(&value)) {
                ASSERT_TRUE(std::holds_alternative<FontPtr>(after));
                EXPECT_EQ(std::get<FontPtr>(after)->Traits(), (*font)->Traits());
            } else {
                EXPECT_EQ(after, value) << Narrow(key);
            }
        }
        EXPECT_EQ(world.area.Bounds(), (Rect{0, 0, 1111 + 32767, 600}));
    }
}

TEST_F(ShowControlPersistenceTest, ABadValueLoadsAsItsDefaultIsReportedAndSpoilsNoOther) {
    const std::pair<const char16_t*, Value> cases[] = {
        {u"Mode", std::int32_t{5}},
        {u"Mode", std::int32_t{0}},
        {u"Mode", u"date"s},
        {u"BorderStyle", std::int32_t{7}},
        {u"DateDelimiter", u"--"s},
        {u"DateDelimiter", u""s},
        {u"TimeDelimiter", u"::"s},
        {u"AMPMFormat", u"AM"s},
        {u"AMPMFormat", u"a,b,c"s},
        {u"AMPMFormat", Value{Unsupported{}}},
        {u"DataType0", std::int32_t{4}},
        {u"DataType6", std::int32_t{-1}},
        {u"DataLMObject3", 1e12},
        {u"CaptionHeight", std::int32_t{70000}},
        {u"ValueWidth", std::int32_t{-40000}},
        {u"Enabled", u"perhaps"s},
        {u"ProtoDateFormat", std::numeric_limits<double>::quiet_NaN()},
        {u"Font", u"Tahoma"s},
        {u"BackColor", Value{Unsupported{}}},
    };
    for (const auto& [key, value] : cases) {
        SCOPED_TRACE(Narrow(key));
        const OneAnswerBag bag(value, key);
        Create();
        control->ReadProperties(bag);
        EXPECT_EQ(bag.reported, Keys{key});
        EXPECT_EQ(SavedKeys(), Keys{u"Font"});
        control.reset();
        world.framework.definitions.clear();
    }
}

TEST_F(ShowControlPersistenceTest, ABagThatFailsOrHoldsOnlyNonsenseLoadsTheDefaults) {
    const std::size_t all = KeysOfSlots().size() + ValueKeys.size() + SizeKeys.size() + FormatKeys.size() + 1;
    OneAnswerBag failing{Value{}};
    failing.throws = true;
    Create();
    control->ReadProperties(failing);
    EXPECT_EQ(failing.reported.size(), all);
    EXPECT_EQ(SavedKeys(), Keys{u"Font"});

    OneAnswerBag nonsense{Value{Unsupported{}}};
    control->ReadProperties(OtherBag());
    control->ReadProperties(nonsense);
    EXPECT_EQ(nonsense.reported.size(), all);
    EXPECT_EQ(Text(), "JAN-01-2000");
    EXPECT_EQ(Save().Read(u"Mode", Value{}), Value{});
}

TEST_F(ShowControlPersistenceTest, SizesBelowWhatTheTextNeedsAreRaisedWhenLoaded) {
    MemoryBag bag = BoundBag();
    for (const char16_t* key : {u"CaptionHeight", u"CaptionWidth", u"ValueHeight", u"ValueWidth"}) {
        bag.Put(key, std::int16_t{-5});
    }
    bag.Put(u"ShowLongDay", true);
    Load(bag);
    EXPECT_EQ(Text(), "Saturday, Jan-01-2000");
    EXPECT_EQ(world.area.Bounds(), (Rect{0, 0, 435 + 21 * 75, 195}));
}

TEST_F(ShowControlPersistenceTest, ALoadAnnouncesNothingAndRaisesValueChangeOnceAtItsEnd) {
    for (const bool userMode : {true, false}) {
        world.container.userMode = userMode;
        Create();
        std::string atEvent;
        host.onEvent = [&](const std::string&) { atEvent = Text() + Narrow(control->Caption()); };
        control->ReadProperties(With(BoundBag(), u"Caption", u"!"s));
        EXPECT_EQ(host.Take(), Events{"ValueChange"});
        EXPECT_EQ(atEvent, userMode ? "Jan-01-2000!" : "Jul-04-2001!");
        control->ReadProperties(BoundBag());  // the same text again
        EXPECT_EQ(host.Take(), Events{});
        EXPECT_EQ(world.container.TakeChanges(), Keys{});
        EXPECT_EQ(world.container.dirtyMarks, 0);
        host.onEvent = nullptr;
        control.reset();
    }
}

TEST_F(ShowControlPersistenceTest, WhileLoadingBadValuesBecomeDefaultsWithoutAnError) {
    class MeddlingBag final : public PropertyBag {
    public:
        explicit MeddlingBag(ShowControl& control) : m_control(control) {}
        Value Read(std::u16string_view key, const Value& fallback) const override {
            if (key == u"Font") {
                m_control.SetDateDelimiter(u"/");
                m_control.SetDateDelimiter(u"//");
                m_control.SetAMPMFormat(u"a,b");
                m_control.SetAMPMFormat(u"a");
                m_control.SetTimeDelimiter(u"");
                m_control.SetBorderStyle(1);
                m_control.SetBorderStyle(9);
            }
            return fallback;
        }
        void Write(std::u16string_view, const Value&, const Value*) override {}

    private:
        ShowControl& m_control;
    };
    Create();
    const MeddlingBag bag(*control);
    EXPECT_NO_THROW(control->ReadProperties(bag));
    EXPECT_EQ(SavedKeys(), Keys{u"Font"});
}

TEST_F(ShowControlPersistenceTest, TheTextAskedForDuringALoadFollowsWhatWasReadSoFar) {
    class AskingBag final : public PropertyBag {
    public:
        AskingBag(ShowControl& control, MemoryBag bag) : m_control(control), m_bag(std::move(bag)) {}
        mutable std::vector<std::u16string> seen;

    private:
        Value Read(std::u16string_view key, const Value& fallback) const override {
            seen.push_back(m_control.Value());
            return m_bag.Read(key, fallback);
        }
        void Write(std::u16string_view, const Value&, const Value*) override {}

        ShowControl& m_control;
        MemoryBag m_bag;
    };
    Load();
    const std::u16string before = control->Value();
    const AskingBag bag(*control, OtherBag());
    control->ReadProperties(bag);
    ASSERT_NE(control->Value(), before);
    EXPECT_EQ(bag.seen.front(), before);
    EXPECT_EQ(bag.seen.back(), control->Value());
}

}  // namespace
}  // namespace kiv
