#include "headless/HeadlessLabelArea.h"

#include "headless/HeadlessSurface.h"
#include "platform/SameText.h"

namespace kiv::headless {

bool HeadlessLabel::SetCaption(std::u16string_view caption) {
    if (SameText(m_caption, caption)) return false;
    m_caption = caption;
    ++m_state.repaints;
    return true;
}

void HeadlessLabelArea::SetSize(const Size& size) {
    ++setSizeCalls;
    m_state.bounds.width = size.width;
    m_state.bounds.height = size.height;
    // The hook may destroy the control, but not the area.
    if (onSetSize) onSetSize();
}

Size HeadlessLabelArea::MeasureText(std::u16string_view text) const {
    return MeasureTextIn(m_state.font, text);
}

std::unique_ptr<Label> HeadlessLabelArea::CreateLabel(std::u16string_view name) {
    return std::make_unique<HeadlessLabel>(*this, &m_state, name);
}

void HeadlessLabelArea::Resize(const Size& size) {
    m_state.bounds.width = size.width;
    m_state.bounds.height = size.height;
    if (m_listener) m_listener->OnResize();
}

}  // namespace kiv::headless
