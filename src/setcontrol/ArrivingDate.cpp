#include "setcontrol/ArrivingDate.h"

#include <algorithm>

#include "platform/HostError.h"
#include "platform/Widgets.h"

namespace kiv {

namespace {

void CheckRange(std::int32_t value, int min, int max) {
    if (value < min || value > max) throw HostError(ErrorNumber::InvalidPropertyValue);
}

}  // namespace

CivilDate ArrivingDate::Arrive(DatePart part, std::int32_t value, const CivilDate& shown) {
    CivilDate asked = m_lastShown == shown ? m_asked : shown;
    switch (part) {
        case DatePart::Month:
            CheckRange(value, 1, 12);
            asked.month = value;
            break;
        case DatePart::Day:
            CheckRange(value, 1, 31);
            asked.day = value;
            break;
        case DatePart::Year:
            CheckRange(value, Calendar::MinYear, Calendar::MaxYear);
            asked.year = value;
            break;
    }
    m_asked = asked;
    m_lastShown = {asked.year, asked.month, std::min(asked.day, DaysInMonth(asked.year, asked.month))};
    return *m_lastShown;
}

}  // namespace kiv
