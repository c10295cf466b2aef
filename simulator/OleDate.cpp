#include "simulator/OleDate.h"

#include <cmath>

namespace vexa {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::local_days ZeroDate = std::chrono::local_days(1899y / std::chrono::December / 30);
constexpr double SecondsOfDay = 86400.0;

// What lies outside is no date in four-digit years; inside, whole seconds are exact in a double.
constexpr double LowestDays = -657435.0;
constexpr double HighestDays = 2958466.0;

}  // namespace

double ToOleDate(DeviceTime time) noexcept {
    const auto midnight = std::chrono::floor<std::chrono::days>(time);
    const auto days = static_cast<double>((midnight - ZeroDate).count());
    const double fraction = static_cast<double>((time - midnight).count()) / SecondsOfDay;
    return days < 0 ? days - fraction : days + fraction;
}

DeviceTime FromOleDate(double days) {
    if (!(days > LowestDays && days < HighestDays))
        throw SimulatorError(SimulatorError::Reason::BadValue, u"the clock holds the years 100 to 9999");
    const double whole = std::trunc(days);
    const double seconds = std::round(std::abs(days - whole) * SecondsOfDay);
    return ZeroDate + std::chrono::days(static_cast<int>(whole)) + std::chrono::seconds(static_cast<int>(seconds));
}

}  // namespace vexa
