// Giving a value to a VARIANT that a caller passed by reference.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include "comkit/Variant.h"

namespace kiv::server {

/// Where the target itself refers to a variable (VT_BYREF), that variable gets the value, in its own type. Throws
/// comkit::ComError where it cannot be converted; the target is then as it was.
void AssignTo(VARIANT& target, comkit::Variant value);

}  // namespace kiv::server
