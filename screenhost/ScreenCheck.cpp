#include "screenhost/ScreenCheck.h"

#include <algorithm>
#include <array>
#include <numeric>

#include "screenhost/ControlSchema.h"
#include "screenhost/SlotCheck.h"
#include "screenhost/Utf8.h"

namespace screenhost {

namespace {

using Rules = std::span<const KeyRule>;

char Lower(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// How many letters have to be changed, added or left out to make the one the other; 1 where only their order differs.
std::size_t Distance(std::string_view a, std::string_view b) {
    const auto isSame = [](char left, char right) { return Lower(left) == Lower(right); };
    if (EqualWithoutCase(a, b)) return 0;
    if (a.size() == b.size() && std::ranges::is_permutation(a, b, isSame)) return 1;
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (const char letter : a) {
        std::size_t diagonal = row[0]++;
        for (std::size_t i = 0; i < b.size(); ++i) {
            const std::size_t replaced = diagonal + (Lower(letter) == Lower(b[i]) ? 0 : 1);
            diagonal = row[i + 1];
            row[i + 1] = std::min({replaced, diagonal + 1, row[i] + 1});
        }
    }
    return row.back();
}

struct Suggestion {
    std::string_view key;
    std::size_t distance = 3;  ///< farther away is no misspelling
};

void Suggest(std::string_view written, Rules rules, Suggestion& best) {
    for (const KeyRule& rule : rules) {
        for (const std::string_view name : {rule.key, rule.property}) {
            const std::size_t distance = name.empty() ? best.distance : Distance(written, name);
            if (distance < best.distance && distance < name.size() / 2) best = {rule.key, distance};
        }
    }
}

std::string_view WordFor(ValueKind kind) noexcept {
    switch (kind) {
        case ValueKind::Number:
            return "a whole number";
        case ValueKind::Measure:
            return "a number of twips";
        case ValueKind::Boolean:
            return "True or False";
        case ValueKind::Text:
            return "a text in quotes";
        case ValueKind::Font:
            return "Font(...)";
    }
    return {};
}

bool IsOfKind(const ScreenValue& value, ValueKind kind) noexcept {
    switch (kind) {
        case ValueKind::Number:
            return std::holds_alternative<std::int32_t>(value);
        case ValueKind::Measure:
            return std::holds_alternative<std::int32_t>(value) || std::holds_alternative<double>(value);
        case ValueKind::Boolean:
            return std::holds_alternative<bool>(value);
        case ValueKind::Text:
            return std::holds_alternative<std::u16string>(value);
        case ValueKind::Font:
            return std::holds_alternative<FontSpec>(value);
    }
    return false;
}

class SectionChecker {
public:
    SectionChecker(const ScreenSection& section, std::vector<Finding>& findings)
        : m_section(section), m_findings(findings) {}

    void CheckScreenKeys() {
        for (const std::string& key : m_section.Keys())
            if (!CheckKnown(key, ScreenKeys())) AddUnknown(key, {ScreenKeys()}, {});
    }

    void CheckControl() {
        const std::string progId = CheckProgId();
        const ControlSchema* const schema = FindSchema(progId);
        for (const std::string& key : m_section.Keys()) {
            if (CheckKnown(key, PlaceKeys()) || !schema) continue;
            if (!CheckKnown(key, schema->keys) && !CheckSlotKey(key, *schema)) AddUnknownOf(key, *schema);
        }
        if (!schema) return;
        CheckValuesApart("Data12HourValue", "Data24HourValue", *schema, "the clock of 24 hours never shows");
        CheckValuesApart("DataDMYValue", "DataMDYValue", *schema, "the month never comes first");
        CheckDst(*schema);
        CheckSlots(m_section, *schema, m_findings);
    }

private:
    void Add(const std::string& key, std::string_view rule, std::string message) {
        const std::size_t line = m_section.LineOf(key);
        m_findings.push_back({line ? line : m_section.HeaderLine(), rule, std::move(message)});
    }

    std::string CheckProgId() {
        const ScreenValue* const value = m_section.Find("ProgID");
        if (!value) {
            Add("ProgID", "program-id", m_section.Name() + " has no ProgID: nothing can be shown there");
            return {};
        }
        const auto* const text = std::get_if<std::u16string>(value);
        std::string progId = text ? Utf8FromUtf16(*text) : std::string();
        if (text && IsOfKnownServer(progId) && !FindSchema(progId))
            Add("ProgID", "program-id", "there is no class " + progId);
        return progId;
    }

    /// False where the key is not one of these.
    bool CheckKnown(const std::string& key, Rules rules) {
        const auto found =
            std::ranges::find_if(rules, [&](const KeyRule& rule) { return EqualWithoutCase(rule.key, key); });
        if (found == rules.end()) return false;
        CheckValue(key, *found);
        return true;
    }

    void CheckValue(const std::string& key, const KeyRule& rule) {
        const ScreenValue& value = *m_section.Find(key);
        if (!IsOfKind(value, rule.kind))
            Add(key, "wrong-kind", key + " takes " + std::string(WordFor(rule.kind)) + ", not " + FormatValue(value));
        else if (rule.fits && !rule.fits(value))
            Add(key, "out-of-range", key + " takes " + std::string(rule.wanted) + ", not " + FormatValue(value));
    }

    bool CheckSlotKey(const std::string& key, const ControlSchema& schema) {
        const auto parts = SplitSlotKey(key);
        if (!parts) return false;
        const std::size_t last = schema.slots.size() - 1;
        const bool isPadded = parts->number.size() > 1 && parts->number.front() == '0';
        const bool isTooLong = parts->number.size() > 3;
        if (isPadded)
            Add(key, "slot-number", key + ": a slot's number has no zeros in front");
        else if (isTooLong || std::stoul(std::string(parts->number)) > last)
            Add(key, "slot-number", key + ": the slots are 0 to " + std::to_string(last));
        else
            CheckValue(key, *parts->rule);
        return true;
    }

    void AddUnknown(const std::string& key, std::initializer_list<Rules> known, std::string_view number) {
        Suggestion best;
        for (const Rules rules : known) Suggest(key, rules, best);
        std::string message = "nothing reads the key " + key;
        if (!best.key.empty()) message += "; is " + std::string(best.key) + std::string(number) + " meant?";
        Add(key, "unknown-key", std::move(message));
    }

    void AddUnknownOf(const std::string& key, const ControlSchema& schema) {
        const std::size_t stem = key.find_last_not_of("0123456789") + 1;
        Suggestion ofSlot;
        Suggest(std::string_view(key).substr(0, stem), SlotKeys(), ofSlot);
        if (ofSlot.key.empty()) return AddUnknown(key, {PlaceKeys(), schema.keys}, {});
        const std::string number = stem < key.size() ? key.substr(stem) : std::string(" with the slot's number");
        Add(key, "unknown-key",
            "nothing reads the key " + key + "; is " + std::string(ofSlot.key) + number + " meant?");
    }

    /// The first of the two decides; the other one counts for nothing where they are equal.
    void CheckValuesApart(const std::string& first, const std::string& second, const ControlSchema& schema,
                          const char* effect) {
        const ScreenValue* const a = m_section.Find(first);
        const ScreenValue* const b = m_section.Find(second);
        if (!schema.FindKey(first) || !a || !b || *a != *b) return;
        Add(second, "same-values", first + " and " + second + " are alike: " + effect);
    }

    void CheckDst(const ControlSchema& schema) {
        const ScreenValue* const shown = m_section.Find("ShowDST");
        const ScreenValue* const mode = m_section.Find("Mode");
        if (!schema.FindKey("ShowDST") || !shown || !mode) return;
        if (*shown == ScreenValue(true) && *mode == ScreenValue(std::int32_t{1}))
            Add("ShowDST", "out-of-range", "ShowDST is always False with Mode 1");
    }

    const ScreenSection& m_section;
    std::vector<Finding>& m_findings;
};

}  // namespace

std::vector<Finding> CheckScreen(ScreenFile& file) {
    std::vector<Finding> findings;
    for (const Problem& problem : file.Problems()) findings.push_back({problem.line, "syntax", problem.message});
    SectionChecker(file.Screen(), findings).CheckScreenKeys();
    for (const ScreenSection* section : file.Controls()) SectionChecker(*section, findings).CheckControl();
    std::ranges::stable_sort(findings, {}, &Finding::line);
    return findings;
}

std::string DescribeFindings(std::string_view fileName, const std::vector<Finding>& findings) {
    std::string result;
    for (const Finding& finding : findings) {
        ((result += fileName) += ':') += std::to_string(finding.line);
        ((result += ": ") += finding.message) += " [";
        (result += finding.rule) += "]\n";
    }
    return result;
}

}  // namespace screenhost
