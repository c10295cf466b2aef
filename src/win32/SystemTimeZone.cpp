#include "win32/SystemTimeZone.h"

#include <windows.h>

#include "comkit/Errors.h"

namespace kiv::win32 {

std::int32_t SystemTimeZone::DaylightBias() const {
    TIME_ZONE_INFORMATION zone{};
    const DWORD period = GetTimeZoneInformation(&zone);
    if (period == TIME_ZONE_ID_INVALID) throw comkit::ComError(comkit::LastErrorResult());
    // A zone without daylight saving has no date to begin it; its bias may hold anything.
    return zone.DaylightDate.wMonth == 0 ? 0 : zone.DaylightBias;
}

}  // namespace kiv::win32
