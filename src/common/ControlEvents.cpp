#include "common/ControlEvents.h"

namespace kiv {

void RaiseMouse(ControlEvents& events, MouseAction action, const MouseArgs& args, const Point& position) {
    std::int16_t button = args.button;
    std::int16_t shift = args.shift;
    auto x = static_cast<float>(position.x);
    auto y = static_cast<float>(position.y);
    switch (action) {
        case MouseAction::Down:
            return events.MouseDown(button, shift, x, y);
        case MouseAction::Move:
            return events.MouseMove(button, shift, x, y);
        case MouseAction::Up:
            return events.MouseUp(button, shift, x, y);
    }
}

}  // namespace kiv
