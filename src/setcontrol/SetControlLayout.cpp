#include "setcontrol/SetControlLayout.h"

#include <algorithm>
#include <cmath>

#include "common/ResourceStrings.h"
#include "setcontrol/SetControl.h"

namespace kiv {

namespace {

constexpr Twips Margin = 120;
constexpr Twips DoubleMargin = 240;
constexpr Twips ContentAllowance = 480;
constexpr Twips TimeTextAllowance = 30;
constexpr std::u16string_view TextHeightSample = u"09AaGgTtYyWw";

/// Whole twips, halves to even.
Twips Whole(Twips length) {
    return length - std::remainder(length, 1.0);
}

Twips RequiredHeight(const SetControlMeasures& m, bool dstShows) {
    Twips height = 3 * m.textHeight + 600;
    switch (m.mode) {
        case sdtSetDateTime:
            height = Whole(height + std::max(m.calendar.height, m.time.height));
            break;
        case sdtSetDateOnly:
            height = Whole(height + m.calendar.height);
            break;
        case sdtSetTimeOnly:
            height = Whole(height + m.time.height);
            break;
        default:
            break;
    }
    if (dstShows) height += m.textHeight + Margin;
    return std::max(m.control.height, height);
}

Twips RequiredWidth(const SetControlMeasures& m, Twips timeWidth) {
    Twips width = ContentAllowance;
    if (m.showTime) width = timeWidth + ContentAllowance;
    if (m.showDate) width += m.calendar.width;
    if (m.showDate && m.showTime) width += Margin;
    return std::max(m.control.width, width);
}

void SetBoundsIfDifferent(Widget& widget, const Rect& bounds) {
    if (widget.Bounds() != bounds) widget.SetBounds(bounds);
}

}  // namespace

SetControlPlaces ComputeSetControlLayout(const SetControlMeasures& m) {
    const bool dstShows = m.showTime && m.showDst;
    const Twips line = m.textHeight;
    SetControlPlaces p;

    const Twips height = RequiredHeight(m, dstShows);
    const Twips innerTop = line + Margin + line + Margin;
    const Twips dstTop = line + Margin;
    const Twips contentTop = dstShows ? dstTop + line + Margin : dstTop;
    const Twips timeHeight = std::max(m.time.height, MinTimeHeight);

    const Twips minTimeWidth = std::max(Whole(m.timeTextWidth + m.spinWidth + TimeTextAllowance), MinTimeWidth);
    const Twips timeWidth = std::max(m.time.width, minTimeWidth);
    const Twips width = RequiredWidth(m, timeWidth);
    const Twips innerWidth = width - DoubleMargin;
    const Twips timeLeft = m.showDate ? Margin + m.calendar.width + Margin : Margin;

    p.control = {width, height};
    p.fraOuter = {0, 0, width, height};
    p.chkUseSystem = {Margin, line + Margin, innerWidth, line};
    p.fraInner = {Margin, innerTop, innerWidth, height - innerTop - Margin};
    p.chkUseDaylightSavings = {Margin, dstTop, innerWidth - DoubleMargin, line};
    p.mvDate = {Margin, contentTop, m.calendar.width, m.calendar.height};
    p.dtpTimeSP = {timeLeft, contentTop, timeWidth, timeHeight};
    return p;
}

std::u16string TimeSampleText(bool showSeconds, bool is12Hour) {
    std::u16string text = u"  00:00";
    if (showSeconds) text += u":00";
    if (is12Hour) text += u" PM";
    return text;
}

std::u16string TimeFieldFormat(bool showSeconds, bool is12Hour) {
    std::u16string format = is12Hour ? u"hh:mm" : u"HH:mm";
    if (showSeconds) format += u":ss";
    if (is12Hour) format += u" tt";
    return format;
}

void SetControlLayout::ApplyMode() {
    SetControlState& state = m_context.State();
    state.m_bShowTime = state.m_lMode != sdtSetDateOnly;
    state.m_bShowDate = state.m_lMode != sdtSetTimeOnly;
    m_context.Children().mvDate->SetVisible(state.m_bShowDate);
    m_context.Children().dtpTimeSP->SetVisible(state.m_bShowTime);
    m_context.Children().chkUseDaylightSavings->SetVisible(state.m_bShowDST && state.m_bShowTime);

    const auto forMode = [&](KivDateTimeResID first) {
        return GetResString(static_cast<std::int16_t>(first + state.m_lMode));
    };
    m_context.Children().chkUseSystem->SetCaption(forMode(residUseSystem));
    m_context.Children().fraInner->SetCaption(forMode(residCustom));
    m_context.Children().chkUseDaylightSavings->SetCaption(GetResString(residUseDaylightSavings));
    Resize();
}

void SetControlLayout::ApplyTimeFormat() {
    const SetControlState& state = m_context.State();
    m_context.Children().dtpTimeSP->SetFormat(TimeFieldFormat(state.m_bShowSeconds, state.Is12Hour()));
    Resize();
}

void SetControlLayout::ApplyFont() {
    const FontPtr font = m_context.ControlSurface().GetFont();
    m_context.Children().fraOuter->SetFont(font);
    m_context.Children().fraInner->SetFont(font);
    m_context.Children().chkUseSystem->SetFont(font);
    m_context.Children().chkUseDaylightSavings->SetFont(font);
    m_context.Children().mvDate->SetFont(font);
    m_context.Children().dtpTimeSP->SetFont(font);
    Resize();
}

void SetControlLayout::Resize() {
    SetControlState& state = m_context.State();
    if (state.m_bInResize || state.IsLoading() || !state.m_bLoaded) return;
    const ResizeScope resizing(state);
    // Pixels: as many more as the window's resolution is higher now than the one before.
    state.m_lScrollBarWidth = m_context.ControlSurface().ScrollBarWidthPixels();
    Place(ComputeSetControlLayout(Measure()));
}

SetControlMeasures SetControlLayout::Measure() const {
    const SetControlState& state = m_context.State();
    const Surface& surface = m_context.ControlSurface();
    const Rect control = surface.Bounds();
    const Rect calendar = m_context.Children().mvDate->Bounds();
    const Rect time = m_context.Children().dtpTimeSP->Bounds();

    SetControlMeasures m;
    m.mode = state.m_lMode;
    m.showDate = state.m_bShowDate;
    m.showTime = state.m_bShowTime;
    m.showDst = state.m_bShowDST;
    m.control = {control.width, control.height};
    m.calendar = {calendar.width, calendar.height};
    m.time = {time.width, time.height};
    m.textHeight = Whole(surface.MeasureText(TextHeightSample).height);
    m.timeTextWidth = Whole(surface.MeasureText(TimeSampleText(state.m_bShowSeconds, state.Is12Hour())).width);
    m.spinWidth = surface.TwipsPerPixel() * state.m_lScrollBarWidth;
    return m;
}

void SetControlLayout::Place(const SetControlPlaces& places) {
    SetBoundsIfDifferent(*m_context.Children().fraOuter, places.fraOuter);
    SetBoundsIfDifferent(*m_context.Children().chkUseSystem, places.chkUseSystem);
    SetBoundsIfDifferent(*m_context.Children().fraInner, places.fraInner);
    SetBoundsIfDifferent(*m_context.Children().chkUseDaylightSavings, places.chkUseDaylightSavings);
    SetBoundsIfDifferent(*m_context.Children().mvDate, places.mvDate);
    SetBoundsIfDifferent(*m_context.Children().dtpTimeSP, places.dtpTimeSP);

    Surface& surface = m_context.ControlSurface();
    const Rect current = surface.Bounds();
    if (Size{current.width, current.height} == places.control) return;
    m_context.Life().CallOut([&] { surface.SetSize(places.control); });
}

}  // namespace kiv
