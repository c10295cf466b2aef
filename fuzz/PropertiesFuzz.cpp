// Loads a control from whatever bytes come. The first byte chooses: even, the rest is a property stream; odd, the rest
// are the values that a hostile property bag hands out, key by key. Bit 1 chooses design or run mode, bit 2 the
// control.
//
// Beyond not crashing: what was loaded can be saved, encoded and decoded again, and loading that saves the same bytes.
// Loading writes no value to the device, and a designer's control reaches neither framework, timer nor settings.
#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "common/MemoryBag.h"
#include "fuzz/DecodeStream.h"
#include "fuzz/Require.h"
#include "headless/HeadlessEvents.h"
#include "headless/HeadlessPlatform.h"
#include "headless/HeadlessShowPlatform.h"
#include "platform/HostError.h"
#include "setcontrol/SetControl.h"
#include "showcontrol/ShowControl.h"

namespace {

using namespace kiv;
using fuzz::Bytes;

/// Hands out values made of the bytes: a kind, then what that kind takes. At the end of the bytes, the fallback.
class BytesBag final : public PropertyBag {
public:
    explicit BytesBag(Bytes bytes) : m_bytes(bytes) {}

    Value Read(std::u16string_view /*key*/, const Value& fallback) const override {
        if (m_bytes.empty()) return fallback;
        switch (std::to_integer<int>(Take(1)[0]) % 12) {
            case 0:
                return Value{};
            case 1:
                return Number<1>() % 2 == 1;
            case 2:
                return static_cast<std::int16_t>(Number<2>());
            case 3:
                return static_cast<std::int32_t>(Number<4>());
            case 4:
                return std::bit_cast<double>(Number<8>());
            case 5:
                return OleDate{std::bit_cast<double>(Number<8>())};
            case 6:
                return Text();
            case 7:
                return Font();
            case 8:
                return FontPtr();
            case 9:
                return Unsupported{};
            case 10:
                throw HostError(ErrorNumber::TypeMismatch);
            default:
                return fallback;
        }
    }
    void Write(std::u16string_view /*key*/, const Value& /*value*/, const Value* /*defaultValue*/) override {}

private:
    std::vector<std::byte> Take(std::size_t count) const {
        std::vector<std::byte> taken(count);
        const std::size_t there = std::min(count, m_bytes.size());
        std::copy_n(m_bytes.begin(), there, taken.begin());
        m_bytes = m_bytes.subspan(there);
        return taken;
    }
    template <std::size_t Size>
    std::uint64_t Number() const {
        std::uint64_t number = 0;
        for (const std::byte byte : Take(Size)) number = number << 8 | std::to_integer<std::uint64_t>(byte);
        return number;
    }
    std::u16string Text() const {
        std::u16string text;
        for (const std::byte byte : Take(Number<1>())) text.push_back(std::to_integer<char16_t>(byte));
        return text;
    }
    FontPtr Font() const {
        FontTraits traits;
        traits.name = Text();
        // A real font object keeps its size within reason, whatever it was asked for.
        traits.size = static_cast<std::int64_t>(Number<3>() + 1);
        traits.weight = static_cast<std::int16_t>(Number<2>());
        traits.charset = static_cast<std::int16_t>(Number<2>());
        return headless::MakeFont(traits);
    }

    mutable Bytes m_bytes;
};

struct Choice {
    bool userMode;
    bool showControl;
};

void CheckFramework(const headless::HeadlessFramework& framework, bool userMode) {
    Require(userMode || framework.created == 0);
    for (const std::string& call : framework.calls) {
        Require(!call.starts_with("value "));
        Require(!(call.starts_with("enable ") && call.ends_with("True")));
    }
}

template <class Control>
std::vector<std::byte> Saved(const Control& control) {
    MemoryBag saved(true);
    control.WriteProperties(saved);
    return EncodeProperties(saved);
}

std::vector<std::byte> LoadAndSaveSet(const PropertyBag& bag, bool userMode) {
    headless::HeadlessPlatform world;
    world.container.userMode = userMode;
    world.container.ambientFont = headless::MakeFont(u"Tahoma");
    headless::NoSetEvents host;
    SetControl control(world.Platform(), host);
    control.InitProperties();
    control.ReadProperties(bag);
    control.OnShown();
    Require(control.Mode() >= sdtSetDateTime && control.Mode() <= sdtSetTimeOnly);
    Require(control.StartOfWeek() >= 1 && control.StartOfWeek() <= 7);
    Require(control.TimeHeight() >= 315 && control.TimeWidth() >= 1080);
    CheckFramework(world.framework, userMode);
    Require(userMode || (world.timers.EnabledCount() == 0 && world.settings.calls == 0));
    return Saved(control);
}

std::vector<std::byte> LoadAndSaveShow(const PropertyBag& bag, bool userMode) {
    headless::HeadlessShowPlatform world;
    world.container.userMode = userMode;
    world.container.ambientFont = headless::MakeFont(u"Tahoma");
    headless::NoShowEvents host;
    ShowControl control(world.Platform(), host);
    control.InitProperties();
    control.ReadProperties(bag);
    Require(control.Mode() == sdtShowDateOnly || control.Mode() == sdtShowTimeOnly);
    Require(control.BorderStyle() == 0 || control.BorderStyle() == 1);
    Require(control.DateDelimiter().size() == 1 && control.TimeDelimiter().size() == 1);
    Require(std::ranges::count(control.AMPMFormat(), u',') == 1);
    CheckFramework(world.framework, userMode);
    return Saved(control);
}

/// A control loaded from a bag, as a stream.
std::vector<std::byte> LoadAndSave(const PropertyBag& bag, Choice choice) {
    return choice.showControl ? LoadAndSaveShow(bag, choice.userMode) : LoadAndSaveSet(bag, choice.userMode);
}

void CheckLoad(const PropertyBag& bag, Choice choice) {
    const std::vector<std::byte> first = LoadAndSave(bag, choice);
    Require(LoadAndSave(fuzz::DecodeStream(first), choice) == first);
}

void CheckStream(Bytes stream, Choice choice) {
    MemoryBag bag;
    try {
        bag = fuzz::DecodeStream(stream);
    } catch (const HostError& error) {
        Require(error.Number() == ErrorNumber::InvalidPropertyValue);
        return;
    }
    const std::vector<std::byte> again = EncodeProperties(bag);
    Require(EncodeProperties(fuzz::DecodeStream(again)) == again);
    CheckLoad(bag, choice);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const Bytes bytes = std::as_bytes(std::span(data, size)).subspan(1);
    const Choice choice{(data[0] & 2) != 0, (data[0] & 4) != 0};
    if (data[0] % 2 == 0) {
        CheckStream(bytes, choice);
    } else {
        CheckLoad(BytesBag(bytes), choice);
    }
    return 0;
}
