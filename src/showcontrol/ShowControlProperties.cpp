#include "showcontrol/ShowControlProperties.h"

#include <algorithm>

#include "common/Errors.h"
#include "common/ResourceStrings.h"
#include "platform/HostError.h"
#include "showcontrol/ShowControl.h"

namespace kiv {

bool IsShowMode(std::int32_t mode) noexcept {
    return mode == sdtShowDateOnly || mode == sdtShowTimeOnly;
}

bool IsBorderStyle(std::int32_t style) noexcept {
    return style == sdtNone || style == sdtSunken;
}

bool IsDelimiter(std::u16string_view text) noexcept {
    return text.size() == 1;
}

bool IsAMPMFormat(std::u16string_view text) noexcept {
    return std::ranges::count(text, u',') == 1;
}

// --- Both labels ----------------------------------------------------------------------------------------------------

OleColor ShowControlProperties::BackColor() const {
    return m_context.Area().BackColor();
}

void ShowControlProperties::SetBackColor(OleColor color) {
    if (color == BackColor()) return;
    m_context.Area().SetBackColor(color);
    m_context.Children().lblCaption->SetBackColor(color);
    m_context.Children().lblValue->SetBackColor(color);
    m_context.Announce(u"BackColor");
}

OleColor ShowControlProperties::ForeColor() const {
    return m_context.Area().ForeColor();
}

void ShowControlProperties::SetForeColor(OleColor color) {
    if (color == ForeColor()) return;
    m_context.Area().SetForeColor(color);
    m_context.Children().lblCaption->SetForeColor(color);
    m_context.Children().lblValue->SetForeColor(color);
    m_context.Announce(u"ForeColor");
}

bool ShowControlProperties::Enabled() const {
    return m_context.Area().IsEnabled();
}

void ShowControlProperties::SetEnabled(bool enabled) {
    if (enabled == Enabled()) return;
    m_context.Area().SetEnabled(enabled);
    m_context.Children().lblCaption->SetEnabled(enabled);
    m_context.Children().lblValue->SetEnabled(enabled);
    m_context.Announce(u"Enabled");
}

FontPtr ShowControlProperties::GetFont() const {
    return m_context.Area().GetFont();
}

void ShowControlProperties::SetFont(const FontPtr& font) {
    if (!font) throw HostError(ErrorNumber::InvalidPropertyValue);
    m_context.Area().SetFont(font);
    m_context.Children().lblCaption->SetFont(font);
    m_context.Children().lblValue->SetFont(font);
    m_context.Announce(u"Font");
}

// --- One label ------------------------------------------------------------------------------------------------------

std::u16string ShowControlProperties::Caption() const {
    return m_context.Children().lblCaption->Caption();
}

void ShowControlProperties::SetCaption(std::u16string_view caption) {
    if (m_context.Children().lblCaption->SetCaption(caption)) m_context.Announce(u"Caption");
}

std::int32_t ShowControlProperties::BorderStyle() const {
    return m_context.Children().lblValue->HasSunkenBorder() ? sdtSunken : sdtNone;
}

void ShowControlProperties::SetBorderStyle(std::int32_t style) {
    if (style == BorderStyle()) return;
    if (!IsBorderStyle(style)) {
        if (!State().IsLoading()) RaiseInvalidValue(residBadBorderStyle);
        style = sdtNone;
    }
    // The edge is drawn inside the label: its outer size stays. The text follows when it is rebuilt.
    m_context.Children().lblValue->SetSunkenBorder(style == sdtSunken);
    m_context.Announce(u"BorderStyle");
}

// --- Sizes ----------------------------------------------------------------------------------------------------------

std::int16_t ShowControlProperties::CaptionHeight() const {
    return ToShortTwips(m_context.Children().lblCaption->Bounds().height);
}

void ShowControlProperties::SetCaptionHeight(std::int16_t twips) {
    const std::int16_t minimum = m_layout.MinimumSizes().captionHeight;
    m_layout.SetLabelExtent(*m_context.Children().lblCaption, &Rect::height, twips, minimum, u"CaptionHeight");
}

std::int16_t ShowControlProperties::CaptionWidth() const {
    return ToShortTwips(m_context.Children().lblCaption->Bounds().width);
}

void ShowControlProperties::SetCaptionWidth(std::int16_t twips) {
    const std::int16_t minimum = m_layout.MinimumSizes().captionWidth;
    m_layout.SetLabelExtent(*m_context.Children().lblCaption, &Rect::width, twips, minimum, u"CaptionWidth");
}

std::int16_t ShowControlProperties::ValueHeight() const {
    return ToShortTwips(m_context.Children().lblValue->Bounds().height);
}

void ShowControlProperties::SetValueHeight(std::int16_t twips) {
    const std::int16_t minimum = m_layout.MinimumSizes().valueHeight;
    m_layout.SetLabelExtent(*m_context.Children().lblValue, &Rect::height, twips, minimum, u"ValueHeight");
}

std::int16_t ShowControlProperties::ValueWidth() const {
    return ToShortTwips(m_context.Children().lblValue->Bounds().width);
}

void ShowControlProperties::SetValueWidth(std::int16_t twips) {
    const std::int16_t minimum = m_layout.MinimumSizes().valueWidth;
    m_layout.SetLabelExtent(*m_context.Children().lblValue, &Rect::width, twips, minimum, u"ValueWidth");
}

void ShowControlProperties::SetLockCaptionWidth(bool lock) {
    Store(&ShowControlState::m_bLockCaptionWidth, lock, u"LockCapWidth", Shows::Never);
}

void ShowControlProperties::SetLockValueWidth(bool lock) {
    Store(&ShowControlState::m_bLockValueWidth, lock, u"LockValWidth", Shows::Never);
}

// --- The text -------------------------------------------------------------------------------------------------------

void ShowControlProperties::SetMode(std::int32_t mode) {
    if (m_context.AmbientUserMode()) throw HostError(ErrorNumber::PropertyNotSettableAtRunTime);
    if (mode != Mode()) {
        if (!IsShowMode(mode)) RaiseInvalidValue(residBadShowMode);
        StoreMode(mode);
        m_context.MarkDirty();
    }
    m_display.UpdateDisplay();
}

void ShowControlProperties::SetAMPMFormat(std::u16string_view format) {
    StoreText(&ShowControlState::m_strAMPMFormat, format, IsAMPMFormat(format), ShowDefault::AMPMFormat,
              residBadAMPMFormat, u"AMPMFormat", Shows::InTimeMode);
}

void ShowControlProperties::SetDateDelimiter(std::u16string_view delimiter) {
    StoreText(&ShowControlState::m_strDateDelimiter, delimiter, IsDelimiter(delimiter), ShowDefault::DateDelimiter,
              residBadDateDelimiter, u"DateDelimiter", Shows::InDateMode);
}

void ShowControlProperties::SetTimeDelimiter(std::u16string_view delimiter) {
    StoreText(&ShowControlState::m_strTimeDelimiter, delimiter, IsDelimiter(delimiter), ShowDefault::TimeDelimiter,
              residBadTimeDelimiter, u"TimeDelimiter", Shows::InTimeMode);
}

void ShowControlProperties::SetDateFormat(std::int32_t format) {
    Store(&ShowControlState::m_lDateFormat, format, u"ProtoDateFormat", Shows::InDateMode);
}

void ShowControlProperties::SetTimeFormat(std::int32_t format) {
    Store(&ShowControlState::m_lTimeFormat, format, u"ProtoShow24Hour", Shows::InTimeMode);
}

void ShowControlProperties::SetShowCentury(bool show) {
    Store(&ShowControlState::m_bShowCentury, show, u"ShowCentury", Shows::InDateMode);
}

void ShowControlProperties::SetShowLeadingZeros(bool show) {
    Store(&ShowControlState::m_bShowLeadingZeros, show, u"ShowLeadZeros", Shows::Always);
}

void ShowControlProperties::SetShowLongDay(bool show) {
    Store(&ShowControlState::m_bShowLongDay, show, u"ShowLongDay", Shows::Always);
}

void ShowControlProperties::SetShowSeconds(bool show) {
    Store(&ShowControlState::m_bShowSeconds, show, u"ShowSeconds", Shows::InTimeMode);
}

void ShowControlProperties::SetUpperCase(bool upper) {
    Store(&ShowControlState::m_bUpperCase, upper, u"UpperCase", Shows::Always);
}

void ShowControlProperties::SetData12HrValue(std::int32_t value) {
    Store(&ShowControlState::m_lData12HrValue, value, u"Data12HourValue", Shows::WithTheNextText);
}

void ShowControlProperties::SetData24HrValue(std::int32_t value) {
    Store(&ShowControlState::m_lData24HrValue, value, u"Data24HourValue", Shows::Never);
}

void ShowControlProperties::SetDataDMYValue(std::int32_t value) {
    Store(&ShowControlState::m_lDataDMYValue, value, u"DataDMYValue", Shows::WithTheNextText);
}

void ShowControlProperties::SetDataMDYValue(std::int32_t value) {
    Store(&ShowControlState::m_lDataMDYValue, value, u"DataMDYValue", Shows::Never);
}

template <typename Field>
void ShowControlProperties::Store(Field ShowControlState::*field, const Field& value, std::u16string_view key,
                                  Shows shows) {
    Field& stored = m_context.State().*field;
    if (stored != value) {
        stored = value;
        if (shows != Shows::Never) m_display.OnSettingsChanged();
        m_context.Announce(key);
    }
    const bool showsDate = Mode() == sdtShowDateOnly;
    if (shows == Shows::Always || (shows == Shows::InDateMode && showsDate) ||
        (shows == Shows::InTimeMode && !showsDate)) {
        m_display.UpdateDisplay();
    }
}

void ShowControlProperties::StoreText(std::u16string ShowControlState::*field, std::u16string_view value, bool valid,
                                      std::u16string_view defaultValue, std::int32_t resId, std::u16string_view key,
                                      Shows shows) {
    if (!valid && !State().IsLoading()) RaiseInvalidValue(resId);
    Store(field, std::u16string(valid ? value : defaultValue), key, shows);
}

void ShowControlProperties::RaiseInvalidValue(std::int32_t resId) const {
    RaisePropertyError(ShowControl::ClassName, m_context.Platform().container, ErrorNumber::InvalidPropertyValue,
                       resId);
}

// --- Device data ----------------------------------------------------------------------------------------------------

DataBindings& ShowControlProperties::Slot(std::int32_t index) {
    ValidateIndex(ShowControl::ClassName, m_context.Platform().container, index, ShowSlot::Count, residShowBadIndex);
    return m_bindings.Slots();
}

}  // namespace kiv
