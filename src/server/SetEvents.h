// The set control's events, handed on to the container's sinks.
#pragma once

#include "server/EventSource.h"
#include "setcontrol/SetControlEvents.h"

namespace kiv::server {

class SetEvents final : public SetControlEvents {
public:
    explicit SetEvents(EventSource& events) noexcept : m_events(events) {}

    void Click() override;
    void DblClick() override;
    void KeyUp(std::int16_t& keyCode, std::int16_t& shift) override;
    void KeyPress(std::int16_t& keyAscii) override;
    void KeyDown(std::int16_t& keyCode, std::int16_t& shift) override;
    void MouseDown(std::int16_t& button, std::int16_t& shift, float& x, float& y) override;
    void MouseMove(std::int16_t& button, std::int16_t& shift, float& x, float& y) override;
    void MouseUp(std::int16_t& button, std::int16_t& shift, float& x, float& y) override;
    void GetDeviceDateTime(Value& dtNow, bool& bEnableDST) override;

private:
    void FireKey(DISPID event, std::int16_t& keyCode, std::int16_t& shift);
    void FireMouse(DISPID event, std::int16_t& button, std::int16_t& shift, float& x, float& y);

    EventSource& m_events;
};

}  // namespace kiv::server
