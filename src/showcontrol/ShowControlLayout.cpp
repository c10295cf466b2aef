#include "showcontrol/ShowControlLayout.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace kiv {

namespace {

constexpr std::int16_t BorderAllowance = 60;
constexpr Twips WidthAllowance = 60;

/// Takes the width that is missing from the value first.
void Shrink(const ShowControlMeasures& m, Twips missing, Twips& caption, Twips& value) {
    if (!m.lockValue) {
        const Twips taken = std::clamp<Twips>(value - m.minimum.valueWidth, 0, missing);
        value -= taken;
        missing -= taken;
    }
    if (!m.lockCaption) caption -= std::clamp<Twips>(caption - m.minimum.captionWidth, 0, missing);
}

/// Gives the width that is left over: to the value up to its minimum, to the caption up to its preferred width (all of
/// it while the value is locked), the rest to the value.
void Grow(const ShowControlMeasures& m, Twips left, Twips& caption, Twips& value) {
    if (!m.lockValue) {
        const Twips given = std::clamp<Twips>(m.minimum.valueWidth - value, 0, left);
        value += given;
        left -= given;
    }
    if (!m.lockCaption) {
        const Twips given = m.lockValue ? left : std::clamp<Twips>(PreferredLabelWidth - caption, 0, left);
        caption += given;
        left -= given;
    }
    if (!m.lockValue) value += left;
}

Twips CommonHeight(const ShowControlMeasures& m) {
    auto height = std::max<Twips>(
        {m.control.height, static_cast<Twips>(m.minimum.captionHeight), static_cast<Twips>(m.minimum.valueHeight)});
    if (m.sizeSetExplicitly) height = std::max({height, m.caption.height, m.value.height});
    return height;
}

void SetBoundsIfDifferent(Widget& widget, const Rect& bounds) {
    if (widget.Bounds() != bounds) widget.SetBounds(bounds);
}

}  // namespace

std::int16_t ToShortTwips(Twips length) noexcept {
    constexpr Twips Max = std::numeric_limits<std::int16_t>::max();
    constexpr Twips Min = std::numeric_limits<std::int16_t>::min();
    return static_cast<std::int16_t>(std::lrint(std::clamp(length, Min, Max)));
}

ShowControlPlaces ComputeShowControlLayout(const ShowControlMeasures& m) {
    Twips caption = m.caption.width;
    Twips value = m.value.width;
    Twips width = caption + value;
    if (!m.sizeSetExplicitly) {
        const Twips minimum = m.minimum.valueWidth + m.minimum.captionWidth + WidthAllowance;
        const Twips total = std::max(m.control.width, minimum);
        // What the previous pass made of both labels together is what the difference is taken from: nothing is then
        // lost or added where a lock or a minimum kept that pass from using all of its width.
        const Twips difference = total - width;
        if (difference < 0) Shrink(m, -difference, caption, value);
        if (difference > 0) Grow(m, difference, caption, value);
        width = std::max(total, caption + value);
    }
    const Twips height = CommonHeight(m);
    return {{width, height}, {0, 0, caption, height}, {caption, 0, value, height}};
}

ShowMinimumSizes ShowControlLayout::MinimumSizes() {
    m_display.CatchUp();
    const LabelArea& area = m_context.Area();
    const ShowControlLabels& labels = m_context.Children();
    const Size caption = area.MeasureText(labels.lblCaption->Caption());
    const Size value = area.MeasureText(labels.lblValue->Caption());
    const Twips border = labels.lblValue->HasSunkenBorder() ? BorderAllowance : 0;
    ShowMinimumSizes minimum;
    minimum.captionHeight = std::max(MinLabelHeight, ToShortTwips(caption.height));
    minimum.valueHeight = std::max(MinLabelHeight, ToShortTwips(value.height + border));
    minimum.valueWidth = std::max(MinValueWidth, ToShortTwips(value.width + border));
    return minimum;
}

void ShowControlLayout::Resize() {
    ShowControlState& state = m_context.State();
    if (state.m_bInResize || state.IsLoading()) return;
    const ResizeScope resizing(state);
    Place(ComputeShowControlLayout(Measure(MinimumSizes())));
}

void ShowControlLayout::EndLoad() {
    ShowControlState& state = m_context.State();
    state.m_bSizeSetExplicitly = true;
    if (state.m_bInResize) return;
    const ResizeScope resizing(state);
    // Not measured anew: the sizes were held to their minimums when they were loaded, and the font that was loaded
    // after them counts from the next resize on.
    Place(ComputeShowControlLayout(Measure(ShowMinimumSizes{})));
}

void ShowControlLayout::SetLabelExtent(Label& label, Twips Rect::*extent, std::int16_t twips, std::int16_t minimum,
                                       std::u16string_view key) {
    Rect bounds = label.Bounds();
    const std::int16_t before = ToShortTwips(bounds.*extent);
    const std::int16_t wanted = std::max(twips, minimum);
    if (wanted == before) return;
    bounds.*extent = wanted;
    label.SetBounds(bounds);
    m_context.State().m_bSizeSetExplicitly = true;
    Resize();
    // The pass may have undone it: both labels are as high as the control.
    if (ToShortTwips(label.Bounds().*extent) != before) m_context.Announce(key);
}

ShowControlMeasures ShowControlLayout::Measure(const ShowMinimumSizes& minimum) {
    ShowControlState& state = m_context.State();
    const Rect control = m_context.Area().Bounds();
    const Rect caption = m_context.Children().lblCaption->Bounds();
    const Rect value = m_context.Children().lblValue->Bounds();
    return {minimum,
            {control.width, control.height},
            {caption.width, caption.height},
            {value.width, value.height},
            state.m_bLockCaptionWidth,
            state.m_bLockValueWidth,
            std::exchange(state.m_bSizeSetExplicitly, false)};
}

void ShowControlLayout::Place(const ShowControlPlaces& places) {
    SetBoundsIfDifferent(*m_context.Children().lblCaption, places.lblCaption);
    SetBoundsIfDifferent(*m_context.Children().lblValue, places.lblValue);
    LabelArea& area = m_context.Area();
    const Rect current = area.Bounds();
    if (Size{current.width, current.height} == places.control) return;
    m_context.Life().CallOut([&] { area.SetSize(places.control); });
}

}  // namespace kiv
