// What the parts of KivSetDateTime share: the world outside, the children, the state, and the only ways to reach them.
//
// The control may be destroyed by whatever runs while it calls out. So everything that is gone with it is reached
// through functions that look at the lifeline first and throw ControlGone; see Lifeline.h.
#pragma once

#include <memory>
#include <string_view>

#include "common/Lifeline.h"
#include "platform/Container.h"
#include "platform/ControlPlatform.h"
#include "platform/Widgets.h"
#include "setcontrol/SetControlChildren.h"
#include "setcontrol/SetControlEvents.h"
#include "setcontrol/SetControlState.h"

namespace kiv {

class SetControlContext {
public:
    SetControlContext(const ControlPlatform& platform, SetControlEvents& events);

    SetControlState& State() noexcept { return m_state; }
    const SetControlState& State() const noexcept { return m_state; }
    const Lifeline& Life() const noexcept { return m_lifeline; }

    const ControlPlatform& Platform() const;
    Surface& ControlSurface() const;
    SetControlChildren& Children() const;

    /// The ambient UserMode at this moment, and the control not ended.
    bool IsUserModeNow() const;
    bool AmbientUserMode() const;

    /// Tells the container that a property really changed; silent while properties are loaded.
    void Announce(std::u16string_view key);

    /// Raises an event: raise is given the container's handlers.
    template <typename RaiseEvent>
    void Raise(RaiseEvent&& raise) {
        m_lifeline.CallOut([&] { raise(m_events); });
    }

    /// The control is being destroyed: from here on nothing outside is reached any more, and the children are gone.
    void End() noexcept;

private:
    void CheckAlive() const;

    ControlPlatform m_platform;
    SetControlEvents& m_events;
    Lifeline m_lifeline;
    SetControlState m_state;
    std::unique_ptr<SetControlChildren> m_pChildren;
};

}  // namespace kiv
