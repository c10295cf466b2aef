#include "screenhost/SlotCheck.h"

#include <algorithm>

#include "screenhost/Utf8.h"

namespace screenhost {

namespace {

constexpr std::int32_t OutputVariable = 1;
constexpr std::int32_t InputVariable = 0;
constexpr std::int32_t FirstConfigurationType = 2;

template <class T>
T ValueOr(const ScreenSection& section, const std::string& key, T fallback) {
    const ScreenValue* const value = section.Find(key);
    const T* const held = value ? std::get_if<T>(value) : nullptr;
    return held ? *held : fallback;
}

/// What a section says of one slot.
struct BoundSlot {
    std::size_t index;
    const SlotRule* rule;
    std::u16string variable;
    std::u16string path;
    std::int32_t lmObject;
    std::int32_t dataType;
    bool isBound;
    std::string_view unused;

    std::string Key(std::string_view stem) const { return std::string(stem) + std::to_string(index); }
    std::string Title() const { return "slot " + std::to_string(index) + " (" + std::string(rule->title) + ")"; }
    bool Counts() const noexcept { return isBound && unused.empty(); }
};

SlotSettings SettingsOf(const ScreenSection& section, const ControlSchema& schema) {
    SlotSettings settings = schema.defaults;
    const ScreenValue* const mode = section.Find("Mode");
    if (mode && std::holds_alternative<std::int32_t>(*mode) && schema.FindKey("Mode")->fits(*mode))
        settings.mode = std::get<std::int32_t>(*mode);
    settings.showSeconds = ValueOr(section, "ShowSeconds", settings.showSeconds);
    settings.showDst = ValueOr(section, "ShowDST", settings.showDst);
    settings.showLongDay = ValueOr(section, "ShowLongDay", settings.showLongDay);
    return settings;
}

std::vector<BoundSlot> SlotsOf(const ScreenSection& section, const ControlSchema& schema) {
    const SlotSettings settings = SettingsOf(section, schema);
    std::vector<BoundSlot> slots;
    for (std::size_t i = 0; i < schema.slots.size(); ++i) {
        const SlotRule& rule = schema.slots[i];
        const std::string number = std::to_string(i);
        BoundSlot slot{i, &rule, {}, {}, 0, 0, false, schema.unused(settings, rule)};
        slot.variable = ValueOr(section, "DataVarName" + number, std::u16string());
        slot.path = ValueOr(section, "DataElemPath" + number, std::u16string());
        slot.lmObject = ValueOr(section, "DataLMObject" + number, std::int32_t{0});
        slot.dataType = ValueOr(section, "DataType" + number, rule.dataType);
        slot.isBound = slot.variable.find_first_not_of(u' ') != std::u16string::npos;
        slots.push_back(std::move(slot));
    }
    return slots;
}

class SlotChecker {
public:
    SlotChecker(const ScreenSection& section, const ControlSchema& schema, std::vector<Finding>& findings)
        : m_section(section), m_slots(SlotsOf(section, schema)), m_findings(findings) {}

    void Check() {
        for (const BoundSlot& slot : m_slots) {
            CheckName(slot);
            if (!slot.isBound) continue;
            CheckUse(slot);
            CheckPartner(slot);
            CheckType(slot);
            CheckDuplicate(slot);
            CheckLmObject(slot);
        }
        for (const SlotUse use : {SlotUse::Read, SlotUse::Write}) {
            CheckComplete(use, {SlotPart::Month, SlotPart::Day, SlotPart::Year});
            CheckComplete(use, {SlotPart::Hour, SlotPart::Minute, SlotPart::Second});
        }
    }

private:
    void Add(const BoundSlot& slot, std::string_view keyStem, std::string_view rule, std::string message) {
        const std::size_t line = m_section.LineOf(slot.Key(keyStem));
        m_findings.push_back({line ? line : m_section.LineOf(slot.Key("DataVarName")), rule, std::move(message)});
    }

    void CheckName(const BoundSlot& slot) {
        if (slot.isBound) return;
        for (const std::string_view stem : {"DataElemPath", "DataLMObject", "DataType", "DataVarName"}) {
            if (!m_section.Find(slot.Key(stem))) continue;
            return Add(slot, stem, "no-variable",
                       slot.Title() + " has no variable name, and so is not used; " + slot.Key("DataVarName") +
                           " is where it belongs");
        }
    }

    void CheckUse(const BoundSlot& slot) {
        if (slot.unused.empty()) return;
        Add(slot, "DataVarName", "unused-slot", slot.Title() + " is bound to no effect: " + std::string(slot.unused));
    }

    /// The slot of the same part for the other direction.
    const BoundSlot* PartnerOf(const BoundSlot& slot) const {
        const auto found = std::ranges::find_if(
            m_slots, [&](const BoundSlot& other) { return &other != &slot && other.rule->part == slot.rule->part; });
        return found == m_slots.end() ? nullptr : &*found;
    }

    void CheckPartner(const BoundSlot& slot) {
        const BoundSlot* const partner = PartnerOf(slot);
        if (!slot.unused.empty() || !partner || partner->isBound || !partner->unused.empty()) return;
        const bool isWrite = slot.rule->use == SlotUse::Write;
        Add(slot, "DataVarName", isWrite ? "set-without-get" : "get-without-set",
            slot.Title() + " is bound, " + partner->Title() +
                " is not: " + (isWrite ? "what the device has will not show" : "what is chosen will not be written"));
    }

    void CheckType(const BoundSlot& slot) {
        const SlotUse use = slot.rule->use;
        if (use != SlotUse::Read && slot.dataType == OutputVariable) {
            Add(slot, "DataType", "data-type", slot.Title() + " is written, and an output variable (type 1) cannot be");
        } else if (use == SlotUse::Read && slot.dataType == InputVariable) {
            Add(slot, "DataType", "data-type",
                slot.Title() + " is only read, and an input variable (type 0) holds what was last sent, not what is");
        }
    }

    void CheckDuplicate(const BoundSlot& slot) {
        const auto same = [&](const BoundSlot& earlier) {
            if (earlier.index >= slot.index || !earlier.isBound || earlier.lmObject != slot.lmObject ||
                earlier.variable != slot.variable || earlier.path != slot.path)
                return false;
            // A configuration value is read and written under one name.
            const bool isPair = PartnerOf(earlier) == &slot && earlier.dataType >= FirstConfigurationType &&
                                slot.dataType >= FirstConfigurationType;
            return !isPair;
        };
        const auto found = std::ranges::find_if(m_slots, same);
        if (found == m_slots.end()) return;
        Add(slot, "DataVarName", "duplicate-binding",
            slot.Title() + " is bound to the same variable as " + found->Title() + " on line " +
                std::to_string(m_section.LineOf(found->Key("DataVarName"))));
    }

    void CheckLmObject(const BoundSlot& slot) {
        const auto isElsewhere = [](const BoundSlot& other) { return other.isBound && other.lmObject != 0; };
        if (slot.lmObject != 0 || std::ranges::none_of(m_slots, isElsewhere)) return;
        Add(slot, "DataLMObject", "lm-object",
            slot.Title() + " is bound to LM object 0, other slots of the control are not");
    }

    /// A date or a time of which only some parts are bound.
    void CheckComplete(SlotUse use, std::initializer_list<SlotPart> parts) {
        const BoundSlot* bound = nullptr;
        std::string missing;
        for (const BoundSlot& slot : m_slots) {
            if (slot.rule->use != use || std::ranges::find(parts, slot.rule->part) == parts.end()) continue;
            if (slot.Counts() && !bound) bound = &slot;
            if (!slot.isBound && slot.unused.empty()) missing += (missing.empty() ? "" : ", ") + slot.Title();
        }
        if (!bound || missing.empty()) return;
        Add(*bound, "DataVarName", "missing-part", bound->Title() + " is bound, but not: " + missing);
    }

    const ScreenSection& m_section;
    std::vector<BoundSlot> m_slots;
    std::vector<Finding>& m_findings;
};

}  // namespace

void CheckSlots(const ScreenSection& section, const ControlSchema& schema, std::vector<Finding>& findings) {
    SlotChecker(section, schema, findings).Check();
}

}  // namespace screenhost
