// The PC's time zone. Throws comkit::ComError when the system does not tell it.
#pragma once

#include "platform/System.h"

namespace kiv::win32 {

class SystemTimeZone final : public TimeZone {
public:
    std::int32_t DaylightBias() const override;
};

}  // namespace kiv::win32
