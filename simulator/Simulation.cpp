#include "simulator/Simulation.h"

#include <windows.h>

namespace vexa {

namespace {

std::chrono::milliseconds SystemUptime() {
    return std::chrono::milliseconds(GetTickCount64());
}

/// A device that nobody has set: years behind, and neither midnight nor noon, so that every part shows.
DeviceModel NewDevice() {
    using namespace std::chrono;
    return DeviceModel(&SystemUptime, local_days(2001y / July / 4) + 14h + 25min + 36s);
}

}  // namespace

Simulation::Simulation() : m_device(NewDevice()), m_framework(m_device) {}

Simulation& Simulation::Instance() {
    static Simulation instance;
    return instance;
}

void Simulation::Reset() {
    m_device = NewDevice();
    m_framework.SetFailNext(0);
    m_framework.Log().Clear();
    m_pollInterval = DefaultPollInterval;
}

}  // namespace vexa
