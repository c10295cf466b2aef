// What the parts of a control share: the world outside, the children, the state, and the only ways to reach them.
//
// The control may be destroyed by whatever runs while it calls out. So everything that is gone with it is reached
// through functions that look at the lifeline first and throw ControlGone; see Lifeline.h.
#pragma once

#include <memory>
#include <string_view>
#include <utility>

#include "common/Lifeline.h"
#include "platform/Container.h"
#include "platform/Geometry.h"

namespace kiv {

/// PlatformPart has a container; StatePart is derived from ControlState; EventsPart are the container's handlers.
template <typename PlatformPart, typename EventsPart, typename ChildrenPart, typename StatePart>
class ControlContext {
public:
    ControlContext(const PlatformPart& platform, EventsPart& events, std::unique_ptr<ChildrenPart> children)
        : m_platform(platform), m_events(events), m_pChildren(std::move(children)) {}
    ControlContext(const ControlContext&) = delete;
    ControlContext& operator=(const ControlContext&) = delete;

    StatePart& State() noexcept { return m_state; }
    const StatePart& State() const noexcept { return m_state; }
    const Lifeline& Life() const noexcept { return m_lifeline; }

    const PlatformPart& Platform() const {
        CheckAlive();
        return m_platform;
    }
    ChildrenPart& Children() const {
        CheckAlive();
        return *m_pChildren;
    }

    bool AmbientUserMode() const {
        return m_lifeline.CallOut([&] { return m_platform.container.UserMode(); });
    }
    /// The ambient UserMode at this moment, and the control not ended.
    bool IsUserModeNow() const { return !m_state.m_bTerminated && AmbientUserMode(); }

    Point ToContainerPosition(const Point& twips) const {
        return m_lifeline.CallOut([&] { return m_platform.container.ToContainerPosition(twips); });
    }

    /// Tells the container that a property really changed; silent while properties are loaded.
    void Announce(std::u16string_view key) {
        if (m_state.IsLoading()) return;
        m_lifeline.CallOut([&] { m_platform.container.PropertyChanged(key); });
    }

    /// Raises an event: raise is given the container's handlers.
    template <typename RaiseEvent>
    void Raise(RaiseEvent&& raise) {
        m_lifeline.CallOut([&] { raise(m_events); });
    }

    /// The control is being destroyed: from here on nothing outside is reached any more, and the children are gone.
    void End() noexcept {
        m_lifeline.Cut();
        m_pChildren.reset();
    }

protected:
    ~ControlContext() = default;

    void CheckAlive() const {
        if (m_lifeline.IsCut()) throw ControlGone{};
    }

private:
    PlatformPart m_platform;
    EventsPart& m_events;
    Lifeline m_lifeline;
    StatePart m_state;
    std::unique_ptr<ChildrenPart> m_pChildren;
};

}  // namespace kiv
