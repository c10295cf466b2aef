// The set control's events, handed on to the container's sinks.
#pragma once

#include "server/FiredEvents.h"
#include "setcontrol/SetControlEvents.h"

namespace kiv::server {

class SetEvents final : public FiredEvents<SetControlEvents> {
public:
    explicit SetEvents(EventSource& events) noexcept;

    void GetDeviceDateTime(Value& dtNow, bool& bEnableDST) override;
};

}  // namespace kiv::server
