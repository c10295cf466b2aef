// The control classes that the server makes.
#pragma once

#include <span>

#include "server/ControlCore.h"

namespace kiv::server {

std::span<const ControlClass* const> Classes() noexcept;

}  // namespace kiv::server
