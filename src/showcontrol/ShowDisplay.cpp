#include "showcontrol/ShowDisplay.h"

#include <string_view>
#include <utility>

#include "platform/System.h"

namespace kiv {

void ShowDisplay::UpdateDisplay() {
    if (m_context.State().IsLoading()) {
        m_bPending = true;
        return;
    }
    m_bPending = false;
    if (ShowText()) m_context.Raise([](ShowControlEvents& events) { events.ValueChange(); });
}

void ShowDisplay::CatchUp() {
    if (std::exchange(m_bPending, false) && ShowText()) m_bChangedInLoad = true;
}

void ShowDisplay::EndLoad() {
    if (m_context.State().IsLoading()) return;
    CatchUp();
    if (!std::exchange(m_bChangedInLoad, false)) return;
    m_context.Raise([](ShowControlEvents& events) { events.ValueChange(); });
}

std::u16string ShowDisplay::Value() {
    CatchUp();
    return m_context.Children().lblValue->Caption();
}

bool ShowDisplay::ShowText() {
    if (!m_context.AmbientUserMode()) LoadPresentDateTime();
    ShowControlState& state = m_context.State();
    Label& label = *m_context.Children().lblValue;
    Content content{state.m_lMode, label.HasSunkenBorder(), state.m_numbers};
    // Devices send the same value again and again.
    if (m_bConfigured && m_shown == content) return false;
    m_shown.reset();
    if (!m_bConfigured) Configure();
    ClampDateTime(state.m_numbers, state.m_bShowSeconds);
    content.numbers = state.m_numbers;
    const std::u16string_view text = m_formatter.FormatCaption(content.mode, content.sunken, content.numbers);
    // Before the label has it: to show it may call the container, which may have something else shown.
    m_shown = content;
    try {
        return label.SetCaption(text);
    } catch (...) {
        m_shown.reset();
        throw;
    }
}

void ShowDisplay::Configure() {
    const ShowControlState& state = m_context.State();
    DisplaySettings settings;
    settings.dayFirst = state.m_lDateFormat == state.m_lDataDMYValue;
    settings.twelveHourClock = state.m_lTimeFormat == state.m_lData12HrValue;
    settings.dateDelimiter = state.m_strDateDelimiter.front();
    settings.timeDelimiter = state.m_strTimeDelimiter.front();
    settings.amPmFormat = state.m_strAMPMFormat;
    settings.showCentury = state.m_bShowCentury;
    settings.showLeadingZeros = state.m_bShowLeadingZeros;
    settings.showLongDay = state.m_bShowLongDay;
    settings.showSeconds = state.m_bShowSeconds;
    settings.upperCase = state.m_bUpperCase;
    m_formatter.Configure(settings, m_context.Platform().names);
    m_bConfigured = true;
}

void ShowDisplay::LoadPresentDateTime() {
    const DateTime now = m_context.Platform().clock.Now();
    m_context.State().m_numbers = {now.time.hour,  now.time.minute, now.time.second,
                                   now.date.month, now.date.day,    now.date.year};
}

}  // namespace kiv
