// The PC as a test sets it: its clock, its time zone, its timers.
#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "platform/HostError.h"
#include "platform/System.h"

namespace kiv::headless {

class HeadlessClock final : public Clock {
public:
    DateTime Now() const override { return now; }
    DateTime now{{2001, 7, 4}, {9, 30, 15}};
};

class HeadlessTimeZone final : public TimeZone {
public:
    std::int32_t DaylightBias() const override {
        if (fails) throw HostError(ErrorNumber::ObjectNotSet);
        return daylightBias;
    }
    std::int32_t daylightBias = -60;
    bool fails = false;
};

/// Timers never tick by themselves.
class HeadlessTimers final : public TimerFactory {
public:
    std::unique_ptr<Timer> CreateTimer(std::uint32_t milliseconds, std::function<void()> tick) override;

    /// One tick of every enabled timer. A tick may destroy timers, its own included.
    void Fire();
    std::size_t EnabledCount() const;
    std::size_t Count() const noexcept { return m_timers.size(); }

private:
    class HeadlessTimer;
    std::vector<HeadlessTimer*> m_timers;
};

}  // namespace kiv::headless
