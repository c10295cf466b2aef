#include "win32/SystemClock.h"

#include "win32/SystemTimes.h"

namespace kiv::win32 {

DateTime SystemClock::Now() const {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return DateTimeOf(now);
}

}  // namespace kiv::win32
