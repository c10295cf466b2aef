// The events of KivSetDateTime, as the control raises them. Every argument may be changed by the handler.
#pragma once

#include <cstdint>

#include "platform/Value.h"

namespace kiv {

class SetControlEvents {
public:
    virtual ~SetControlEvents() = default;
    virtual void Click() = 0;
    virtual void DblClick() = 0;
    virtual void KeyUp(std::int16_t& keyCode, std::int16_t& shift) = 0;
    virtual void KeyPress(std::int16_t& keyAscii) = 0;
    virtual void KeyDown(std::int16_t& keyCode, std::int16_t& shift) = 0;
    /// x and y are in the container's position units.
    virtual void MouseDown(std::int16_t& button, std::int16_t& shift, float& x, float& y) = 0;
    virtual void MouseMove(std::int16_t& button, std::int16_t& shift, float& x, float& y) = 0;
    virtual void MouseUp(std::int16_t& button, std::int16_t& shift, float& x, float& y) = 0;
    /// Asks the host for the device's date, time and daylight-saving flag. Throws when the host's handler failed. Text
    /// that the system reads as a date arrives as an OleDate.
    virtual void GetDeviceDateTime(Value& dtNow, bool& bEnableDST) = 0;
};

}  // namespace kiv
