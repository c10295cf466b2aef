#include "showcontrol/ShowControlPersistence.h"

#include <utility>

#include "common/PropertyEntries.h"
#include "platform/HostError.h"

namespace kiv {

namespace {

using Properties = ShowControlProperties;
using Entries = PropertyEntries<Properties>;
using Property = Entries::Property;

// Turns in which a new or a saved control gets its properties: the sizes when the text is known that they have to show,
// the font at last.
constexpr int FormatTurn = 1;
constexpr int SizeTurn = 2;
constexpr int FontTurn = 3;

/// A value that does not pass the check is left to the caller, who puts the default instead and reports it.
template <auto IsValid, auto Set>
void PutText(Properties& properties, std::int32_t, const Value& value) {
    const std::u16string text = ToString(value);
    if (!IsValid(text)) throw HostError(ErrorNumber::InvalidPropertyValue);
    (properties.*Set)(text);
}

template <auto IsValid, auto Set>
void PutNumber(Properties& properties, std::int32_t, const Value& value) {
    const std::int32_t number = ToLong(value);
    if (!IsValid(number)) throw HostError(ErrorNumber::InvalidPropertyValue);
    (properties.*Set)(number);
}

Property Checked(Property property, void (*put)(Properties&, std::int32_t, const Value&)) {
    property.put = put;
    return property;
}

void AddValues(std::vector<Property>& all) {
    using P = Properties;
    all.push_back(Entries::Long<&P::Data12HrValue, &P::SetData12HrValue>(u"Data12HourValue", std::int32_t{0}));
    all.push_back(Entries::Long<&P::Data24HrValue, &P::SetData24HrValue>(u"Data24HourValue", std::int32_t{1}));
    all.push_back(Entries::Long<&P::DataDMYValue, &P::SetDataDMYValue>(u"DataDMYValue", std::int32_t{1}));
    all.push_back(Entries::Long<&P::DataMDYValue, &P::SetDataMDYValue>(u"DataMDYValue", std::int32_t{0}));
    all.push_back(Checked(Entries::Long<&P::Mode, &P::StoreMode>(u"Mode", std::int32_t{sdtShowDateOnly}),
                          PutNumber<IsShowMode, &P::StoreMode>));
}

void AddLook(std::vector<Property>& all) {
    using P = Properties;
    all.push_back(Entries::Text<&P::Caption, &P::SetCaption>(u"Caption", u"Date/Time:"));
    all.push_back(Entries::Color<&P::BackColor, &P::SetBackColor>(u"BackColor", SystemColor::ButtonFace));
    all.push_back(Entries::Color<&P::ForeColor, &P::SetForeColor>(u"ForeColor", SystemColor::ButtonText));
    all.push_back(Checked(Entries::Long<&P::BorderStyle, &P::SetBorderStyle>(u"BorderStyle", std::int32_t{sdtNone}),
                          PutNumber<IsBorderStyle, &P::SetBorderStyle>));
    all.push_back(Entries::Bool<&P::Enabled, &P::SetEnabled>(u"Enabled", true));
    all.push_back(Entries::InTurn(Entries::Font(), FontTurn, FontTurn));
}

void AddSizes(std::vector<Property>& all) {
    using P = Properties;
    const auto add = [&](Property property) {
        all.push_back(Entries::InTurn(std::move(property), SizeTurn, SizeTurn));
    };
    add(Entries::Short<&P::CaptionHeight, &P::SetCaptionHeight>(u"CaptionHeight", MinLabelHeight));
    add(Entries::Short<&P::CaptionWidth, &P::SetCaptionWidth>(u"CaptionWidth", PreferredLabelWidth));
    add(Entries::Short<&P::ValueHeight, &P::SetValueHeight>(u"ValueHeight", MinLabelHeight));
    add(Entries::Short<&P::ValueWidth, &P::SetValueWidth>(u"ValueWidth", PreferredLabelWidth));
    add(Entries::Bool<&P::LockCaptionWidth, &P::SetLockCaptionWidth>(u"LockCapWidth", false));
    add(Entries::Bool<&P::LockValueWidth, &P::SetLockValueWidth>(u"LockValWidth", false));
}

void AddFormat(std::vector<Property>& all) {
    using P = Properties;
    const auto add = [&](Property property) {
        all.push_back(Entries::InTurn(std::move(property), FormatTurn, FormatTurn));
    };
    add(Checked(Entries::Text<&P::DateDelimiter, &P::SetDateDelimiter>(u"DateDelimiter",
                                                                       std::u16string(ShowDefault::DateDelimiter)),
                PutText<IsDelimiter, &P::SetDateDelimiter>));
    add(Entries::Long<&P::DateFormat, &P::SetDateFormat>(u"ProtoDateFormat", std::int32_t{0}));
    add(Entries::Bool<&P::ShowCentury, &P::SetShowCentury>(u"ShowCentury", true));
    add(Checked(
        Entries::Text<&P::AMPMFormat, &P::SetAMPMFormat>(u"AMPMFormat", std::u16string(ShowDefault::AMPMFormat)),
        PutText<IsAMPMFormat, &P::SetAMPMFormat>));
    add(Entries::Long<&P::TimeFormat, &P::SetTimeFormat>(u"ProtoShow24Hour", std::int32_t{0}));
    add(Entries::Bool<&P::ShowSeconds, &P::SetShowSeconds>(u"ShowSeconds", false));
    add(Checked(Entries::Text<&P::TimeDelimiter, &P::SetTimeDelimiter>(u"TimeDelimiter",
                                                                       std::u16string(ShowDefault::TimeDelimiter)),
                PutText<IsDelimiter, &P::SetTimeDelimiter>));
    add(Entries::Bool<&P::ShowLongDay, &P::SetShowLongDay>(u"ShowLongDay", false));
    add(Entries::Bool<&P::ShowLeadingZeros, &P::SetShowLeadingZeros>(u"ShowLeadZeros", true));
    add(Entries::Bool<&P::UpperCase, &P::SetUpperCase>(u"UpperCase", true));
}

std::vector<Property> Describe() {
    std::vector<Property> all;
    for (std::int32_t slot = 0; slot < ShowSlot::Count; ++slot) {
        Entries::AddSlot(all, slot, slot == ShowSlot::Format ? 2 : 1);
    }
    AddValues(all);
    AddLook(all);
    AddSizes(all);
    AddFormat(all);
    return all;
}

}  // namespace

const PersistenceDescription<ShowControlProperties>& ShowControlPersistence() {
    static const PersistenceDescription<ShowControlProperties> description(Describe());
    return description;
}

}  // namespace kiv
