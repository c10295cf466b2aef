#include "common/PropertyStream.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

#include "headless/HeadlessFont.h"
#include "platform/HostError.h"

namespace kiv {
namespace {

using namespace std::string_literals;
using Bytes = std::vector<std::byte>;

FontPtr MakeHeadlessFont(const FontTraits& traits) {
    return headless::MakeFont(traits);
}

MemoryBag Decode(const Bytes& stream) {
    const std::span<const std::byte> all(stream);
    if (all.size() < PropertyStreamHeaderSize) throw HostError(380);
    const std::size_t length = DecodePropertyHeader(all.first(PropertyStreamHeaderSize));
    if (all.size() != PropertyStreamHeaderSize + length) throw HostError(380);
    return DecodeProperties(all.subspan(PropertyStreamHeaderSize), MakeHeadlessFont);
}

MemoryBag FullBag() {
    FontTraits traits;
    traits.name = u"MS Sans Serif";
    traits.size = 97500;
    traits.weight = 700;
    traits.charset = 204;
    traits.underline = true;
    MemoryBag bag;
    bag.Put(u"Empty", Value{});
    bag.Put(u"Bool", true);
    bag.Put(u"Int16", std::int16_t{-2});
    bag.Put(u"Int32", std::int32_t{-2147483647 - 1});
    bag.Put(u"Double", -0.0);
    bag.Put(u"Date", OleDate{37076.25});
    bag.Put(u"String", u"h\u00e9\xD83D\xDE00\0x"s);
    bag.Put(u"Font", headless::MakeFont(traits));
    return bag;
}

TEST(PropertyStream, RoundTripsEveryKindOfValueInOrder) {
    const MemoryBag bag = FullBag();
    const MemoryBag again = Decode(EncodeProperties(bag));
    ASSERT_EQ(again.Entries().size(), bag.Entries().size());
    for (std::size_t i = 0; i + 1 < bag.Entries().size(); ++i) EXPECT_EQ(again.Entries()[i], bag.Entries()[i]);
    const FontPtr font = std::get<FontPtr>(again.Entries().back().second);
    EXPECT_EQ(font->Traits(), std::get<FontPtr>(bag.Entries().back().second)->Traits());
    EXPECT_EQ(EncodeProperties(again), EncodeProperties(bag));
}

TEST(PropertyStream, HasTheSameBytesOnEveryMachine) {
    MemoryBag bag;
    bag.Put(u"A", std::int32_t{0x01020304});
    const unsigned char expected[] = {'K', 'I', 'V', 'P', 1, 0, 0, 0, 9, 0, 0, 0, 1, 0, 'A', 0, 3, 4, 3, 2, 1};
    const Bytes stream = EncodeProperties(bag);
    ASSERT_EQ(stream.size(), sizeof expected);
    for (std::size_t i = 0; i < stream.size(); ++i) EXPECT_EQ(std::to_integer<unsigned char>(stream[i]), expected[i]);
}

TEST(PropertyStream, CutAnywhereIsRefused) {
    const Bytes stream = EncodeProperties(FullBag());
    for (std::size_t length = 0; length < stream.size(); ++length) {
        EXPECT_THROW(Decode(Bytes(stream.begin(), stream.begin() + static_cast<std::ptrdiff_t>(length))), HostError);
        // The same with a header that matches what is left: then the records themselves must show it.
        if (length <= PropertyStreamHeaderSize) continue;
        const std::span<const std::byte> records(stream.data() + PropertyStreamHeaderSize,
                                                 length - PropertyStreamHeaderSize);
        try {
            EXPECT_LT(DecodeProperties(records, MakeHeadlessFont).Entries().size(), FullBag().Entries().size());
        } catch (const HostError& error) {
            EXPECT_EQ(error.Number(), 380);
        }
    }
}

TEST(PropertyStream, WithAnyOneByteChangedIsDecodedOrRefusedButNothingElse) {
    const Bytes stream = EncodeProperties(FullBag());
    for (std::size_t i = 0; i < stream.size(); ++i) {
        for (const int flip : {0x01, 0x80, 0xFF}) {
            Bytes changed = stream;
            changed[i] ^= static_cast<std::byte>(flip);
            try {
                Decode(changed);
            } catch (const HostError& error) {
                EXPECT_EQ(error.Number(), 380);
            }
        }
    }
}

TEST(PropertyStream, OfRandomBytesIsRefused) {
    std::mt19937 random(20010704);
    std::uniform_int_distribution<int> byte(0, 255);
    int refused = 0;
    for (int run = 0; run < 2000; ++run) {
        Bytes records(static_cast<std::size_t>(run % 97 + 1));
        std::ranges::generate(records, [&] { return static_cast<std::byte>(byte(random)); });
        try {
            DecodeProperties(records, MakeHeadlessFont);
        } catch (const HostError&) {
            ++refused;
        }
    }
    EXPECT_EQ(refused, 2000);
}

Bytes HeaderOf(std::uint32_t magic, std::uint32_t version, std::uint32_t length) {
    Bytes header;
    for (const std::uint32_t number : {magic, version, length}) {
        for (int shift = 0; shift < 32; shift += 8) header.push_back(static_cast<std::byte>((number >> shift) & 0xFF));
    }
    return header;
}

TEST(PropertyStreamHeader, OfAnotherKindVersionOrImpossibleLengthIsRefused) {
    constexpr std::uint32_t Magic = 0x5056494B;
    EXPECT_EQ(DecodePropertyHeader(HeaderOf(Magic, 1, 7)), 7U);
    EXPECT_EQ(DecodePropertyHeader(HeaderOf(Magic, 1, PropertyStreamMaxSize - 12)), PropertyStreamMaxSize - 12);
    EXPECT_THROW(DecodePropertyHeader(HeaderOf(Magic + 1, 1, 7)), HostError);
    EXPECT_THROW(DecodePropertyHeader(HeaderOf(Magic, 2, 7)), HostError);
    EXPECT_THROW(DecodePropertyHeader(HeaderOf(Magic, 1, PropertyStreamMaxSize - 11)), HostError);
    EXPECT_THROW(DecodePropertyHeader(HeaderOf(Magic, 1, 0xFFFFFFFF)), HostError);
    EXPECT_THROW(DecodePropertyHeader(Bytes(11)), HostError);
}

Bytes RecordsOf(const MemoryBag& bag) {
    Bytes stream = EncodeProperties(bag);
    stream.erase(stream.begin(), stream.begin() + PropertyStreamHeaderSize);
    return stream;
}

TEST(PropertyStream, RefusesDoubledKeysEmptyKeysAndBadValues) {
    MemoryBag one;
    one.Put(u"A", true);
    Bytes doubled = RecordsOf(one);
    doubled.insert(doubled.end(), doubled.begin(), doubled.end());
    EXPECT_THROW(DecodeProperties(doubled, MakeHeadlessFont), HostError);
    EXPECT_THROW(DecodeProperties(Bytes{std::byte{0}, std::byte{0}, std::byte{0}}, MakeHeadlessFont), HostError);

    Bytes badBool = RecordsOf(one);
    badBool.back() = std::byte{2};
    EXPECT_THROW(DecodeProperties(badBool, MakeHeadlessFont), HostError);

    MemoryBag number;
    number.Put(u"A", 1.0);
    Bytes infinite = RecordsOf(number);
    infinite[infinite.size() - 1] = std::byte{0x7F};
    infinite[infinite.size() - 2] = std::byte{0xF0};
    EXPECT_THROW(DecodeProperties(infinite, MakeHeadlessFont), HostError);
}

TEST(PropertyStream, RefusesFontStylesThatThereAreNot) {
    MemoryBag bag;
    bag.Put(u"Font", headless::MakeFont(u"Tahoma"));
    Bytes stream = EncodeProperties(bag);
    stream.back() = std::byte{7};
    const MemoryBag decoded = Decode(stream);
    const auto& font = std::get<FontPtr>(decoded.Entries().front().second);
    EXPECT_TRUE(font->Traits().italic && font->Traits().underline && font->Traits().strikethrough);
    stream.back() = std::byte{8};
    EXPECT_THROW(Decode(stream), HostError);
}

TEST(PropertyStream, MakesNoFontBeforeTheWholeStreamHasProvedSound) {
    Bytes records = RecordsOf(FullBag());
    records.push_back(std::byte{1});
    int made = 0;
    EXPECT_THROW(DecodeProperties(records,
                                  [&](const FontTraits& traits) {
                                      ++made;
                                      return headless::MakeFont(traits);
                                  }),
                 HostError);
    EXPECT_EQ(made, 0);
}

TEST(PropertyStream, ThatItWouldNotReadItselfIsNotWritten) {
    const auto encode = [](const std::u16string& key, Value value) {
        MemoryBag bag;
        bag.Put(key, std::move(value));
        return EncodeProperties(bag);
    };
    EXPECT_THROW(encode(u"", true), HostError);
    EXPECT_THROW(encode(std::u16string(65536, u'k'), true), HostError);
    EXPECT_THROW(encode(u"A", Unsupported{}), HostError);
    EXPECT_THROW(encode(u"A", std::numeric_limits<double>::quiet_NaN()), HostError);
    EXPECT_THROW(encode(u"A", std::u16string(PropertyStreamMaxSize / 2, u'x')), HostError);

    // A font object may claim what no font has; its stream must be readable all the same.
    FontTraits traits;
    traits.name = std::u16string(300, u'n');
    traits.size = -1;
    traits.weight = 30000;
    const MemoryBag again = Decode(encode(u"A", headless::MakeFont(traits)));
    EXPECT_EQ(std::get<FontPtr>(again.Entries()[0].second)->Traits().weight, 1000);
    EXPECT_EQ(Decode(encode(u"A", FontPtr())).Entries()[0].second, Value{});
}

}  // namespace
}  // namespace kiv
