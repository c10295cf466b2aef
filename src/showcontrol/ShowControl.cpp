#include "showcontrol/ShowControl.h"

#include "showcontrol/ShowControlCore.h"

namespace kiv {

namespace {

/// Calls a member function of the properties as a call from outside.
template <typename Function, typename... Args>
auto Call(ShowControlCore& core, Function function, Args... args) {
    return core.Enter([&] { return (core.Properties().*function)(args...); });
}

/// The same for a member function of the bindings of a slot.
template <typename Function, typename... Args>
auto CallSlot(ShowControlCore& core, Function function, std::int32_t index, Args... args) {
    return core.Enter([&] { return (core.Properties().Slot(index).*function)(index, args...); });
}

}  // namespace

ShowControl::ShowControl(const ShowPlatform& platform, ShowControlEvents& events)
    : m_pCore(ShowControlCore::Create(platform, events)) {}

ShowControl::~ShowControl() {
    m_pCore->Destroy();
}

void ShowControl::InitProperties() {
    m_pCore->Enter([core = m_pCore.get()] { core->InitProperties(); });
}

void ShowControl::ReadProperties(const PropertyBag& bag) {
    m_pCore->Enter([&, core = m_pCore.get()] { core->ReadProperties(bag); });
}

void ShowControl::WriteProperties(PropertyBag& bag) const {
    m_pCore->Enter([&, core = m_pCore.get()] { core->WriteProperties(bag); });
}

void ShowControl::OnUserModeChanged() {
    m_pCore->Enter([core = m_pCore.get()] { core->OnUserModeChanged(); });
}

void ShowControl::OnRegionalSettingsChanged() {
    m_pCore->OnRegionalSettingsChanged();
}

void ShowControl::Terminate() noexcept {
    const std::shared_ptr<ShowControlCore> core = m_pCore;  // the framework may let go of this object
    core->Terminate();
}

void ShowControl::RefreshDisplay(VariableObject& variable) {
    m_pCore->Enter([&, core = m_pCore.get()] { core->RefreshDisplay(variable); });
}

std::u16string ShowControl::Value() const {
    return Call(*m_pCore, &ShowControlProperties::Value);
}
OleColor ShowControl::BackColor() const {
    return Call(*m_pCore, &ShowControlProperties::BackColor);
}
void ShowControl::SetBackColor(OleColor color) {
    Call(*m_pCore, &ShowControlProperties::SetBackColor, color);
}
std::int32_t ShowControl::BorderStyle() const {
    return Call(*m_pCore, &ShowControlProperties::BorderStyle);
}
void ShowControl::SetBorderStyle(std::int32_t style) {
    Call(*m_pCore, &ShowControlProperties::SetBorderStyle, style);
}
std::u16string ShowControl::Caption() const {
    return Call(*m_pCore, &ShowControlProperties::Caption);
}
void ShowControl::SetCaption(std::u16string_view caption) {
    Call(*m_pCore, &ShowControlProperties::SetCaption, caption);
}
bool ShowControl::Enabled() const {
    return Call(*m_pCore, &ShowControlProperties::Enabled);
}
void ShowControl::SetEnabled(bool enabled) {
    Call(*m_pCore, &ShowControlProperties::SetEnabled, enabled);
}
FontPtr ShowControl::GetFont() const {
    return Call(*m_pCore, &ShowControlProperties::GetFont);
}
void ShowControl::SetFont(const FontPtr& font) {
    Call(*m_pCore, &ShowControlProperties::SetFont, font);
}
OleColor ShowControl::ForeColor() const {
    return Call(*m_pCore, &ShowControlProperties::ForeColor);
}
void ShowControl::SetForeColor(OleColor color) {
    Call(*m_pCore, &ShowControlProperties::SetForeColor, color);
}
std::int16_t ShowControl::CaptionHeight() const {
    return Call(*m_pCore, &ShowControlProperties::CaptionHeight);
}
void ShowControl::SetCaptionHeight(std::int16_t twips) {
    Call(*m_pCore, &ShowControlProperties::SetCaptionHeight, twips);
}
std::int16_t ShowControl::CaptionWidth() const {
    return Call(*m_pCore, &ShowControlProperties::CaptionWidth);
}
void ShowControl::SetCaptionWidth(std::int16_t twips) {
    Call(*m_pCore, &ShowControlProperties::SetCaptionWidth, twips);
}
std::int16_t ShowControl::ValueHeight() const {
    return Call(*m_pCore, &ShowControlProperties::ValueHeight);
}
void ShowControl::SetValueHeight(std::int16_t twips) {
    Call(*m_pCore, &ShowControlProperties::SetValueHeight, twips);
}
std::int16_t ShowControl::ValueWidth() const {
    return Call(*m_pCore, &ShowControlProperties::ValueWidth);
}
void ShowControl::SetValueWidth(std::int16_t twips) {
    Call(*m_pCore, &ShowControlProperties::SetValueWidth, twips);
}
bool ShowControl::LockCaptionWidth() const {
    return Call(*m_pCore, &ShowControlProperties::LockCaptionWidth);
}
void ShowControl::SetLockCaptionWidth(bool lock) {
    Call(*m_pCore, &ShowControlProperties::SetLockCaptionWidth, lock);
}
bool ShowControl::LockValueWidth() const {
    return Call(*m_pCore, &ShowControlProperties::LockValueWidth);
}
void ShowControl::SetLockValueWidth(bool lock) {
    Call(*m_pCore, &ShowControlProperties::SetLockValueWidth, lock);
}
std::int32_t ShowControl::Mode() const {
    return Call(*m_pCore, &ShowControlProperties::Mode);
}
void ShowControl::SetMode(std::int32_t mode) {
    Call(*m_pCore, &ShowControlProperties::SetMode, mode);
}
std::u16string ShowControl::AMPMFormat() const {
    return Call(*m_pCore, &ShowControlProperties::AMPMFormat);
}
void ShowControl::SetAMPMFormat(std::u16string_view format) {
    Call(*m_pCore, &ShowControlProperties::SetAMPMFormat, format);
}
std::u16string ShowControl::DateDelimiter() const {
    return Call(*m_pCore, &ShowControlProperties::DateDelimiter);
}
void ShowControl::SetDateDelimiter(std::u16string_view delimiter) {
    Call(*m_pCore, &ShowControlProperties::SetDateDelimiter, delimiter);
}
std::u16string ShowControl::TimeDelimiter() const {
    return Call(*m_pCore, &ShowControlProperties::TimeDelimiter);
}
void ShowControl::SetTimeDelimiter(std::u16string_view delimiter) {
    Call(*m_pCore, &ShowControlProperties::SetTimeDelimiter, delimiter);
}
std::int32_t ShowControl::DateFormat() const {
    return Call(*m_pCore, &ShowControlProperties::DateFormat);
}
void ShowControl::SetDateFormat(std::int32_t format) {
    Call(*m_pCore, &ShowControlProperties::SetDateFormat, format);
}
std::int32_t ShowControl::TimeFormat() const {
    return Call(*m_pCore, &ShowControlProperties::TimeFormat);
}
void ShowControl::SetTimeFormat(std::int32_t format) {
    Call(*m_pCore, &ShowControlProperties::SetTimeFormat, format);
}
bool ShowControl::ShowCentury() const {
    return Call(*m_pCore, &ShowControlProperties::ShowCentury);
}
void ShowControl::SetShowCentury(bool show) {
    Call(*m_pCore, &ShowControlProperties::SetShowCentury, show);
}
bool ShowControl::ShowLeadingZeros() const {
    return Call(*m_pCore, &ShowControlProperties::ShowLeadingZeros);
}
void ShowControl::SetShowLeadingZeros(bool show) {
    Call(*m_pCore, &ShowControlProperties::SetShowLeadingZeros, show);
}
bool ShowControl::ShowLongDay() const {
    return Call(*m_pCore, &ShowControlProperties::ShowLongDay);
}
void ShowControl::SetShowLongDay(bool show) {
    Call(*m_pCore, &ShowControlProperties::SetShowLongDay, show);
}
bool ShowControl::ShowSeconds() const {
    return Call(*m_pCore, &ShowControlProperties::ShowSeconds);
}
void ShowControl::SetShowSeconds(bool show) {
    Call(*m_pCore, &ShowControlProperties::SetShowSeconds, show);
}
bool ShowControl::UpperCase() const {
    return Call(*m_pCore, &ShowControlProperties::UpperCase);
}
void ShowControl::SetUpperCase(bool upper) {
    Call(*m_pCore, &ShowControlProperties::SetUpperCase, upper);
}
std::int32_t ShowControl::Data12HrValue() const {
    return Call(*m_pCore, &ShowControlProperties::Data12HrValue);
}
void ShowControl::SetData12HrValue(std::int32_t value) {
    Call(*m_pCore, &ShowControlProperties::SetData12HrValue, value);
}
std::int32_t ShowControl::Data24HrValue() const {
    return Call(*m_pCore, &ShowControlProperties::Data24HrValue);
}
void ShowControl::SetData24HrValue(std::int32_t value) {
    Call(*m_pCore, &ShowControlProperties::SetData24HrValue, value);
}
std::int32_t ShowControl::DataDMYValue() const {
    return Call(*m_pCore, &ShowControlProperties::DataDMYValue);
}
void ShowControl::SetDataDMYValue(std::int32_t value) {
    Call(*m_pCore, &ShowControlProperties::SetDataDMYValue, value);
}
std::int32_t ShowControl::DataMDYValue() const {
    return Call(*m_pCore, &ShowControlProperties::DataMDYValue);
}
void ShowControl::SetDataMDYValue(std::int32_t value) {
    Call(*m_pCore, &ShowControlProperties::SetDataMDYValue, value);
}
std::int32_t ShowControl::DataLMObject(std::int32_t index) {
    return CallSlot(*m_pCore, &DataBindings::LMObject, index);
}
void ShowControl::SetDataLMObject(std::int32_t index, std::int32_t value) {
    Call(*m_pCore, &ShowControlProperties::SetDataLMObject, index, value);
}
std::int32_t ShowControl::DataType(std::int32_t index) {
    return CallSlot(*m_pCore, &DataBindings::DataType, index);
}
void ShowControl::SetDataType(std::int32_t index, std::int32_t value) {
    CallSlot(*m_pCore, &DataBindings::SetDataType, index, value);
}
std::u16string ShowControl::DataVariableName(std::int32_t index) {
    return CallSlot(*m_pCore, &DataBindings::VariableName, index);
}
void ShowControl::SetDataVariableName(std::int32_t index, std::u16string_view value) {
    CallSlot(*m_pCore, &DataBindings::SetVariableName, index, value);
}
std::u16string ShowControl::DataElementPath(std::int32_t index) {
    return CallSlot(*m_pCore, &DataBindings::ElementPath, index);
}
void ShowControl::SetDataElementPath(std::int32_t index, std::u16string_view value) {
    CallSlot(*m_pCore, &DataBindings::SetElementPath, index, value);
}

FrameworkObjectPtr ShowControl::VexaHelpObject() const {
    return m_pCore->Vexa().HelpObject();
}
FrameworkObjectPtr ShowControl::VexaSubElements() const {
    return m_pCore->Vexa().SubElements();
}

}  // namespace kiv
