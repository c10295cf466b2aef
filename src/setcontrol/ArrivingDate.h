// A date whose month, day and year arrive from the device one at a time, in any order.
//
// The parts are kept as they were asked for, and the nearest valid date is shown: 31 over a shown June shows 30 June,
// and becomes 31 July when the month arrives. So every order ends at the device's date.
#pragma once

#include <cstdint>
#include <optional>

#include "platform/DateTime.h"

namespace kiv {

enum class DatePart { Month, Day, Year };

class ArrivingDate {
public:
    /// The date to show now. shown is what the calendar shows at present: where that is not what was returned last,
    /// somebody else has set it, and its parts take the place of what was asked for before.
    /// Throws HostError 380 for a part that no date has; nothing is changed then.
    CivilDate Arrive(DatePart part, std::int32_t value, const CivilDate& shown);

    /// What was asked for no longer counts, whatever is shown.
    void Forget() noexcept { m_lastShown.reset(); }

private:
    CivilDate m_asked;  // may be no valid date as a whole; each part by itself is in range
    std::optional<CivilDate> m_lastShown;
};

}  // namespace kiv
