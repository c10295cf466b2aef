// The events of KivSetDateTime, as the control raises them. Every argument may be changed by the handler.
#pragma once

#include "common/ControlEvents.h"
#include "platform/Value.h"

namespace kiv {

class SetControlEvents : public ControlEvents {
public:
    /// Asks the host for the device's date, time and daylight-saving flag. Throws when the host's handler failed. Text
    /// that the system reads as a date arrives as an OleDate.
    virtual void GetDeviceDateTime(Value& dtNow, bool& bEnableDST) = 0;
};

}  // namespace kiv
