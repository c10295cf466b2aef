// The classes that the server makes: controls, and the property pages for them.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <span>

#include "comkit/ComPtr.h"
#include "server/ControlCore.h"

namespace kiv::server {

std::span<const ControlClass* const> Classes() noexcept;

/// Null where the server has no such class. Throws std::bad_alloc.
comkit::ComPtr<IClassFactory> FactoryOf(REFCLSID clsid);

}  // namespace kiv::server
