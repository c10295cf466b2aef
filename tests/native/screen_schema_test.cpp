// The screen checker's table held against the controls themselves: which keys they load, of which kind, which values
// they keep, and what their slots are.
#include "screenhost/ControlSchema.h"

#include <gtest/gtest.h>

#include <set>

#include "SetControlFixture.h"
#include "ShowControlFixture.h"

namespace screenhost {
namespace {

using kiv::MemoryBag;
using kiv::Value;

std::u16string Wide(std::string_view text) {
    return {text.begin(), text.end()};
}

/// What a control saves, all keys, after it was loaded from a bag.
template <class Control, class Platform, class Events>
MemoryBag Reloaded(const MemoryBag& bag) {
    Platform world;
    Events events;
    Control control(world.Platform(), events);
    control.ReadProperties(bag);
    MemoryBag saved(true);
    control.WriteProperties(saved);
    return saved;
}

MemoryBag Reload(const ControlSchema& schema, const MemoryBag& bag) {
    return schema.progId.ends_with("SetDateTime")
               ? Reloaded<kiv::SetControl, kiv::headless::HeadlessPlatform, kiv::RecordingEvents>(bag)
               : Reloaded<kiv::ShowControl, kiv::headless::HeadlessShowPlatform, kiv::RecordingShowEvents>(bag);
}

const ControlSchema& Schema(const char* progId) {
    return *FindSchema(progId);
}

std::vector<const ControlSchema*> AllSchemas() {
    return {&Schema("KivDateTime.KivSetDateTime"), &Schema("KivDateTime.KivShowDateTime")};
}

/// Values of the rule's kind, good and bad ones.
std::vector<ScreenValue> Candidates(ValueKind kind) {
    std::vector<ScreenValue> values;
    if (kind == ValueKind::Boolean) values = {true, false};
    if (kind == ValueKind::Text)
        for (const char16_t* text : {u"", u"/", u"..", u"a,b", u",", u"a,b,c", u"ab"}) values.emplace_back(text);
    if (kind == ValueKind::Number) {
        for (const std::int32_t number :
             {INT32_MIN, -32769, -1,  0,   1,   2,   3,    4,    7,    8,     194,   195,
              314,       315,    434, 435, 749, 750, 1079, 1080, 2445, 32767, 32768, INT32_MAX})
            values.emplace_back(number);
    }
    return values;
}

Value AsControlValue(const ScreenValue& value) {
    if (const auto* flag = std::get_if<bool>(&value)) return *flag;
    if (const auto* number = std::get_if<std::int32_t>(&value)) return *number;
    return std::get<std::u16string>(value);
}

/// Sizes come back in 16 bits.
bool IsSame(const Value& kept, const Value& given) {
    if (const auto* small = std::get_if<std::int16_t>(&kept)) return Value{std::int32_t{*small}} == given;
    return kept == given;
}

bool IsColorRule(const KeyRule& rule) {
    return rule.wanted.starts_with("0x");
}

TEST(ScreenSchema, TheKeysAreThoseThatTheControlsSave) {
    for (const ControlSchema* schema : AllSchemas()) {
        std::multiset<std::u16string> known;
        for (const KeyRule& rule : schema->keys) known.insert(Wide(rule.key));
        for (std::size_t slot = 0; slot < schema->slots.size(); ++slot)
            for (const KeyRule& rule : SlotKeys()) known.insert(Wide(rule.key) + Wide(std::to_string(slot)));
        std::multiset<std::u16string> saved;
        const MemoryBag bag = Reload(*schema, MemoryBag());
        for (const auto& [key, value] : bag.Entries()) saved.insert(key);
        EXPECT_EQ(known, saved) << schema->progId;
    }
}

/// A size gives way to the text that is shown: there is nothing else in the control's bag, and the text is a short one.
TEST(ScreenSchema, AValueFitsExactlyWhereTheControlKeepsIt) {
    int kept = 0;
    int refused = 0;
    for (const ControlSchema* schema : AllSchemas()) {
        const auto check = [&](const KeyRule& rule, const std::u16string& key) {
            for (const ScreenValue& value : Candidates(rule.kind)) {
                MemoryBag bag;
                bag.Put(u"Mode", std::int32_t{2});
                bag.Put(key, AsControlValue(value));
                const bool isKept = IsSame(Reload(*schema, bag).Read(key, Value{}), AsControlValue(value));
                const bool fits = !rule.fits || rule.fits(value);
                // A colour that is none is kept, and shows as black.
                if (!IsColorRule(rule)) {
                    EXPECT_EQ(fits, isKept) << schema->progId << " " << rule.key << " " << FormatValue(value);
                }
                ++(isKept ? kept : refused);
            }
        };
        for (const KeyRule& rule : schema->keys) check(rule, Wide(rule.key));
        for (const KeyRule& rule : SlotKeys()) check(rule, Wide(rule.key) + u"5");
    }
    EXPECT_GT(kept, 500);
    EXPECT_GT(refused, 100);
}

TEST(ScreenSchema, TheDefaultsAreTheControls) {
    for (const ControlSchema* schema : AllSchemas()) {
        const MemoryBag bag = Reload(*schema, MemoryBag());
        for (std::size_t slot = 0; slot < schema->slots.size(); ++slot)
            EXPECT_EQ(bag.Read(u"DataType" + Wide(std::to_string(slot)), Value{}), Value{schema->slots[slot].dataType});
        EXPECT_EQ(bag.Read(u"Mode", Value{}), Value{schema->defaults.mode});
        EXPECT_EQ(bag.Read(u"ShowSeconds", Value{}), Value{schema->defaults.showSeconds});
        if (schema->FindKey("ShowDST")) {
            EXPECT_EQ(bag.Read(u"ShowDST", Value{}), Value{schema->defaults.showDst});
        }
        if (schema->FindKey("ShowLongDay")) {
            EXPECT_EQ(bag.Read(u"ShowLongDay", Value{}), Value{schema->defaults.showLongDay});
        }
    }
}

/// The text that a show control shows depends on a slot exactly where the table says that it is used.
class ScreenSchemaShown : public kiv::ShowControlTest {
protected:
    std::string Shown(const MemoryBag& bag, std::size_t slot, const char16_t* value) {
        Load(bag);
        world.framework.Deliver(static_cast<std::int16_t>(slot), value);
        return Text();
    }
};

TEST_F(ScreenSchemaShown, ASlotIsUsedWhereItsValueCanBeSeen) {
    const ControlSchema& schema = Schema("KivDateTime.KivShowDateTime");
    for (int settings = 0; settings < 8; ++settings) {
        SlotSettings used = schema.defaults;
        used.mode = 1 + (settings & 1);
        used.showSeconds = (settings & 2) != 0;
        used.showLongDay = (settings & 4) != 0;
        MemoryBag bag = BoundBag(used.mode);
        bag.Put(u"ShowSeconds", used.showSeconds);
        bag.Put(u"ShowLongDay", used.showLongDay);
        for (std::size_t slot = 0; slot < schema.slots.size(); ++slot) {
            // A format of 1 is day first, and a clock of 24 hours; the rest shows as other than its first value.
            const bool isSeen = Shown(bag, slot, u"9") != Shown(bag, slot, slot == 0 ? u"1" : u"3") ||
                                Shown(bag, slot, u"0") != Shown(bag, slot, u"1");
            EXPECT_EQ(schema.unused(used, schema.slots[slot]).empty(), isSeen)
                << "slot " << slot << ", Mode " << used.mode << used.showSeconds << used.showLongDay;
        }
    }
}

}  // namespace
}  // namespace screenhost
