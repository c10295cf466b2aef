// KivShowDateTime as the OLE parts see it: the control with its Windows platform, its events and its dual interface.
#pragma once

#include <memory>

#include "server/ControlCore.h"

namespace kiv::server {

std::unique_ptr<ControlCore> CreateShowCore(ControlHost& host);

/// The class as containers and the registry know it.
extern const ControlClass ShowControlClass;

}  // namespace kiv::server
