// Timers that tick through the message loop of the thread that made them. A tick may destroy its timer, or disable it;
// an exception that leaves a tick goes nowhere. A timer that the system cannot start stays disabled.
#pragma once

#include "platform/System.h"

namespace kiv::win32 {

class MessageTimerFactory final : public TimerFactory {
public:
    std::unique_ptr<Timer> CreateTimer(std::uint32_t milliseconds, std::function<void()> tick) override;
};

}  // namespace kiv::win32
