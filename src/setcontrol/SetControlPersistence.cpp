#include "setcontrol/SetControlPersistence.h"

#include <utility>

#include "common/PropertyEntries.h"

namespace kiv {

namespace {

using Properties = SetControlProperties;
using Entries = PropertyEntries<Properties>;
using Property = Entries::Property;

// Defaults that are written as 16-bit numbers.
constexpr std::int16_t DefaultTimeHeight = 495;
constexpr std::int16_t DefaultTimeWidth = 1095;
constexpr std::int16_t DefaultStartOfWeek = 1;

// Turns: a new control is enabled before it gets its caption; a saved one gets its font when all else is known.
constexpr int InitEnabled = 1;
constexpr int InitCaption = 2;
constexpr int InitRest = 3;
constexpr int ReadFont = 1;

std::int32_t DefaultDataType(std::int32_t slot) noexcept {
    if (slot < SetSlot::FirstGet) return 2;
    return slot < SetSlot::FirstSet ? 1 : 0;
}

template <auto Field, auto Set>
Property CalendarColor(std::u16string key, OleColor defaultValue) {
    return {std::move(key), Entries::ColorValue(defaultValue),
            [](Properties& p, std::int32_t) { return Entries::ColorValue(p.Colors().*Field); },
            [](Properties& p, std::int32_t, const Value& v) { (p.*Set)(Entries::ToColor(v)); }};
}

void AddColors(std::vector<Property>& all) {
    using P = Properties;
    using C = CalendarColors;
    all.push_back(Entries::Color<&P::BackColor, &P::SetBackColor>(u"BackColor", SystemColor::ButtonFace));
    all.push_back(Entries::Color<&P::ForeColor, &P::SetForeColor>(u"ForeColor", SystemColor::ButtonText));
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

std::vector<Property> Describe() {
    using P = Properties;
    std::vector<Property> all;
    for (std::int32_t slot = 0; slot < SetSlot::Count; ++slot) Entries::AddSlot(all, slot, DefaultDataType(slot));
    all.push_back(Entries::Long<&P::Data12HrValue, &P::StoreData12HrValue>(u"Data12HourValue", std::int32_t{0}));
    all.push_back(Entries::Long<&P::Data24HrValue, &P::StoreData24HrValue>(u"Data24HourValue", std::int32_t{1}));
    AddColors(all);
    all.push_back(Entries::Long<&P::Mode, &P::SetMode>(u"Mode", std::int32_t{sdtSetDateTime}));

    all.push_back(
        Entries::InTurn(Entries::Text<&P::Caption, &P::SetCaption>(u"Caption", u"Set Date/Time"), InitCaption, 0));
    all.push_back(Entries::InTurn(Entries::Bool<&P::Enabled, &P::SetEnabled>(u"Enabled", true), InitEnabled, 0));
    all.push_back(Entries::InTurn(Entries::Font(), InitRest, ReadFont));
    const auto addRest = [&](Property property) { all.push_back(Entries::InTurn(std::move(property), InitRest, 0)); };
    addRest(Entries::Long<&P::TimeHeight, &P::SetTimeHeight>(u"TimeHeight", Value{DefaultTimeHeight}));
    addRest(Entries::Long<&P::TimeWidth, &P::SetTimeWidth>(u"TimeWidth", Value{DefaultTimeWidth}));
    addRest(Entries::Long<&P::TimeFormat, &P::SetTimeFormat>(u"ProtoShow24Hour", std::int32_t{0}));
    addRest(Entries::Bool<&P::ShowDST, &P::SetShowDST>(u"ShowDST", true));
    addRest(Entries::Bool<&P::ShowSeconds, &P::SetShowSeconds>(u"ShowSeconds", false));
    addRest(Entries::Bool<&P::ShowToday, &P::SetShowToday>(u"ShowToday", true));
    addRest(Entries::Long<&P::StartOfWeek, &P::SetStartOfWeek>(u"StartOfWeek", Value{DefaultStartOfWeek}));
    addRest(Entries::Bool<&P::UsePCDateTime, &P::SetUsePCDateTime>(u"UsePCDateTime", true));
    return all;
}

}  // namespace

const PersistenceDescription<SetControlProperties>& SetControlPersistence() {
    static const PersistenceDescription<SetControlProperties> description(Describe());
    return description;
}

}  // namespace kiv
