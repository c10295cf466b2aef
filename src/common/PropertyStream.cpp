// Layout, all little-endian:
//   header   magic u32 "KIVP", version u32, length u32 of the records
//   record   key length u16 (UTF-16 units, not 0), key, tag u8, value
//   value    Empty: nothing; Bool: u8 0 or 1; Int16; Int32; Double, Date: IEEE 754, finite;
//            String: length u32 (UTF-16 units), text;
//            Font: name length u16, name, size i64, weight i16, charset i16, style u8 (1 italic, 2 underline, 4 strike)
#include "common/PropertyStream.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <optional>
#include <type_traits>
#include <utility>

#include "platform/HostError.h"

namespace kiv {

namespace {

constexpr std::uint32_t Magic = 0x5056494B;
constexpr std::uint32_t Version = 1;
constexpr std::size_t MaxRecordsSize = PropertyStreamMaxSize - PropertyStreamHeaderSize;

// No font is larger; the unit is that of FontTraits.
constexpr std::int64_t MaxFontSize = std::int64_t{16384} * 10000;
constexpr std::int16_t MaxFontWeight = 1000;
constexpr std::size_t MaxFontName = 255;

enum class Tag : std::uint8_t { Empty, Bool, Int16, Int32, Double, Date, String, Font, End };

[[noreturn]] void Refuse() {
    throw HostError(ErrorNumber::InvalidPropertyValue);
}

class Writer {
public:
    template <typename Unsigned>
    void Number(Unsigned value) {
        static_assert(std::is_unsigned_v<Unsigned>);
        for (std::size_t i = 0; i < sizeof value; ++i) {
            m_bytes.push_back(static_cast<std::byte>((value >> (8 * i)) & 0xFF));
        }
    }

    void PutTag(Tag tag) { Number(static_cast<std::uint8_t>(tag)); }

    void Real(double value) {
        if (!std::isfinite(value)) Refuse();
        Number(std::bit_cast<std::uint64_t>(value));
    }

    void Text(std::u16string_view text) {
        for (const char16_t unit : text) Number(static_cast<std::uint16_t>(unit));
    }

    std::vector<std::byte>& Bytes() noexcept { return m_bytes; }

private:
    std::vector<std::byte> m_bytes;
};

class ValueWriter {
public:
    explicit ValueWriter(Writer& out) : m_out(out) {}

    void operator()(std::monostate) { m_out.PutTag(Tag::Empty); }
    void operator()(bool value) {
        m_out.PutTag(Tag::Bool);
        m_out.Number(static_cast<std::uint8_t>(value ? 1 : 0));
    }
    void operator()(std::int16_t value) {
        m_out.PutTag(Tag::Int16);
        m_out.Number(static_cast<std::uint16_t>(value));
    }
    void operator()(std::int32_t value) {
        m_out.PutTag(Tag::Int32);
        m_out.Number(static_cast<std::uint32_t>(value));
    }
    void operator()(double value) {
        m_out.PutTag(Tag::Double);
        m_out.Real(value);
    }
    void operator()(OleDate value) {
        m_out.PutTag(Tag::Date);
        m_out.Real(value.days);
    }
    void operator()(const std::u16string& value) {
        if (value.size() > MaxRecordsSize / 2) Refuse();
        m_out.PutTag(Tag::String);
        m_out.Number(static_cast<std::uint32_t>(value.size()));
        m_out.Text(value);
    }
    void operator()(const FontPtr& font) {
        if (!font) return m_out.PutTag(Tag::Empty);
        const FontTraits traits = font->Traits();
        const std::u16string_view name = std::u16string_view(traits.name).substr(0, MaxFontName);
        m_out.PutTag(Tag::Font);
        m_out.Number(static_cast<std::uint16_t>(name.size()));
        m_out.Text(name);
        m_out.Number(static_cast<std::uint64_t>(std::clamp(traits.size, std::int64_t{1}, MaxFontSize)));
        m_out.Number(static_cast<std::uint16_t>(std::clamp(traits.weight, std::int16_t{0}, MaxFontWeight)));
        m_out.Number(static_cast<std::uint16_t>(traits.charset));
        const int style = (traits.italic ? 1 : 0) | (traits.underline ? 2 : 0) | (traits.strikethrough ? 4 : 0);
        m_out.Number(static_cast<std::uint8_t>(style));
    }
    [[noreturn]] void operator()(const Unsupported&) { Refuse(); }

private:
    Writer& m_out;
};

class Reader {
public:
    explicit Reader(std::span<const std::byte> bytes) : m_rest(bytes) {}

    bool AtEnd() const noexcept { return m_rest.empty(); }

    template <typename Unsigned>
    Unsigned Number() {
        static_assert(std::is_unsigned_v<Unsigned>);
        if (m_rest.size() < sizeof(Unsigned)) Refuse();
        Unsigned value = 0;
        for (std::size_t i = 0; i < sizeof value; ++i) {
            value = static_cast<Unsigned>(value | (std::to_integer<Unsigned>(m_rest[i]) << (8 * i)));
        }
        m_rest = m_rest.subspan(sizeof value);
        return value;
    }

    double Real() {
        const auto value = std::bit_cast<double>(Number<std::uint64_t>());
        if (!std::isfinite(value)) Refuse();
        return value;
    }

    std::u16string Text(std::size_t units) {
        // Checked before anything is allocated: a length is not believed until the text is really there.
        if (units > m_rest.size() / 2) Refuse();
        std::u16string text(units, u'\0');
        for (char16_t& unit : text) unit = static_cast<char16_t>(Number<std::uint16_t>());
        return text;
    }

private:
    std::span<const std::byte> m_rest;
};

FontTraits ReadFont(Reader& in) {
    FontTraits traits;
    const auto nameLength = in.Number<std::uint16_t>();
    if (nameLength > MaxFontName) Refuse();
    traits.name = in.Text(nameLength);
    traits.size = static_cast<std::int64_t>(in.Number<std::uint64_t>());
    traits.weight = static_cast<std::int16_t>(in.Number<std::uint16_t>());
    traits.charset = static_cast<std::int16_t>(in.Number<std::uint16_t>());
    const auto style = in.Number<std::uint8_t>();
    if (traits.size < 1 || traits.size > MaxFontSize || traits.weight < 0 || traits.weight > MaxFontWeight ||
        style > 7) {
        Refuse();
    }
    traits.italic = (style & 1) != 0;
    traits.underline = (style & 2) != 0;
    traits.strikethrough = (style & 4) != 0;
    return traits;
}

/// A font stays a description until the whole stream has proved to be sound: then it is made, and put in its place.
struct PendingFont {
    std::u16string key;
    FontTraits traits;
};

/// No value for a font.
std::optional<Value> ReadValue(Reader& in) {
    switch (static_cast<Tag>(in.Number<std::uint8_t>())) {
        case Tag::Empty:
            return Value{};
        case Tag::Bool: {
            const auto flag = in.Number<std::uint8_t>();
            if (flag > 1) Refuse();
            return Value{flag == 1};
        }
        case Tag::Int16:
            return Value{static_cast<std::int16_t>(in.Number<std::uint16_t>())};
        case Tag::Int32:
            return Value{static_cast<std::int32_t>(in.Number<std::uint32_t>())};
        case Tag::Double:
            return Value{in.Real()};
        case Tag::Date:
            return Value{OleDate{in.Real()}};
        case Tag::String:
            return Value{in.Text(in.Number<std::uint32_t>())};
        case Tag::Font:
            return std::nullopt;
        case Tag::End:
            break;
    }
    Refuse();
}

}  // namespace

std::vector<std::byte> EncodeProperties(const MemoryBag& bag) {
    Writer records;
    for (const auto& [key, value] : bag.Entries()) {
        if (key.empty() || key.size() > std::numeric_limits<std::uint16_t>::max()) Refuse();
        records.Number(static_cast<std::uint16_t>(key.size()));
        records.Text(key);
        std::visit(ValueWriter(records), value);
        if (records.Bytes().size() > MaxRecordsSize) Refuse();
    }
    Writer stream;
    stream.Number(Magic);
    stream.Number(Version);
    stream.Number(static_cast<std::uint32_t>(records.Bytes().size()));
    stream.Bytes().insert(stream.Bytes().end(), records.Bytes().begin(), records.Bytes().end());
    return std::move(stream.Bytes());
}

std::size_t DecodePropertyHeader(std::span<const std::byte> header) {
    if (header.size() != PropertyStreamHeaderSize) Refuse();
    Reader in(header);
    if (in.Number<std::uint32_t>() != Magic) Refuse();
    if (in.Number<std::uint32_t>() != Version) Refuse();
    const std::size_t length = in.Number<std::uint32_t>();
    if (length > MaxRecordsSize) Refuse();
    return length;
}

MemoryBag DecodeProperties(std::span<const std::byte> records, const FontMaker& makeFont) {
    MemoryBag bag;
    std::vector<PendingFont> fonts;
    for (Reader in(records); !in.AtEnd();) {
        std::u16string key = in.Text(in.Number<std::uint16_t>());
        if (key.empty()) Refuse();
        std::optional<Value> value = ReadValue(in);
        if (!value) fonts.push_back({key, ReadFont(in)});
        if (!bag.Add(std::move(key), value ? *std::move(value) : Value{})) Refuse();
    }
    for (const PendingFont& font : fonts) bag.Put(font.key, makeFont(font.traits));
    return bag;
}

}  // namespace kiv
