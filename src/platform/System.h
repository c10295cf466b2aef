// What the controls ask of the PC itself.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "platform/DateTime.h"

namespace kiv {

class Clock {
public:
    virtual ~Clock() = default;
    /// The PC's present local date and time, in one reading.
    virtual DateTime Now() const = 0;
};

class TimeZone {
public:
    virtual ~TimeZone() = default;
    /// Minutes that daylight saving time adds to the zone's bias, usually -60; 0 where the zone has none. May throw.
    virtual std::int32_t DaylightBias() const = 0;
};

/// Ticks through the message loop of the thread that made it. New timers are disabled.
class Timer {
public:
    virtual ~Timer() = default;
    virtual bool IsEnabled() const = 0;
    virtual void SetEnabled(bool enabled) = 0;
};

class TimerFactory {
public:
    virtual ~TimerFactory() = default;
    /// tick may destroy the timer.
    virtual std::unique_ptr<Timer> CreateTimer(std::uint32_t milliseconds, std::function<void()> tick) = 0;
};

}  // namespace kiv
