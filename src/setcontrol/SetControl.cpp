#include "setcontrol/SetControl.h"

#include "setcontrol/SetControlCore.h"

namespace kiv {

namespace {

/// Calls a member function of the properties as a call from outside.
template <typename Function, typename... Args>
auto Call(SetControlCore& core, Function function, Args... args) {
    return core.Enter([&] { return (core.Properties().*function)(args...); });
}

/// The same for a member function of the bindings of a slot.
template <typename Function, typename... Args>
auto CallSlot(SetControlCore& core, Function function, std::int32_t index, Args... args) {
    return core.Enter([&] { return (core.Properties().Slot(index).*function)(index, args...); });
}

}  // namespace

SetControl::SetControl(const ControlPlatform& platform, SetControlEvents& events)
    : m_pCore(SetControlCore::Create(platform, events)) {}

SetControl::~SetControl() {
    m_pCore->Destroy();
}

void SetControl::InitProperties() {
    m_pCore->Enter([core = m_pCore.get()] { core->InitProperties(); });
}

void SetControl::ReadProperties(const PropertyBag& bag) {
    m_pCore->Enter([&, core = m_pCore.get()] { core->ReadProperties(bag); });
}

void SetControl::WriteProperties(PropertyBag& bag) const {
    m_pCore->Enter([&, core = m_pCore.get()] { core->WriteProperties(bag); });
}

void SetControl::OnShown() {
    m_pCore->Enter([core = m_pCore.get()] { core->OnShown(); });
}

void SetControl::OnUserModeChanged() {
    m_pCore->Enter([core = m_pCore.get()] { core->OnUserModeChanged(); });
}

void SetControl::Terminate() noexcept {
    const std::shared_ptr<SetControlCore> core = m_pCore;  // the settings store may let go of this object
    core->Terminate();
}

OleColor SetControl::BackColor() const {
    return Call(*m_pCore, &SetControlProperties::BackColor);
}
void SetControl::SetBackColor(OleColor color) {
    Call(*m_pCore, &SetControlProperties::SetBackColor, color);
}
OleColor SetControl::ForeColor() const {
    return Call(*m_pCore, &SetControlProperties::ForeColor);
}
void SetControl::SetForeColor(OleColor color) {
    Call(*m_pCore, &SetControlProperties::SetForeColor, color);
}
std::u16string SetControl::Caption() const {
    return Call(*m_pCore, &SetControlProperties::Caption);
}
void SetControl::SetCaption(std::u16string_view caption) {
    Call(*m_pCore, &SetControlProperties::SetCaption, caption);
}
bool SetControl::Enabled() const {
    return Call(*m_pCore, &SetControlProperties::Enabled);
}
void SetControl::SetEnabled(bool enabled) {
    Call(*m_pCore, &SetControlProperties::SetEnabled, enabled);
}
FontPtr SetControl::GetFont() const {
    return Call(*m_pCore, &SetControlProperties::GetFont);
}
void SetControl::SetFont(const FontPtr& font) {
    Call(*m_pCore, &SetControlProperties::SetFont, font);
}
bool SetControl::ShowToday() const {
    return Call(*m_pCore, &SetControlProperties::ShowToday);
}
void SetControl::SetShowToday(bool show) {
    Call(*m_pCore, &SetControlProperties::SetShowToday, show);
}
std::int32_t SetControl::StartOfWeek() const {
    return Call(*m_pCore, &SetControlProperties::StartOfWeek);
}
void SetControl::SetStartOfWeek(std::int32_t day) {
    Call(*m_pCore, &SetControlProperties::SetStartOfWeek, day);
}
std::int32_t SetControl::TimeHeight() const {
    return Call(*m_pCore, &SetControlProperties::TimeHeight);
}
void SetControl::SetTimeHeight(std::int32_t twips) {
    Call(*m_pCore, &SetControlProperties::SetTimeHeight, twips);
}
std::int32_t SetControl::TimeWidth() const {
    return Call(*m_pCore, &SetControlProperties::TimeWidth);
}
void SetControl::SetTimeWidth(std::int32_t twips) {
    Call(*m_pCore, &SetControlProperties::SetTimeWidth, twips);
}
bool SetControl::UsePCDateTime() const {
    return Call(*m_pCore, &SetControlProperties::UsePCDateTime);
}
void SetControl::SetUsePCDateTime(bool use) {
    Call(*m_pCore, &SetControlProperties::SetUsePCDateTime, use);
}
OleColor SetControl::CalBackColor() const {
    return m_pCore->Context().State().m_colors.back;
}
void SetControl::SetCalBackColor(OleColor color) {
    Call(*m_pCore, &SetControlProperties::SetCalBackColor, color);
}
OleColor SetControl::CalBackColorDisabled() const {
    return m_pCore->Context().State().m_colors.backDisabled;
}
void SetControl::SetCalBackColorDisabled(OleColor color) {
    Call(*m_pCore, &SetControlProperties::SetCalBackColorDisabled, color);
}
OleColor SetControl::CalForeColorDisabled() const {
    return m_pCore->Context().State().m_colors.foreDisabled;
}
void SetControl::SetCalForeColorDisabled(OleColor color) {
    Call(*m_pCore, &SetControlProperties::SetCalForeColorDisabled, color);
}
OleColor SetControl::CalTitleBackColor() const {
    return m_pCore->Context().State().m_colors.titleBack;
}
void SetControl::SetCalTitleBackColor(OleColor color) {
    Call(*m_pCore, &SetControlProperties::SetCalTitleBackColor, color);
}
OleColor SetControl::CalTitleBackColorDisabled() const {
    return m_pCore->Context().State().m_colors.titleBackDisabled;
}
void SetControl::SetCalTitleBackColorDisabled(OleColor color) {
    Call(*m_pCore, &SetControlProperties::SetCalTitleBackColorDisabled, color);
}
OleColor SetControl::CalTitleForeColor() const {
    return m_pCore->Context().State().m_colors.titleFore;
}
void SetControl::SetCalTitleForeColor(OleColor color) {
    Call(*m_pCore, &SetControlProperties::SetCalTitleForeColor, color);
}
OleColor SetControl::CalTitleForeColorDisabled() const {
    return m_pCore->Context().State().m_colors.titleForeDisabled;
}
void SetControl::SetCalTitleForeColorDisabled(OleColor color) {
    Call(*m_pCore, &SetControlProperties::SetCalTitleForeColorDisabled, color);
}
OleColor SetControl::CalTrailingForeColor() const {
    return m_pCore->Context().State().m_colors.trailingFore;
}
void SetControl::SetCalTrailingForeColor(OleColor color) {
    Call(*m_pCore, &SetControlProperties::SetCalTrailingForeColor, color);
}
std::int32_t SetControl::Mode() const {
    return Call(*m_pCore, &SetControlProperties::Mode);
}
void SetControl::SetMode(std::int32_t mode) {
    Call(*m_pCore, &SetControlProperties::SetMode, mode);
}
bool SetControl::ShowDST() const {
    return Call(*m_pCore, &SetControlProperties::ShowDST);
}
void SetControl::SetShowDST(bool show) {
    Call(*m_pCore, &SetControlProperties::SetShowDST, show);
}
bool SetControl::ShowSeconds() const {
    return Call(*m_pCore, &SetControlProperties::ShowSeconds);
}
void SetControl::SetShowSeconds(bool show) {
    Call(*m_pCore, &SetControlProperties::SetShowSeconds, show);
}
std::int32_t SetControl::TimeFormat() const {
    return Call(*m_pCore, &SetControlProperties::TimeFormat);
}
void SetControl::SetTimeFormat(std::int32_t format) {
    Call(*m_pCore, &SetControlProperties::SetTimeFormat, format);
}
std::int32_t SetControl::Data12HrValue() const {
    return Call(*m_pCore, &SetControlProperties::Data12HrValue);
}
void SetControl::SetData12HrValue(std::int32_t value) {
    Call(*m_pCore, &SetControlProperties::SetData12HrValue, value);
}
std::int32_t SetControl::Data24HrValue() const {
    return Call(*m_pCore, &SetControlProperties::Data24HrValue);
}
void SetControl::SetData24HrValue(std::int32_t value) {
    Call(*m_pCore, &SetControlProperties::SetData24HrValue, value);
}
std::int32_t SetControl::DataLMObject(std::int32_t index) {
    return CallSlot(*m_pCore, &DataBindings::LMObject, index);
}
void SetControl::SetDataLMObject(std::int32_t index, std::int32_t value) {
    CallSlot(*m_pCore, &DataBindings::SetLMObject, index, value);
}
std::int32_t SetControl::DataType(std::int32_t index) {
    return CallSlot(*m_pCore, &DataBindings::DataType, index);
}
void SetControl::SetDataType(std::int32_t index, std::int32_t value) {
    CallSlot(*m_pCore, &DataBindings::SetDataType, index, value);
}
std::u16string SetControl::DataVariableName(std::int32_t index) {
    return CallSlot(*m_pCore, &DataBindings::VariableName, index);
}
void SetControl::SetDataVariableName(std::int32_t index, std::u16string_view value) {
    CallSlot(*m_pCore, &DataBindings::SetVariableName, index, value);
}
std::u16string SetControl::DataElementPath(std::int32_t index) {
    return CallSlot(*m_pCore, &DataBindings::ElementPath, index);
}
void SetControl::SetDataElementPath(std::int32_t index, std::u16string_view value) {
    CallSlot(*m_pCore, &DataBindings::SetElementPath, index, value);
}
bool SetControl::DataInUpload() const {
    return Call(*m_pCore, &SetControlProperties::DataInUpload);
}
void SetControl::SetDataInUpload(bool upload) {
    Call(*m_pCore, &SetControlProperties::SetDataInUpload, upload);
}

DateTimeInfo SetControl::GetDateTimeInfo() const {
    return m_pCore->Enter([core = m_pCore.get()] {
        const SetControlChildren& children = core->Context().Children();
        return DateTimeInfo{children.mvDate->Value(), children.dtpTimeSP->Value(),
                            children.chkUseDaylightSavings->Value() == 1};
    });
}

FrameworkObjectPtr SetControl::VexaHelpObject() const {
    return m_pCore->Vexa().HelpObject();
}
FrameworkObjectPtr SetControl::VexaSubElements() const {
    return m_pCore->Vexa().SubElements();
}
void SetControl::VexaSetControlFocus() {
    m_pCore->Enter([core = m_pCore.get()] { core->SetFocus(); });
}

}  // namespace kiv
