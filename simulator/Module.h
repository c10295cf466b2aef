// This server's own module.
#pragma once

#include <windows.h>

namespace vexa {

HMODULE ThisModule() noexcept;

}  // namespace vexa
