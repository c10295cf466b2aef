#include "setcontrol/DateTimeExchange.h"

#include "common/Attempt.h"
#include "common/NumericText.h"
#include "common/ValueConversion.h"
#include "setcontrol/SetControlBindings.h"

namespace kiv {

namespace {

constexpr std::u16string_view NoDisplay = u"NoDisplay";
constexpr std::u16string_view UseCurrent = u"UseCurrent";

}  // namespace

bool DateTimeExchange::FollowsPC() const {
    return m_context.Children().chkUseSystem->Value() > 0;
}

void DateTimeExchange::ShowDaylightSaving(bool enabled) {
    m_context.Children().chkUseDaylightSavings->SetValue(enabled ? 1 : 0);
}

void DateTimeExchange::OnDeviceNumber(std::int16_t element, std::int32_t number) {
    switch (element) {
        case SetElement::DaylightSaving:
            if (m_context.State().m_edited.dst) return;
            Attempt([&] { ShowDaylightSaving(number == 1); });
            m_context.State().m_edited.dst = false;
            return;
        case SetElement::Hour:
            return OnTimePart(&TimeOfDay::hour, number);
        case SetElement::Minute:
            return OnTimePart(&TimeOfDay::minute, number);
        case SetElement::Second:
            if (m_context.State().m_bShowSeconds) OnTimePart(&TimeOfDay::second, number);
            return;
        case SetElement::Month:
            return OnDatePart(DatePart::Month, number);
        case SetElement::Day:
            return OnDatePart(DatePart::Day, number);
        case SetElement::Year:
            return OnDatePart(DatePart::Year, number);
        default:
            return;
    }
}

void DateTimeExchange::OnTimePart(int TimeOfDay::*part, std::int32_t number) {
    SetControlState& state = m_context.State();
    if (state.m_edited.time || !state.m_bDataInUpload) return;
    Attempt([&] {
        DateTime value = m_context.Children().dtpTimeSP->Value();
        value.time.*part = number;
        m_context.Children().dtpTimeSP->SetValue(value);
    });
    state.m_edited.time = false;
}

void DateTimeExchange::OnDatePart(DatePart part, std::int32_t number) {
    SetControlState& state = m_context.State();
    if (state.m_edited.date || !state.m_bDataInUpload) return;
    Attempt([&] {
        // Tried on a copy: a date that the calendar does not take leaves the parts as they were.
        ArrivingDate arriving = m_arriving;
        m_context.Children().mvDate->SetValue(arriving.Arrive(part, number, m_context.Children().mvDate->Value()));
        m_arriving = arriving;
    });
    state.m_edited.date = false;
}

void DateTimeExchange::MarkDateEdited() {
    m_context.State().m_edited.date = true;
    m_arriving.Forget();
}

void DateTimeExchange::OnTimer() {
    DateTime now;
    if (!Attempt([&] { now = m_context.Platform().clock.Now(); })) return;
    Attempt([&] {
        TimeField& field = *m_context.Children().dtpTimeSP;
        const TimeOfDay shown = field.Value().time;
        const bool secondsDiffer = m_context.State().m_bShowSeconds && shown.second != now.time.second;
        if (shown.hour != now.time.hour || shown.minute != now.time.minute || secondsDiffer) field.SetValue(now);
    });
    Attempt([&] {
        Calendar& calendar = *m_context.Children().mvDate;
        if (calendar.Value() != now.date) calendar.SetValue(now.date);
    });
}

void DateTimeExchange::ApplyUseSystemState() {
    ApplyEnabledState();
    ApplyCalendarColors();
    if (!m_context.IsUserModeNow()) return;
    if (FollowsPC()) {
        Attempt([&] { m_pTimer->SetEnabled(true); });
        Attempt([&] { ShowDaylightSaving(m_context.Platform().timeZone.DaylightBias() != 0); });
    } else {
        Attempt([&] { m_pTimer->SetEnabled(false); });
        LoadDeviceDateTime();
    }
}

void DateTimeExchange::ApplyEnabledState() {
    const bool enabled = m_context.ControlSurface().IsEnabled();
    const bool custom = enabled && !FollowsPC();
    m_context.Children().fraOuter->SetEnabled(enabled);
    m_context.Children().chkUseSystem->SetEnabled(enabled);
    m_context.Children().fraInner->SetEnabled(custom);
    m_context.Children().chkUseDaylightSavings->SetEnabled(custom);
    m_context.Children().mvDate->SetEnabled(custom);
    m_context.Children().dtpTimeSP->SetEnabled(custom);
}

void DateTimeExchange::ApplyCalendarColors() {
    const CalendarColors& colors = m_context.State().m_colors;
    const OleColor fore = m_context.ControlSurface().ForeColor();
    Calendar& calendar = *m_context.Children().mvDate;
    const bool enabled = calendar.IsEnabled();
    calendar.SetTitleForeColor(enabled ? colors.titleFore : colors.titleForeDisabled);
    calendar.SetTitleBackColor(enabled ? colors.titleBack : colors.titleBackDisabled);
    calendar.SetForeColor(enabled ? fore : colors.foreDisabled);
    calendar.SetMonthBackColor(enabled ? colors.back : colors.backDisabled);
    calendar.SetTrailingForeColor(enabled ? colors.trailingFore : colors.foreDisabled);
}

void DateTimeExchange::LoadDeviceDateTime() {
    if (FollowsPC()) return;
    Value dtNow;
    bool enableDst = false;
    if (!Attempt([&] { m_context.Raise([&](SetControlEvents& e) { e.GetDeviceDateTime(dtNow, enableDst); }); })) {
        Attempt([&] { dtNow = OleDate{ToOleDate(m_context.Platform().clock.Now())}; });
    }
    // The handler may have chosen the PC's clock.
    if (FollowsPC()) return;
    Attempt([&] { m_context.Children().mvDate->SetValue(ToDateTime(dtNow).date); });
    Attempt([&] { m_context.Children().dtpTimeSP->SetValue(ToDateTime(dtNow)); });
    Attempt([&] { ShowDaylightSaving(enableDst); });
}

void DateTimeExchange::WriteDateTimeToDevice() {
    const SetControlState& state = m_context.State();
    if (!state.IsRunning()) return;
    // Taken once: what the device gets belongs together, whatever happens while it is written.
    const CivilDate date = m_context.Children().mvDate->Value();
    const TimeOfDay time = m_context.Children().dtpTimeSP->Value().time;
    const bool daylightSaving = m_context.Children().chkUseDaylightSavings->Value() == 1;

    if (state.m_bShowDate) {
        WriteNumber(SetElement::Month, date.month);
        WriteNumber(SetElement::Day, date.day);
        WriteNumber(SetElement::Year, date.year);
    }
    // A control that shows no time leaves the daylight-saving flag alone too.
    if (!state.m_bShowTime) return;
    WriteNumber(SetElement::Hour, time.hour);
    WriteNumber(SetElement::Minute, time.minute);
    WriteNumber(SetElement::Second, state.m_bShowSeconds ? time.second : 0);
    if (state.m_bShowDST) WriteNumber(SetElement::DaylightSaving, daylightSaving ? 1 : 0);
}

void DateTimeExchange::WriteNumber(std::int16_t element, std::int32_t number) {
    // A call into the framework may have come back and bound the elements for reading again.
    if (m_context.State().m_bDataInUpload) return;
    Attempt([&] {
        const auto definition = m_framework.Definition(m_framework.Element(element));
        m_context.Life().CallOut([&] { definition->WriteValue(ToText(number), NoDisplay, UseCurrent); });
    });
}

void DateTimeExchange::StopTimer() noexcept {
    if (m_pTimer) Attempt([&] { m_pTimer->SetEnabled(false); });
}

}  // namespace kiv
