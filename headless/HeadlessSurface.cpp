#include "headless/HeadlessSurface.h"

#include <memory>

namespace kiv::headless {

namespace {

constexpr double StandardFontSize = 82500;
constexpr double LineHeight = 195;
constexpr double UnitWidth = 75;

}  // namespace

double FontScale(const FontPtr& font) {
    return font ? static_cast<double>(font->Traits().size) / StandardFontSize : 1.0;
}

Size MeasureTextIn(const FontPtr& font, std::u16string_view text) {
    const double scale = FontScale(font);
    return {static_cast<double>(text.size()) * UnitWidth * scale, LineHeight * scale};
}

HeadlessSurface::HeadlessSurface(const Clock& clock) : HeadlessWidget(*this, nullptr, u""), m_clock(clock) {}

void HeadlessSurface::SetSize(const Size& size) {
    ++setSizeCalls;
    m_state.bounds.width = size.width;
    m_state.bounds.height = size.height;
    // The hook may destroy the control, but not the surface.
    if (onSetSize) onSetSize();
}

void HeadlessSurface::Resize(const Size& size) {
    m_state.bounds.width = size.width;
    m_state.bounds.height = size.height;
    if (m_listener) m_listener->OnResize();
}

Size HeadlessSurface::MeasureText(std::u16string_view text) const {
    return MeasureTextIn(m_state.font, text);
}

const WidgetState* HeadlessSurface::StateOf(Widget& parent) const {
    if (&parent == this) return &State();
    if (const auto* frame = dynamic_cast<HeadlessFrame*>(&parent)) return &frame->State();
    if (const auto* box = dynamic_cast<HeadlessCheckBox*>(&parent)) return &box->State();
    if (const auto* calendar = dynamic_cast<HeadlessCalendar*>(&parent)) return &calendar->State();
    return &dynamic_cast<HeadlessTimeField&>(parent).State();
}

std::unique_ptr<Frame> HeadlessSurface::CreateFrame(Widget& parent, std::u16string_view name) {
    return std::make_unique<HeadlessFrame>(*this, StateOf(parent), name);
}

std::unique_ptr<CheckBox> HeadlessSurface::CreateCheckBox(Widget& parent, std::u16string_view name) {
    return std::make_unique<HeadlessCheckBox>(*this, StateOf(parent), name);
}

std::unique_ptr<Calendar> HeadlessSurface::CreateCalendar(Widget& parent, std::u16string_view name) {
    return std::make_unique<HeadlessCalendar>(*this, StateOf(parent), name);
}

std::unique_ptr<TimeField> HeadlessSurface::CreateTimeField(Widget& parent, std::u16string_view name) {
    return std::make_unique<HeadlessTimeField>(*this, StateOf(parent), name);
}

}  // namespace kiv::headless
