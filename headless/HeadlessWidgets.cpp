#include "headless/HeadlessWidgets.h"

#include <cstdlib>

#include "headless/HeadlessSurface.h"
#include "platform/HostError.h"
#include "platform/Labels.h"

namespace kiv::headless {

WidgetState::WidgetState(HeadlessRoot& itsRoot, const WidgetState* itsParent, std::u16string_view itsName, Widget& self)
    : root(itsRoot), parent(itsParent), name(itsName) {
    if (parent) root.m_children.emplace(name, HeadlessRoot::Entry{&self, this});
}

WidgetState::~WidgetState() {
    if (!parent) return;
    root.m_children.erase(name);
    for (const auto& [otherName, other] : root.m_children) {
        if (other.state->parent == this) std::abort();  // a child that outlives what contains it
    }
}

bool WidgetState::IsReachable() const {
    for (const WidgetState* widget = this; widget; widget = widget->parent) {
        if (!widget->enabled || !widget->visible) return false;
    }
    return root.Listener() != nullptr;
}

template <typename Interface>
bool HeadlessWidget<Interface>::UserClicks() {
    if (!m_state.IsReachable()) return false;
    m_state.root.Listener()->OnClick(*this);
    return true;
}

template <typename Interface>
bool HeadlessWidget<Interface>::UserDblClicks() {
    if (!m_state.IsReachable()) return false;
    m_state.root.Listener()->OnDblClick(*this);
    return true;
}

template <typename Interface>
bool HeadlessWidget<Interface>::UserMoves(MouseAction action, const MouseArgs& args) {
    if (!m_state.IsReachable()) return false;
    m_state.root.Listener()->OnMouse(*this, action, args);
    return true;
}

template <typename Interface>
std::int16_t HeadlessWidget<Interface>::UserPressesKey(std::int16_t keyCode, std::int16_t shift) {
    if (m_state.IsReachable()) m_state.root.Listener()->OnKeyDown(*this, keyCode, shift);
    return keyCode;
}

template <typename Interface>
std::int16_t HeadlessWidget<Interface>::UserReleasesKey(std::int16_t keyCode, std::int16_t shift) {
    if (m_state.IsReachable()) m_state.root.Listener()->OnKeyUp(*this, keyCode, shift);
    return keyCode;
}

template <typename Interface>
std::int16_t HeadlessWidget<Interface>::UserTypes(std::int16_t keyAscii) {
    if (m_state.IsReachable()) m_state.root.Listener()->OnKeyPress(*this, keyAscii);
    return keyAscii;
}

template class HeadlessWidget<Frame>;
template class HeadlessWidget<CheckBox>;
template class HeadlessWidget<Calendar>;
template class HeadlessWidget<TimeField>;
template class HeadlessWidget<Surface>;
template class HeadlessWidget<Label>;
template class HeadlessWidget<LabelArea>;

bool HeadlessCheckBox::UserToggles() {
    if (!m_state.IsReachable()) return false;
    m_value = m_value == 0 ? 1 : 0;
    return UserClicks();
}

HeadlessCalendar::HeadlessCalendar(HeadlessSurface& surface, const WidgetState* parent, std::u16string_view name)
    : HeadlessChild(surface, parent, name), m_value(surface.PcClock().Now().date) {
    FitToFont();
}

void HeadlessCalendar::SetBounds(const Rect& bounds) {
    m_state.bounds.left = bounds.left;
    m_state.bounds.top = bounds.top;
}

void HeadlessCalendar::SetFont(const FontPtr& font) {
    HeadlessWidget::SetFont(font);
    FitToFont();
}

void HeadlessCalendar::FitToFont() {
    const double scale = FontScale(m_state.font);
    m_state.bounds.width = 2700 * scale;
    m_state.bounds.height = 2370 * scale;
}

void HeadlessCalendar::SetValue(const CivilDate& date) {
    if (!IsValidDate(date) || date.year < MinYear || date.year > MaxYear) {
        throw HostError(ErrorNumber::InvalidPropertyValue);
    }
    m_value = date;
}

void HeadlessCalendar::SetStartOfWeek(int day) {
    if (day < 1 || day > 7) throw HostError(ErrorNumber::InvalidPropertyValue);
    m_startOfWeek = day;
}

bool HeadlessCalendar::UserPicks(const CivilDate& date) {
    if (!m_state.IsReachable()) return false;
    SetValue(date);
    return UserClicks();
}

HeadlessTimeField::HeadlessTimeField(HeadlessSurface& surface, const WidgetState* parent, std::u16string_view name)
    : HeadlessChild(surface, parent, name), m_value(surface.PcClock().Now()) {}

void HeadlessTimeField::SetValue(const DateTime& value) {
    if (!IsValidDate(value.date) || !IsValidTime(value.time) || value.date.year < Calendar::MinYear) {
        throw HostError(ErrorNumber::InvalidPropertyValue);
    }
    m_value = value;
}

bool HeadlessTimeField::UserEnters(const TimeOfDay& time) {
    if (!m_state.IsReachable()) return false;
    SetValue({m_value.date, time});
    m_state.root.Listener()->OnChange(*this);
    return true;
}

}  // namespace kiv::headless
