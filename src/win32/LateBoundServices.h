// The framework's services over its automation object.
#pragma once

#include <memory>

#include "platform/UserServices.h"

namespace kiv::win32 {

/// Null where the framework's services are not installed.
std::unique_ptr<UserServices> FindLateBoundServices();

}  // namespace kiv::win32
