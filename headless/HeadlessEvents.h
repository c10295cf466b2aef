// Containers that handle no event.
#pragma once

#include <cstdint>

#include "setcontrol/SetControl.h"
#include "showcontrol/ShowControl.h"

namespace kiv::headless {

/// What both controls raise is ignored.
template <class Events>
class IgnoredInput : public Events {
    void Click() override {}
    void DblClick() override {}
    void KeyUp(std::int16_t& /*keyCode*/, std::int16_t& /*shift*/) override {}
    void KeyPress(std::int16_t& /*keyAscii*/) override {}
    void KeyDown(std::int16_t& /*keyCode*/, std::int16_t& /*shift*/) override {}
    void MouseDown(std::int16_t& /*b*/, std::int16_t& /*s*/, float& /*x*/, float& /*y*/) override {}
    void MouseMove(std::int16_t& /*b*/, std::int16_t& /*s*/, float& /*x*/, float& /*y*/) override {}
    void MouseUp(std::int16_t& /*b*/, std::int16_t& /*s*/, float& /*x*/, float& /*y*/) override {}
};

class NoSetEvents final : public IgnoredInput<SetControlEvents> {
    void GetDeviceDateTime(Value& /*dtNow*/, bool& /*bEnableDST*/) override {}
};

class NoShowEvents final : public IgnoredInput<ShowControlEvents> {
    void ValueChange() override {}
};

}  // namespace kiv::headless
