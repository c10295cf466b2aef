#include "screenhost/ControlSchema.h"

#include <algorithm>
#include <string>

namespace screenhost {

namespace {

constexpr std::string_view Server = "KivDateTime.";
constexpr std::string_view ColorWords = "0x00BBGGRR, or 0x80000000 and the number of a system colour up to 0x1E";
constexpr std::string_view DelimiterWords = "a single character";
constexpr std::int32_t ModeDateOnly = 1;
constexpr std::int32_t ModeTimeOnly = 2;

template <std::int32_t Least, std::int32_t Most = INT32_MAX>
bool Between(const ScreenValue& value) {
    const auto* const number = std::get_if<std::int32_t>(&value);
    const double asDouble = number ? *number : std::get<double>(value);
    return asDouble >= Least && asDouble <= Most;
}

bool IsColor(const ScreenValue& value) {
    constexpr std::uint32_t SystemColor = 0x80000000;
    constexpr std::uint32_t LastSystemColor = 0x1E;
    constexpr std::uint32_t White = 0x00FFFFFF;
    const auto bits = static_cast<std::uint32_t>(std::get<std::int32_t>(value));
    return bits <= White || (bits >= SystemColor && bits <= SystemColor + LastSystemColor);
}

bool IsOneCharacter(const ScreenValue& value) {
    return std::get<std::u16string>(value).size() == 1;
}

bool IsTwoTexts(const ScreenValue& value) {
    return std::ranges::count(std::get<std::u16string>(value), u',') == 1;
}

constexpr KeyRule Number(std::string_view key, std::string_view property = {}) {
    return {key, ValueKind::Number, nullptr, {}, property};
}
constexpr KeyRule Boolean(std::string_view key, std::string_view property = {}) {
    return {key, ValueKind::Boolean, nullptr, {}, property};
}
constexpr KeyRule Text(std::string_view key, std::string_view property = {}) {
    return {key, ValueKind::Text, nullptr, {}, property};
}
constexpr KeyRule Color(std::string_view key, std::string_view property = {}) {
    return {key, ValueKind::Number, &IsColor, ColorWords, property};
}

constexpr KeyRule SlotKeyRules[] = {
    Number("DataLMObject"),
    {"DataType", ValueKind::Number, &Between<0, 3>, "0 to 3", {}},
    Text("DataVarName", "DataVariableName"),
    Text("DataElemPath", "DataElementPath"),
};

constexpr KeyRule PlaceKeyRules[] = {
    Text("ProgID"),
    {"Left", ValueKind::Measure, &Between<0, 450000>, "0 to 450000 twips", {}},
    {"Top", ValueKind::Measure, &Between<0, 450000>, "0 to 450000 twips", {}},
    {"Width", ValueKind::Measure, &Between<1, 450000>, "1 to 450000 twips", {}},
    {"Height", ValueKind::Measure, &Between<1, 450000>, "1 to 450000 twips", {}},
};

constexpr KeyRule ScreenKeyRules[] = {Text("Title")};

constexpr KeyRule SetControlKeys[] = {
    Number("Data12HourValue", "Data12HrValue"),
    Number("Data24HourValue", "Data24HrValue"),
    Color("BackColor"),
    Color("ForeColor"),
    Color("CalBackColor"),
    Color("CalDisabledBackColor", "CalBackColorDisabled"),
    Color("CalDisabledForeColor", "CalForeColorDisabled"),
    Color("CalEnabledTitleBack", "CalTitleBackColor"),
    Color("CalEnabledTitleFore", "CalTitleForeColor"),
    Color("CalDisabledTitleBack", "CalTitleBackColorDisabled"),
    Color("CalDisabledTitleFore", "CalTitleForeColorDisabled"),
    Color("CalTrailerColor", "CalTrailingForeColor"),
    {"Mode", ValueKind::Number, &Between<0, 2>, "0, 1 or 2", {}},
    Text("Caption"),
    Boolean("Enabled"),
    {"Font", ValueKind::Font, nullptr, {}, {}},
    {"TimeHeight", ValueKind::Number, &Between<315>, "at least 315 twips", {}},
    {"TimeWidth", ValueKind::Number, &Between<1080>, "at least 1080 twips", {}},
    Number("ProtoShow24Hour", "TimeFormat"),
    Boolean("ShowDST"),
    Boolean("ShowSeconds"),
    Boolean("ShowToday"),
    {"StartOfWeek", ValueKind::Number, &Between<1, 7>, "1 (Sunday) to 7", {}},
    Boolean("UsePCDateTime"),
};

constexpr KeyRule ShowControlKeys[] = {
    Number("Data12HourValue", "Data12HrValue"),
    Number("Data24HourValue", "Data24HrValue"),
    Number("DataDMYValue"),
    Number("DataMDYValue"),
    {"Mode", ValueKind::Number, &Between<1, 2>, "1 or 2", {}},
    Text("Caption"),
    Color("BackColor"),
    Color("ForeColor"),
    {"BorderStyle", ValueKind::Number, &Between<0, 1>, "0 or 1", {}},
    Boolean("Enabled"),
    {"Font", ValueKind::Font, nullptr, {}, {}},
    {"CaptionHeight", ValueKind::Number, &Between<195, 32767>, "195 to 32767 twips", {}},
    {"CaptionWidth", ValueKind::Number, &Between<435, 32767>, "435 to 32767 twips", {}},
    {"ValueHeight", ValueKind::Number, &Between<195, 32767>, "195 to 32767 twips", {}},
    {"ValueWidth", ValueKind::Number, &Between<750, 32767>, "750 to 32767 twips", {}},
    Boolean("LockCapWidth", "LockCaptionWidth"),
    Boolean("LockValWidth", "LockValueWidth"),
    {"DateDelimiter", ValueKind::Text, &IsOneCharacter, DelimiterWords, {}},
    Number("ProtoDateFormat", "DateFormat"),
    Boolean("ShowCentury"),
    {"AMPMFormat", ValueKind::Text, &IsTwoTexts, "two texts with a comma between them", {}},
    Number("ProtoShow24Hour", "TimeFormat"),
    Boolean("ShowSeconds"),
    {"TimeDelimiter", ValueKind::Text, &IsOneCharacter, DelimiterWords, {}},
    Boolean("ShowLongDay"),
    Boolean("ShowLeadZeros", "ShowLeadingZeros"),
    Boolean("UpperCase"),
};

constexpr SlotRule SetControlSlots[] = {
    {SlotPart::Format, SlotUse::Read, 2, "12- or 24-hour clock"},
    {SlotPart::DaylightSaving, SlotUse::Both, 2, "daylight saving"},
    {SlotPart::Hour, SlotUse::Read, 1, "current hour"},
    {SlotPart::Minute, SlotUse::Read, 1, "current minute"},
    {SlotPart::Second, SlotUse::Read, 1, "current second"},
    {SlotPart::Month, SlotUse::Read, 1, "current month"},
    {SlotPart::Day, SlotUse::Read, 1, "current day"},
    {SlotPart::Year, SlotUse::Read, 1, "current year"},
    {SlotPart::Hour, SlotUse::Write, 0, "hour to set"},
    {SlotPart::Minute, SlotUse::Write, 0, "minute to set"},
    {SlotPart::Second, SlotUse::Write, 0, "second to set"},
    {SlotPart::Month, SlotUse::Write, 0, "month to set"},
    {SlotPart::Day, SlotUse::Write, 0, "day to set"},
    {SlotPart::Year, SlotUse::Write, 0, "year to set"},
};

constexpr SlotRule ShowControlSlots[] = {
    {SlotPart::Format, SlotUse::Read, 2, "format"}, {SlotPart::Hour, SlotUse::Read, 1, "hour"},
    {SlotPart::Minute, SlotUse::Read, 1, "minute"}, {SlotPart::Second, SlotUse::Read, 1, "second"},
    {SlotPart::Month, SlotUse::Read, 1, "month"},   {SlotPart::Day, SlotUse::Read, 1, "day"},
    {SlotPart::Year, SlotUse::Read, 1, "year"},
};

bool IsOfDate(SlotPart part) noexcept {
    return part == SlotPart::Month || part == SlotPart::Day || part == SlotPart::Year;
}

bool IsOfTime(SlotPart part) noexcept {
    return part == SlotPart::Hour || part == SlotPart::Minute || part == SlotPart::Second;
}

std::string_view UnusedBySetControl(const SlotSettings& settings, const SlotRule& slot) {
    if (settings.mode == ModeDateOnly && !IsOfDate(slot.part)) return "Mode is 1, the date only";
    if (settings.mode == ModeTimeOnly && IsOfDate(slot.part)) return "Mode is 2, the time only";
    if (slot.part == SlotPart::DaylightSaving && !settings.showDst) return "ShowDST is False";
    // Written the second is all the same, as 0.
    if (slot.part == SlotPart::Second && slot.use == SlotUse::Read && !settings.showSeconds)
        return "ShowSeconds is False";
    return {};
}

std::string_view UnusedByShowControl(const SlotSettings& settings, const SlotRule& slot) {
    const bool isDate = settings.mode == ModeDateOnly;
    if (isDate && IsOfTime(slot.part)) return "Mode is 1, the date only";
    if (!isDate && IsOfDate(slot.part) && !settings.showLongDay) return "Mode is 2, the time only, without a weekday";
    if (!isDate && slot.part == SlotPart::Second && !settings.showSeconds) return "ShowSeconds is False";
    return {};
}

constexpr ControlSchema Schemas[] = {
    {"KivDateTime.KivSetDateTime", SetControlKeys, SetControlSlots, {0, false, true, false}, &UnusedBySetControl},
    {"KivDateTime.KivShowDateTime", ShowControlKeys, ShowControlSlots, {1, false, false, false}, &UnusedByShowControl},
};

const KeyRule* FindRule(std::span<const KeyRule> rules, std::string_view key) noexcept {
    const auto found =
        std::ranges::find_if(rules, [&](const KeyRule& rule) { return EqualWithoutCase(rule.key, key); });
    return found == rules.end() ? nullptr : &*found;
}

}  // namespace

const KeyRule* ControlSchema::FindKey(std::string_view key) const noexcept {
    return FindRule(keys, key);
}

const ControlSchema* FindSchema(std::string_view progId) noexcept {
    if (progId.ends_with(".1")) progId.remove_suffix(2);
    const auto* const found = std::ranges::find_if(
        Schemas, [&](const ControlSchema& schema) { return EqualWithoutCase(schema.progId, progId); });
    return found == std::end(Schemas) ? nullptr : found;
}

bool IsOfKnownServer(std::string_view progId) noexcept {
    return EqualWithoutCase(progId.substr(0, Server.size()), Server);
}

std::span<const KeyRule> SlotKeys() noexcept {
    return SlotKeyRules;
}

std::span<const KeyRule> PlaceKeys() noexcept {
    return PlaceKeyRules;
}

std::span<const KeyRule> ScreenKeys() noexcept {
    return ScreenKeyRules;
}

std::optional<SlotKey> SplitSlotKey(std::string_view key) noexcept {
    const std::size_t stem = key.find_last_not_of("0123456789") + 1;
    const KeyRule* const rule = FindRule(SlotKeyRules, key.substr(0, stem));
    if (!rule || stem == key.size()) return std::nullopt;
    return SlotKey{rule, key.substr(stem)};
}

}  // namespace screenhost
