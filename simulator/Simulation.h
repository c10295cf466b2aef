// The one simulated device of the process, and the framework over it. Belongs to the thread that uses it first: all
// objects of this server live in one apartment.
#pragma once

#include <cstdint>

#include "simulator/FrameworkSimulation.h"

namespace vexa {

class Simulation {
public:
    static Simulation& Instance();

    DeviceModel& Device() noexcept { return m_device; }
    FrameworkSimulation& Framework() noexcept { return m_framework; }

    /// Throws SimulatorError while failures were asked for. For the objects that are not part of FrameworkSimulation.
    static void CheckInjectedFailure() { Instance().m_framework.CheckInjectedFailure(); }

    /// Milliseconds between two looks at the device.
    std::uint32_t PollInterval() const noexcept { return m_pollInterval; }
    void SetPollInterval(std::uint32_t milliseconds) noexcept { m_pollInterval = milliseconds; }

    /// Device, settings and log as a new process has them; hidden controls live on.
    void Reset();

private:
    Simulation();

    static constexpr std::uint32_t DefaultPollInterval = 200;
    DeviceModel m_device;
    FrameworkSimulation m_framework;
    std::uint32_t m_pollInterval = DefaultPollInterval;
};

}  // namespace vexa
