#include "headless/HeadlessEditedControl.h"

#include "common/NumericText.h"

namespace kiv::headless {

namespace {

/// A value as the setter of a property takes it.
template <class T>
T As(const Value& value) {
    using Plain = std::remove_cvref_t<T>;
    if constexpr (std::is_same_v<Plain, bool>) {
        return ToBool(value);
    } else if constexpr (std::is_same_v<Plain, std::int16_t>) {
        const std::int32_t number = ToLong(value);
        if (number != static_cast<std::int16_t>(number)) throw HostError(ErrorNumber::Overflow);
        return static_cast<std::int16_t>(number);
    } else {
        return ToLong(value);
    }
}

template <class T, class Set>
void Hand(const Value& value, Set&& set) {
    if constexpr (std::is_same_v<T, std::u16string_view>) {
        set(ToString(value));
    } else {
        set(As<T>(value));
    }
}

}  // namespace

template <class Control, class Result, class Argument>
void HeadlessEditedControl::Add(const char16_t* name, Control& control, Result (Control::*get)() const,
                                void (Control::*put)(Argument)) {
    m_members[name] = {[&control, get](std::int32_t) { return Value((control.*get)()); },
                       [&control, put](std::int32_t, const Value& value) {
                           Hand<Argument>(value, [&](const auto& argument) { (control.*put)(argument); });
                       }};
}

template <class Control, class Result, class Argument>
void HeadlessEditedControl::AddIndexed(const char16_t* name, Control& control, Result (Control::*get)(std::int32_t),
                                       void (Control::*put)(std::int32_t, Argument)) {
    m_members[name] = {[&control, get](std::int32_t index) { return Value((control.*get)(index)); },
                       [&control, put](std::int32_t index, const Value& value) {
                           Hand<Argument>(value, [&](const auto& argument) { (control.*put)(index, argument); });
                       }};
}

template <class Control>
void HeadlessEditedControl::AddShared(Control& control) {
    AddIndexed(u"DataLMObject", control, &Control::DataLMObject, &Control::SetDataLMObject);
    AddIndexed(u"DataType", control, &Control::DataType, &Control::SetDataType);
    AddIndexed(u"DataVariableName", control, &Control::DataVariableName, &Control::SetDataVariableName);
    AddIndexed(u"DataElementPath", control, &Control::DataElementPath, &Control::SetDataElementPath);
    Add(u"Caption", control, &Control::Caption, &Control::SetCaption);
    Add(u"Mode", control, &Control::Mode, &Control::SetMode);
    Add(u"ShowSeconds", control, &Control::ShowSeconds, &Control::SetShowSeconds);
    Add(u"TimeFormat", control, &Control::TimeFormat, &Control::SetTimeFormat);
    Add(u"Data12HrValue", control, &Control::Data12HrValue, &Control::SetData12HrValue);
    Add(u"Data24HrValue", control, &Control::Data24HrValue, &Control::SetData24HrValue);
}

HeadlessEditedControl::HeadlessEditedControl(SetControl& control) : kind(ControlKind::Set) {
    AddShared(control);
    Add(u"TimeHeight", control, &SetControl::TimeHeight, &SetControl::SetTimeHeight);
    Add(u"TimeWidth", control, &SetControl::TimeWidth, &SetControl::SetTimeWidth);
    Add(u"UsePCDateTime", control, &SetControl::UsePCDateTime, &SetControl::SetUsePCDateTime);
    Add(u"ShowToday", control, &SetControl::ShowToday, &SetControl::SetShowToday);
    Add(u"StartOfWeek", control, &SetControl::StartOfWeek, &SetControl::SetStartOfWeek);
    Add(u"ShowDST", control, &SetControl::ShowDST, &SetControl::SetShowDST);
}

HeadlessEditedControl::HeadlessEditedControl(ShowControl& control) : kind(ControlKind::Show) {
    AddShared(control);
    Add(u"CaptionHeight", control, &ShowControl::CaptionHeight, &ShowControl::SetCaptionHeight);
    Add(u"CaptionWidth", control, &ShowControl::CaptionWidth, &ShowControl::SetCaptionWidth);
    Add(u"LockCaptionWidth", control, &ShowControl::LockCaptionWidth, &ShowControl::SetLockCaptionWidth);
    Add(u"BorderStyle", control, &ShowControl::BorderStyle, &ShowControl::SetBorderStyle);
    Add(u"ValueHeight", control, &ShowControl::ValueHeight, &ShowControl::SetValueHeight);
    Add(u"ValueWidth", control, &ShowControl::ValueWidth, &ShowControl::SetValueWidth);
    Add(u"LockValueWidth", control, &ShowControl::LockValueWidth, &ShowControl::SetLockValueWidth);
    Add(u"ShowLeadingZeros", control, &ShowControl::ShowLeadingZeros, &ShowControl::SetShowLeadingZeros);
    Add(u"UpperCase", control, &ShowControl::UpperCase, &ShowControl::SetUpperCase);
    Add(u"DateDelimiter", control, &ShowControl::DateDelimiter, &ShowControl::SetDateDelimiter);
    Add(u"ShowCentury", control, &ShowControl::ShowCentury, &ShowControl::SetShowCentury);
    Add(u"TimeDelimiter", control, &ShowControl::TimeDelimiter, &ShowControl::SetTimeDelimiter);
    Add(u"AMPMFormat", control, &ShowControl::AMPMFormat, &ShowControl::SetAMPMFormat);
    Add(u"DateFormat", control, &ShowControl::DateFormat, &ShowControl::SetDateFormat);
    Add(u"DataDMYValue", control, &ShowControl::DataDMYValue, &ShowControl::SetDataDMYValue);
    Add(u"DataMDYValue", control, &ShowControl::DataMDYValue, &ShowControl::SetDataMDYValue);
}

void HeadlessEditedControl::Put(std::u16string_view property, const Value& value) {
    Note(property, "");
    Find(property).put(0, value);
}

Value HeadlessEditedControl::GetAt(std::u16string_view property, std::int32_t index) {
    Value answer = Find(property).get(index);
    if (onAnswer) onAnswer(property, answer);
    return answer;
}

void HeadlessEditedControl::PutAt(std::u16string_view property, std::int32_t index, const Value& value) {
    Note(property, " " + std::to_string(index));
    Find(property).put(index, value);
}

const HeadlessEditedControl::Member& HeadlessEditedControl::Find(std::u16string_view property) {
    if (onCall) onCall(property);
    const auto found = m_members.find(property);
    if (found == m_members.end()) throw HostError(ErrorNumber::ObjectNotSet);
    return found->second;
}

void HeadlessEditedControl::Note(std::u16string_view property, std::string_view suffix) {
    puts.push_back(std::string(property.begin(), property.end()) + std::string(suffix));
}

}  // namespace kiv::headless
