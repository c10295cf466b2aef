#include "setcontrol/SetControlProperties.h"

#include <algorithm>

#include "common/Errors.h"
#include "common/NumericText.h"
#include "common/ResourceStrings.h"
#include "platform/HostError.h"

namespace kiv {

// --- Surface and children -------------------------------------------------------------------------------------------

OleColor SetControlProperties::BackColor() const {
    return m_context.ControlSurface().BackColor();
}

void SetControlProperties::SetBackColor(OleColor color) {
    if (color == BackColor()) return;
    m_context.ControlSurface().SetBackColor(color);
    m_context.Children().fraInner->SetBackColor(color);
    m_context.Children().fraOuter->SetBackColor(color);
    m_context.Children().chkUseDaylightSavings->SetBackColor(color);
    m_context.Children().chkUseSystem->SetBackColor(color);
    if (Calendar& calendar = *m_context.Children().mvDate; calendar.IsEnabled()) calendar.SetBackColor(color);
    m_context.Announce(u"BackColor");
}

OleColor SetControlProperties::ForeColor() const {
    return m_context.ControlSurface().ForeColor();
}

void SetControlProperties::SetForeColor(OleColor color) {
    if (color == ForeColor()) return;
    m_context.ControlSurface().SetForeColor(color);
    m_context.Children().fraInner->SetForeColor(color);
    m_context.Children().fraOuter->SetForeColor(color);
    m_context.Children().chkUseDaylightSavings->SetForeColor(color);
    m_context.Children().chkUseSystem->SetForeColor(color);
    if (Calendar& calendar = *m_context.Children().mvDate; calendar.IsEnabled()) calendar.SetForeColor(color);
    m_context.Announce(u"ForeColor");
}

std::u16string SetControlProperties::Caption() const {
    return m_context.Children().fraOuter->Caption();
}

void SetControlProperties::SetCaption(std::u16string_view caption) {
    if (caption == Caption()) return;
    m_context.Children().fraOuter->SetCaption(caption);
    m_context.Announce(u"Caption");
}

bool SetControlProperties::Enabled() const {
    return m_context.ControlSurface().IsEnabled();
}

void SetControlProperties::SetEnabled(bool enabled) {
    if (enabled != Enabled()) {
        m_context.ControlSurface().SetEnabled(enabled);
        m_context.Announce(u"Enabled");
    }
    m_exchange.ApplyUseSystemState();
}

FontPtr SetControlProperties::GetFont() const {
    return m_context.ControlSurface().GetFont();
}

void SetControlProperties::SetFont(const FontPtr& font) {
    if (!font) throw HostError(ErrorNumber::InvalidPropertyValue);
    m_context.ControlSurface().SetFont(font);
    m_context.Announce(u"Font");
    m_layout.ApplyFont();
}

bool SetControlProperties::ShowToday() const {
    return m_context.Children().mvDate->ShowToday();
}

void SetControlProperties::SetShowToday(bool show) {
    if (show == ShowToday()) return;
    m_context.Children().mvDate->SetShowToday(show);
    m_context.Announce(u"ShowToday");
}

std::int32_t SetControlProperties::StartOfWeek() const {
    return m_context.Children().mvDate->StartOfWeek();
}

void SetControlProperties::SetStartOfWeek(std::int32_t day) {
    if (day == StartOfWeek()) return;
    m_context.Children().mvDate->SetStartOfWeek(day);
    m_context.Announce(u"StartOfWeek");
}

std::int32_t SetControlProperties::TimeHeight() const {
    return RoundToInt32(m_context.Children().dtpTimeSP->Bounds().height);
}

void SetControlProperties::SetTimeHeight(std::int32_t twips) {
    SetTimeExtent(&Rect::height, twips, MinTimeHeight, u"TimeHeight");
}

std::int32_t SetControlProperties::TimeWidth() const {
    return RoundToInt32(m_context.Children().dtpTimeSP->Bounds().width);
}

void SetControlProperties::SetTimeWidth(std::int32_t twips) {
    SetTimeExtent(&Rect::width, twips, MinTimeWidth, u"TimeWidth");
}

void SetControlProperties::SetTimeExtent(Twips Rect::*extent, std::int32_t twips, Twips minimum,
                                         std::u16string_view key) {
    Rect bounds = m_context.Children().dtpTimeSP->Bounds();
    // Compared as asked for, not as raised to the minimum: to ask for less than the minimum is always a change.
    if (bounds.*extent == static_cast<Twips>(twips)) return;
    bounds.*extent = std::max(static_cast<Twips>(twips), minimum);
    m_context.Children().dtpTimeSP->SetBounds(bounds);
    m_layout.Resize();
    m_context.Announce(key);
}

bool SetControlProperties::UsePCDateTime() const {
    return m_context.Children().chkUseSystem->Value() == 1;
}

void SetControlProperties::SetUsePCDateTime(bool use) {
    if (use != UsePCDateTime()) {
        m_context.Children().chkUseSystem->SetValue(use ? 1 : 0);
        OnUseSystemClick();
        m_context.Announce(u"UsePCDateTime");
    }
    m_exchange.ApplyUseSystemState();
}

void SetControlProperties::OnUseSystemClick() {
    m_exchange.ApplyUseSystemState();
    m_context.Raise([](SetControlEvents& events) { events.Click(); });
}

// --- Calendar colours -----------------------------------------------------------------------------------------------

void SetControlProperties::SetCalendarColor(OleColor CalendarColors::*field, OleColor color, std::u16string_view key,
                                            bool whileEnabled, void (Calendar::*show)(OleColor)) {
    OleColor& stored = m_context.State().m_colors.*field;
    if (stored == color) return;
    stored = color;
    Calendar& calendar = *m_context.Children().mvDate;
    if (calendar.IsEnabled() == whileEnabled) (calendar.*show)(color);
    m_context.Announce(key);
}

void SetControlProperties::SetCalBackColor(OleColor color) {
    SetCalendarColor(&CalendarColors::back, color, u"CalBackColor", true, &Calendar::SetMonthBackColor);
}

void SetControlProperties::SetCalBackColorDisabled(OleColor color) {
    SetCalendarColor(&CalendarColors::backDisabled, color, u"CalDisabledBackColor", false,
                     &Calendar::SetMonthBackColor);
}

void SetControlProperties::SetCalForeColorDisabled(OleColor color) {
    SetCalendarColor(&CalendarColors::foreDisabled, color, u"CalDisabledForeColor", false, &Calendar::SetForeColor);
}

void SetControlProperties::SetCalTitleBackColor(OleColor color) {
    SetCalendarColor(&CalendarColors::titleBack, color, u"CalEnabledTitleBack", true, &Calendar::SetTitleBackColor);
}

void SetControlProperties::SetCalTitleBackColorDisabled(OleColor color) {
    SetCalendarColor(&CalendarColors::titleBackDisabled, color, u"CalDisabledTitleBack", false,
                     &Calendar::SetTitleBackColor);
}

void SetControlProperties::SetCalTitleForeColor(OleColor color) {
    SetCalendarColor(&CalendarColors::titleFore, color, u"CalEnabledTitleFore", true, &Calendar::SetTitleForeColor);
}

void SetControlProperties::SetCalTitleForeColorDisabled(OleColor color) {
    SetCalendarColor(&CalendarColors::titleForeDisabled, color, u"CalDisabledTitleFore", false,
                     &Calendar::SetTitleForeColor);
}

void SetControlProperties::SetCalTrailingForeColor(OleColor color) {
    SetCalendarColor(&CalendarColors::trailingFore, color, u"CalTrailerColor", true, &Calendar::SetTrailingForeColor);
}

// --- Mode and format ------------------------------------------------------------------------------------------------

void SetControlProperties::RaiseIfRunning() const {
    const SetControlState& state = m_context.State();
    if (state.m_bUserMode && !state.IsLoading()) throw HostError(ErrorNumber::PropertyNotSettableAtRunTime);
}

void SetControlProperties::SetMode(std::int32_t mode) {
    RaiseIfRunning();
    if (mode != Mode()) {
        if (mode < sdtSetDateTime || mode > sdtSetTimeOnly) throw HostError(ErrorNumber::InvalidPropertyValue);
        m_context.State().m_lMode = mode;
        m_context.Announce(u"Mode");
        SetShowDST(mode != sdtSetDateOnly);
    }
    m_layout.ApplyMode();
}

void SetControlProperties::SetShowDST(bool show) {
    RaiseIfRunning();
    const bool effective = show && Mode() != sdtSetDateOnly;
    if (effective != ShowDST()) {
        m_context.State().m_bShowDST = effective;
        m_context.Announce(u"ShowDST");
    }
    m_layout.ApplyMode();
}

void SetControlProperties::SetShowSeconds(bool show) {
    RaiseIfRunning();
    if (show != ShowSeconds()) {
        m_context.State().m_bShowSeconds = show;
        m_context.Announce(u"ShowSeconds");
    }
    m_layout.ApplyTimeFormat();
}

void SetControlProperties::SetTimeFormat(std::int32_t format) {
    if (format != TimeFormat()) {
        m_context.State().m_lTimeFormat = format;
        m_context.Announce(u"ProtoShow24Hour");
    }
    m_layout.ApplyTimeFormat();
}

void SetControlProperties::SetData12HrValue(std::int32_t value) {
    if (value != Data12HrValue()) {
        StoreData12HrValue(value);
        m_context.Announce(u"Data12HourValue");
    }
    m_layout.ApplyTimeFormat();
}

void SetControlProperties::SetData24HrValue(std::int32_t value) {
    if (value != Data24HrValue()) {
        StoreData24HrValue(value);
        m_context.Announce(u"Data24HourValue");
    }
    m_layout.ApplyTimeFormat();
}

// --- Device data ----------------------------------------------------------------------------------------------------

DataBindings& SetControlProperties::Slot(std::int32_t index) {
    ValidateIndex(SetControl::ClassName, m_context.Platform().container, index, SetSlot::Count, residSetBadIndex);
    return m_bindings.Slots();
}

bool SetControlProperties::DataInUpload() const {
    if (!m_context.State().m_bUserMode) throw HostError(ErrorNumber::PropertyWriteOnly);
    return m_bindings.DataInUpload();
}

void SetControlProperties::SetDataInUpload(bool upload) {
    if (!m_context.State().m_bUserMode) throw HostError(ErrorNumber::PropertyReadOnly);
    m_bindings.SwitchDirection(upload);
    // Whoever was called meanwhile may have switched back; that call has done its own part.
    if (m_bindings.DataInUpload() != upload) return;
    if (upload) {
        m_context.State().m_edited = {};
    } else {
        m_exchange.WriteDateTimeToDevice();
    }
}

}  // namespace kiv
