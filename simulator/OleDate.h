// The device's clock as an automation date: days since 30 December 1899; the time of day counts forwards from midnight
// for negative values too.
#pragma once

#include "simulator/DeviceModel.h"

namespace vexa {

double ToOleDate(DeviceTime time) noexcept;

/// Rounds to the nearest second. Throws SimulatorError(BadValue) for what is no date in the years 100 to 9999.
DeviceTime FromOleDate(double days);

}  // namespace vexa
