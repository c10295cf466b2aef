#include "setcontrol/EventForwarding.h"

namespace kiv {

bool EventForwarding::IsCheckBox(const Widget& source) const {
    const SetControlChildren& children = m_context.Children();
    return &source == children.chkUseSystem.get() || &source == children.chkUseDaylightSavings.get();
}

bool EventForwarding::IsFrame(const Widget& source) const {
    const SetControlChildren& children = m_context.Children();
    return &source == children.fraOuter.get() || &source == children.fraInner.get();
}

void EventForwarding::OnClick(const Widget& source) {
    const SetControlChildren& children = m_context.Children();
    if (&source == children.chkUseSystem.get()) return m_properties.OnUseSystemClick();
    if (&source == children.chkUseDaylightSavings.get() && !m_context.State().IsLoading()) {
        m_context.State().m_edited.dst = true;
    }
    if (&source == children.mvDate.get()) m_exchange.MarkDateEdited();
    m_context.Raise([](SetControlEvents& events) { events.Click(); });
}

void EventForwarding::OnDblClick(const Widget& source) {
    if (IsCheckBox(source)) return;
    m_context.Raise([](SetControlEvents& events) { events.DblClick(); });
}

void EventForwarding::OnKeyDown(const Widget& source, std::int16_t& keyCode, std::int16_t shift) {
    if (IsFrame(source)) return;
    m_context.Raise([&](SetControlEvents& events) { events.KeyDown(keyCode, shift); });
}

void EventForwarding::OnKeyUp(const Widget& source, std::int16_t& keyCode, std::int16_t shift) {
    if (IsFrame(source)) return;
    m_context.Raise([&](SetControlEvents& events) { events.KeyUp(keyCode, shift); });
}

void EventForwarding::OnKeyPress(const Widget& source, std::int16_t& keyAscii) {
    if (IsFrame(source)) return;
    m_context.Raise([&](SetControlEvents& events) { events.KeyPress(keyAscii); });
}

void EventForwarding::OnMouse(const Widget& source, MouseAction action, const MouseArgs& args) {
    const Point origin = Origin(source);
    const Point position = m_context.ToContainerPosition({origin.x + args.position.x, origin.y + args.position.y});
    m_context.Raise([&](SetControlEvents& events) { RaiseMouse(events, action, args, position); });
}

void EventForwarding::OnChange(const Widget& source) {
    if (&source != m_context.Children().dtpTimeSP.get()) return;
    if (!m_properties.UsePCDateTime()) m_context.State().m_edited.time = true;
}

Point EventForwarding::Origin(const Widget& source) const {
    if (&source == &m_context.ControlSurface()) return {};
    const SetControlChildren& children = m_context.Children();
    const Rect own = source.Bounds();
    Point origin{own.left, own.top};
    const auto add = [&](const Widget& parent) {
        const Rect bounds = parent.Bounds();
        origin.x += bounds.left;
        origin.y += bounds.top;
    };
    if (&source == children.fraOuter.get()) return origin;
    add(*children.fraOuter);
    if (&source == children.fraInner.get() || &source == children.chkUseSystem.get()) return origin;
    add(*children.fraInner);
    return origin;
}

}  // namespace kiv
