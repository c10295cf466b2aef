// The mouse and key events that both controls raise. Every argument may be changed by the handler.
#pragma once

#include <cstdint>

#include "platform/Geometry.h"
#include "platform/Widgets.h"

namespace kiv {

class ControlEvents {
public:
    virtual ~ControlEvents() = default;
    virtual void Click() = 0;
    virtual void DblClick() = 0;
    virtual void KeyUp(std::int16_t& keyCode, std::int16_t& shift) = 0;
    virtual void KeyPress(std::int16_t& keyAscii) = 0;
    virtual void KeyDown(std::int16_t& keyCode, std::int16_t& shift) = 0;
    /// x and y are in the container's position units.
    virtual void MouseDown(std::int16_t& button, std::int16_t& shift, float& x, float& y) = 0;
    virtual void MouseMove(std::int16_t& button, std::int16_t& shift, float& x, float& y) = 0;
    virtual void MouseUp(std::int16_t& button, std::int16_t& shift, float& x, float& y) = 0;
};

/// Raises the event of a mouse action. position is in the container's position units and stands for that of args.
void RaiseMouse(ControlEvents& events, MouseAction action, const MouseArgs& args, const Point& position);

}  // namespace kiv
