// What the parts of KivSetDateTime share; see ControlContext.
#pragma once

#include "common/ControlContext.h"
#include "platform/ControlPlatform.h"
#include "platform/Widgets.h"
#include "setcontrol/SetControlChildren.h"
#include "setcontrol/SetControlEvents.h"
#include "setcontrol/SetControlState.h"

namespace kiv {

class SetControlContext final
    : public ControlContext<ControlPlatform, SetControlEvents, SetControlChildren, SetControlState> {
public:
    SetControlContext(const ControlPlatform& platform, SetControlEvents& events)
        : ControlContext(platform, events, std::make_unique<SetControlChildren>(platform.surface)) {}

    Surface& ControlSurface() const { return Platform().surface; }
};

}  // namespace kiv
