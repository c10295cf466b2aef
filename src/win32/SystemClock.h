// The PC's clock, in local time.
#pragma once

#include "platform/System.h"

namespace kiv::win32 {

class SystemClock final : public Clock {
public:
    DateTime Now() const override;
};

}  // namespace kiv::win32
