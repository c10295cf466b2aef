#include "setcontrol/SetControlContext.h"

namespace kiv {

SetControlContext::SetControlContext(const ControlPlatform& platform, SetControlEvents& events)
    : m_platform(platform), m_events(events), m_pChildren(std::make_unique<SetControlChildren>(platform.surface)) {}

void SetControlContext::CheckAlive() const {
    if (m_lifeline.IsCut()) throw ControlGone{};
}

const ControlPlatform& SetControlContext::Platform() const {
    CheckAlive();
    return m_platform;
}

Surface& SetControlContext::ControlSurface() const {
    CheckAlive();
    return m_platform.surface;
}

SetControlChildren& SetControlContext::Children() const {
    CheckAlive();
    return *m_pChildren;
}

bool SetControlContext::AmbientUserMode() const {
    return m_lifeline.CallOut([&] { return m_platform.container.UserMode(); });
}

bool SetControlContext::IsUserModeNow() const {
    return !m_state.m_bTerminated && AmbientUserMode();
}

void SetControlContext::Announce(std::u16string_view key) {
    if (m_state.IsLoading()) return;
    m_lifeline.CallOut([&] { m_platform.container.PropertyChanged(key); });
}

void SetControlContext::End() noexcept {
    m_lifeline.Cut();
    m_pChildren.reset();
}

}  // namespace kiv
