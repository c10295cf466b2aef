#include "common/ReadPropXxx.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "common/MemoryBag.h"
#include "common/NumericText.h"
#include "common/ValueConversion.h"
#include "headless/HeadlessFont.h"
#include "platform/HostError.h"

namespace kiv {
namespace {

using namespace std::string_literals;

/// Holds one value under every key, or fails; remembers what was reported as bad.
class OneValueBag final : public PropertyBag {
public:
    explicit OneValueBag(Value value) : m_value(std::move(value)) {}
    Value Read(std::u16string_view /*key*/, const Value& /*fallback*/) const override {
        if (fails) throw std::bad_alloc();
        return m_value;
    }
    void Write(std::u16string_view /*key*/, const Value& /*value*/, const Value* /*defaultValue*/) override {}
    void ReportBadValue(std::u16string_view /*key*/) const override {
        ++reported;
        if (fails) throw std::bad_alloc();
    }

    bool fails = false;
    mutable int reported = 0;

private:
    Value m_value;
};

const double NaN = std::numeric_limits<double>::quiet_NaN();

TEST(ReadPropLong, ConvertsWhatIsANumberAndTakesTheDefaultForTheRest) {
    constexpr std::int32_t Default = 77;
    const struct {
        Value value;
        std::int32_t result;
        bool bad;
    } cases[] = {
        {std::int16_t{-5}, -5, false},
        {true, -1, false},
        {2.5, 2, false},
        {u" 12 "s, 12, false},
        {std::monostate{}, 0, false},
        {OleDate{3.7}, 4, false},
        {u""s, Default, true},
        {u"12x"s, Default, true},
        {1e12, Default, true},
        {NaN, Default, true},
        {Unsupported{}, Default, true},
        {FontPtr(), Default, true},
        {headless::MakeFont(u"Tahoma"), Default, true},
    };
    for (const auto& c : cases) {
        const OneValueBag bag(c.value);
        EXPECT_EQ(ReadPropLong(bag, u"Key", Default), c.result) << c.value.index();
        EXPECT_EQ(bag.reported, c.bad ? 1 : 0) << c.value.index();
    }
}

TEST(ReadPropBool, ConvertsWordsAndNumbersAndTakesTheDefaultForTheRest) {
    const struct {
        Value value;
        bool result;
        bool bad;
    } cases[] = {
        {u"TRUE"s, true, false},
        {u" false "s, false, false},
        {u"-1"s, true, false},
        {u"0"s, false, false},
        {0.4, true, false},
        {std::int32_t{0}, false, false},
        {std::monostate{}, false, false},
        {u"maybe"s, true, true},
        {u""s, true, true},
        {NaN, true, true},
        {Unsupported{}, true, true},
    };
    for (const auto& c : cases) {
        const OneValueBag bag(c.value);
        EXPECT_EQ(ReadPropBool(bag, u"Key", true), c.result) << c.value.index();
        EXPECT_EQ(bag.reported, c.bad ? 1 : 0) << c.value.index();
    }
}

TEST(ReadPropString, HoldsTheTextToItsBoundsAndConvertsNumbers) {
    const struct {
        Value value;
        std::int16_t min;
        std::int16_t max;
        const char16_t* result;
    } cases[] = {
        {u"ab"s, 1, 1, u"-"},
        {u""s, 1, 1, u"-"},
        {u"/"s, 1, 1, u"/"},
        {u""s, -1, -1, u""},
        {u"ab"s, -1, 1, u"-"},
        {u"ab"s, 3, -1, u"-"},
        {std::int32_t{-3}, -1, -1, u"-3"},
        {0.1, -1, -1, u"0.1"},
        {true, -1, -1, u"True"},
        {OleDate{1}, -1, -1, u"-"},
        {Unsupported{}, -1, -1, u"-"},
        {NaN, -1, -1, u"-"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ReadPropString(OneValueBag(c.value), u"Key", u"-", c.min, c.max), c.result) << c.value.index();
    }
}

TEST(ReadPropReaders, SurviveABagThatFailsEvenWhileItIsToldSo) {
    OneValueBag bag(std::int32_t{1});
    bag.fails = true;
    EXPECT_EQ(ReadPropLong(bag, u"Key", 5), 5);
    EXPECT_TRUE(ReadPropBool(bag, u"Key", true));
    EXPECT_EQ(ReadPropString(bag, u"Key", u"x"), u"x");
    EXPECT_EQ(bag.reported, 3);
}

TEST(DateValue, IsWhateverHasAnAmountButNoText) {
    EXPECT_EQ(ToDateTime(Value{}), DateTime{});
    EXPECT_EQ(ToDateTime(Value{std::int16_t{2}}).date, (CivilDate{1900, 1, 1}));
    EXPECT_EQ(ToDateTime(Value{OleDate{0.5}}).time.hour, 12);
    for (const Value& bad : {Value{u"7/4/2001"s}, Value{NaN}, Value{1e9}, Value{Unsupported{}}, Value{FontPtr()}}) {
        EXPECT_THROW(ToDateTime(bad), HostError);
    }
}

TEST(MemoryBag, LeavesOutDefaultsWhateverTheirWidthAndKeepsTheOrder) {
    MemoryBag bag;
    const Value shortDefault{std::int16_t{495}};
    bag.Write(u"B", Value{std::int32_t{495}}, &shortDefault);
    EXPECT_TRUE(bag.Entries().empty());
    bag.Write(u"B", Value{std::int32_t{496}}, &shortDefault);
    bag.Write(u"A", Value{std::int32_t{1}}, nullptr);
    bag.Write(u"B", Value{std::int32_t{497}}, &shortDefault);
    ASSERT_EQ(bag.Entries().size(), 2U);
    EXPECT_EQ(bag.Entries()[0], (MemoryBag::Entry{u"B", std::int32_t{497}}));
    const MemoryBag copy = bag;
    EXPECT_EQ(copy.Read(u"A", Value{}), Value{std::int32_t{1}});
    EXPECT_EQ(copy.Read(u"C", Value{true}), Value{true});
}

TEST(MemoryBag, FindsEachOfManyKeysThatAreNearlyTheSame) {
    constexpr std::int32_t Count = 3000;
    const auto key = [](std::int32_t i) { return u"DataElemPath" + ToText(i); };
    MemoryBag bag;
    for (std::int32_t i = 0; i < Count; ++i) {
        EXPECT_EQ(bag.Read(key(i), Value{}), Value{});
        EXPECT_TRUE(bag.Add(key(i), Value{i}));
        EXPECT_FALSE(bag.Add(key(i / 2), Value{-1})) << "each key once";
    }
    bag.Put(key(7), Value{true});
    for (std::int32_t i = 0; i < Count; ++i) EXPECT_EQ(bag.Read(key(i), Value{}), i == 7 ? Value{true} : Value{i});
    EXPECT_EQ(bag.Read(u"DataElemPath", Value{}), Value{});
    EXPECT_EQ(bag.Entries().size(), std::size_t{Count});
}

}  // namespace
}  // namespace kiv
