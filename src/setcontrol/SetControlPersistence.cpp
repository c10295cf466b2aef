#include "setcontrol/SetControlPersistence.h"

#include <utility>

#include "platform/HostError.h"

namespace kiv {

namespace {

using Properties = SetControlProperties;
using Property = PersistedProperty<Properties>;

// Defaults that are written as 16-bit numbers.
constexpr std::int16_t DefaultTimeHeight = 495;
constexpr std::int16_t DefaultTimeWidth = 1095;
constexpr std::int16_t DefaultStartOfWeek = 1;

// Turns: a new control is enabled before it gets its caption; a saved one gets its font when all else is known.
constexpr int InitEnabled = 1;
constexpr int InitCaption = 2;
constexpr int InitRest = 3;
constexpr int ReadFont = 1;

Value LongValue(std::int32_t number) {
    return Value{number};
}

Value ColorValue(OleColor color) {
    return Value{static_cast<std::int32_t>(color)};
}

OleColor ToColor(const Value& value) {
    return static_cast<OleColor>(ToLong(value));
}

std::int32_t DefaultDataType(std::int32_t slot) noexcept {
    if (slot < SetSlot::FirstGet) return 2;
    return slot < SetSlot::FirstSet ? 1 : 0;
}

/// Outside a load such a type is ignored; a load must end with a type that there is.
void PutDataType(Properties& p, std::int32_t slot, const Value& value) {
    const std::int32_t type = ToLong(value);
    if (type < DataBindings::MinDataType || type > DataBindings::MaxDataType) {
        throw HostError(ErrorNumber::InvalidPropertyValue);
    }
    p.Slot(slot).SetDataType(slot, type);
}

void AddSlot(std::vector<Property>& all, std::int32_t slot) {
    all.push_back({ComposeKey(BindingKey::LMObject, slot), LongValue(0),
                   [](Properties& p, std::int32_t i) { return LongValue(p.Slot(i).LMObject(i)); },
                   [](Properties& p, std::int32_t i, const Value& v) { p.Slot(i).SetLMObject(i, ToLong(v)); }, slot});
    all.push_back({ComposeKey(BindingKey::DataType, slot), LongValue(DefaultDataType(slot)),
                   [](Properties& p, std::int32_t i) { return LongValue(p.Slot(i).DataType(i)); }, PutDataType, slot});
    all.push_back({ComposeKey(BindingKey::VariableName, slot), std::u16string(),
                   [](Properties& p, std::int32_t i) { return Value{p.Slot(i).VariableName(i)}; },
                   [](Properties& p, std::int32_t i, const Value& v) { p.Slot(i).SetVariableName(i, ToString(v)); },
                   slot});
    all.push_back({ComposeKey(BindingKey::ElementPath, slot), std::u16string(),
                   [](Properties& p, std::int32_t i) { return Value{p.Slot(i).ElementPath(i)}; },
                   [](Properties& p, std::int32_t i, const Value& v) { p.Slot(i).SetElementPath(i, ToString(v)); },
                   slot});
}

/// An entry for a property that is not indexed, from its get and set operations.
template <auto Get, auto Set>
Property LongProperty(std::u16string key, Value defaultValue) {
    return {std::move(key), std::move(defaultValue), [](Properties& p, std::int32_t) { return LongValue((p.*Get)()); },
            [](Properties& p, std::int32_t, const Value& v) { (p.*Set)(ToLong(v)); }};
}

template <auto Get, auto Set>
Property BoolProperty(std::u16string key, bool defaultValue) {
    return {std::move(key), defaultValue, [](Properties& p, std::int32_t) { return Value{(p.*Get)()}; },
            [](Properties& p, std::int32_t, const Value& v) { (p.*Set)(ToBool(v)); }};
}

template <auto Get, auto Set>
Property ColorProperty(std::u16string key, OleColor defaultValue) {
    return {std::move(key), ColorValue(defaultValue),
            [](Properties& p, std::int32_t) { return ColorValue((p.*Get)()); },
            [](Properties& p, std::int32_t, const Value& v) { (p.*Set)(ToColor(v)); }};
}

template <auto Field, auto Set>
Property CalendarColor(std::u16string key, OleColor defaultValue) {
    return {std::move(key), ColorValue(defaultValue),
            [](Properties& p, std::int32_t) { return ColorValue(p.Colors().*Field); },
            [](Properties& p, std::int32_t, const Value& v) { (p.*Set)(ToColor(v)); }};
}

Property InTurn(Property property, int initTurn, int readTurn = 0) {
    property.initTurn = initTurn;
    property.readTurn = readTurn;
    return property;
}

void AddColors(std::vector<Property>& all) {
    using P = Properties;
    using C = CalendarColors;
    all.push_back(ColorProperty<&P::BackColor, &P::SetBackColor>(u"BackColor", SystemColor::ButtonFace));
    all.push_back(ColorProperty<&P::ForeColor, &P::SetForeColor>(u"ForeColor", SystemColor::ButtonText));
    all.push_back(CalendarColor<&C::back, &P::SetCalBackColor>(u"CalBackColor", SystemColor::WindowBackground));
    all.push_back(
        CalendarColor<&C::backDisabled, &P::SetCalBackColorDisabled>(u"CalDisabledBackColor", SystemColor::ButtonFace));
    all.push_back(CalendarColor<&C::foreDisabled, &P::SetCalForeColorDisabled>(u"CalDisabledForeColor",
                                                                               SystemColor::ButtonShadow));
    all.push_back(
        CalendarColor<&C::titleBack, &P::SetCalTitleBackColor>(u"CalEnabledTitleBack", SystemColor::ActiveCaption));
    all.push_back(
        CalendarColor<&C::titleFore, &P::SetCalTitleForeColor>(u"CalEnabledTitleFore", SystemColor::CaptionText));
    all.push_back(CalendarColor<&C::titleBackDisabled, &P::SetCalTitleBackColorDisabled>(u"CalDisabledTitleBack",
                                                                                         SystemColor::ButtonFace));
    all.push_back(CalendarColor<&C::titleForeDisabled, &P::SetCalTitleForeColorDisabled>(u"CalDisabledTitleFore",
                                                                                         SystemColor::ButtonShadow));
    all.push_back(
        CalendarColor<&C::trailingFore, &P::SetCalTrailingForeColor>(u"CalTrailerColor", SystemColor::GreyText));
}

Property FontProperty() {
    return {u"Font", Value{}, [](Properties& p, std::int32_t) { return Value{p.GetFont()}; },
            [](Properties& p, std::int32_t, const Value& v) {
                const auto* font = std::get_if<FontPtr>(&v);
                if (!font) throw HostError(ErrorNumber::TypeMismatch);
                // A control that never had a font of its own was saved without one.
                if (*font) p.SetFont(*font);
            }};
}

std::vector<Property> Describe() {
    using P = Properties;
    std::vector<Property> all;
    for (std::int32_t slot = 0; slot < SetSlot::Count; ++slot) AddSlot(all, slot);
    all.push_back(LongProperty<&P::Data12HrValue, &P::StoreData12HrValue>(u"Data12HourValue", LongValue(0)));
    all.push_back(LongProperty<&P::Data24HrValue, &P::StoreData24HrValue>(u"Data24HourValue", LongValue(1)));
    AddColors(all);
    all.push_back(LongProperty<&P::Mode, &P::SetMode>(u"Mode", LongValue(sdtSetDateTime)));

    all.push_back(
        InTurn({u"Caption", std::u16string(u"Set Date/Time"), [](P& p, std::int32_t) { return Value{p.Caption()}; },
                [](P& p, std::int32_t, const Value& v) { p.SetCaption(ToString(v)); }},
               InitCaption));
    all.push_back(InTurn(BoolProperty<&P::Enabled, &P::SetEnabled>(u"Enabled", true), InitEnabled));
    all.push_back(InTurn(FontProperty(), InitRest, ReadFont));
    const auto addRest = [&](Property property) { all.push_back(InTurn(std::move(property), InitRest)); };
    addRest(LongProperty<&P::TimeHeight, &P::SetTimeHeight>(u"TimeHeight", Value{DefaultTimeHeight}));
    addRest(LongProperty<&P::TimeWidth, &P::SetTimeWidth>(u"TimeWidth", Value{DefaultTimeWidth}));
    addRest(LongProperty<&P::TimeFormat, &P::SetTimeFormat>(u"ProtoShow24Hour", LongValue(0)));
    addRest(BoolProperty<&P::ShowDST, &P::SetShowDST>(u"ShowDST", true));
    addRest(BoolProperty<&P::ShowSeconds, &P::SetShowSeconds>(u"ShowSeconds", false));
    addRest(BoolProperty<&P::ShowToday, &P::SetShowToday>(u"ShowToday", true));
    addRest(LongProperty<&P::StartOfWeek, &P::SetStartOfWeek>(u"StartOfWeek", Value{DefaultStartOfWeek}));
    addRest(BoolProperty<&P::UsePCDateTime, &P::SetUsePCDateTime>(u"UsePCDateTime", true));
    return all;
}

}  // namespace

const PersistenceDescription<SetControlProperties>& SetControlPersistence() {
    static const PersistenceDescription<SetControlProperties> description(Describe());
    return description;
}

}  // namespace kiv
