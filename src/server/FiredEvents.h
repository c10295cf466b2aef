// The mouse and key events of a control, handed on to the container's sinks under the control's own numbers.
#pragma once

#include <array>
#include <cstdint>

#include "common/ControlEvents.h"
#include "server/EventSource.h"

namespace kiv::server {

/// Dispatch IDs of the events that every control has.
struct EventNumbers {
    DISPID click;
    DISPID dblClick;
    DISPID keyUp;
    DISPID keyPress;
    DISPID keyDown;
    DISPID mouseDown;
    DISPID mouseMove;
    DISPID mouseUp;
};

/// Events is the control's own event interface; a class derived from this one fires what it has beyond ControlEvents.
template <class Events>
class FiredEvents : public Events {
public:
    FiredEvents(EventSource& events, const EventNumbers& numbers) noexcept : m_events(events), m_numbers(numbers) {}

    void Click() final { Source().Fire(m_numbers.click, {}); }
    void DblClick() final { Source().Fire(m_numbers.dblClick, {}); }
    void KeyUp(std::int16_t& keyCode, std::int16_t& shift) final { FireKey(m_numbers.keyUp, keyCode, shift); }
    void KeyPress(std::int16_t& keyAscii) final {
        const std::array args{ByRef(keyAscii)};
        Source().Fire(m_numbers.keyPress, args);
    }
    void KeyDown(std::int16_t& keyCode, std::int16_t& shift) final { FireKey(m_numbers.keyDown, keyCode, shift); }
    void MouseDown(std::int16_t& button, std::int16_t& shift, float& x, float& y) final {
        FireMouse(m_numbers.mouseDown, button, shift, x, y);
    }
    void MouseMove(std::int16_t& button, std::int16_t& shift, float& x, float& y) final {
        FireMouse(m_numbers.mouseMove, button, shift, x, y);
    }
    void MouseUp(std::int16_t& button, std::int16_t& shift, float& x, float& y) final {
        FireMouse(m_numbers.mouseUp, button, shift, x, y);
    }

protected:
    EventSource& Source() const noexcept { return m_events; }

private:
    void FireKey(DISPID event, std::int16_t& keyCode, std::int16_t& shift) {
        const std::array args{ByRef(keyCode), ByRef(shift)};
        Source().Fire(event, args);
    }
    void FireMouse(DISPID event, std::int16_t& button, std::int16_t& shift, float& x, float& y) {
        const std::array args{ByRef(button), ByRef(shift), ByRef(x), ByRef(y)};
        Source().Fire(event, args);
    }

    EventSource& m_events;
    const EventNumbers& m_numbers;
};

}  // namespace kiv::server
