// The classes of this server.
#pragma once

#include <unknwn.h>

#include <span>

#include "comkit/ComPtr.h"

namespace vexa {

struct ServerClass {
    CLSID clsid;
    const wchar_t* progId;
    const wchar_t* description;
    comkit::ComPtr<IUnknown> (*make)();  ///< throws
};

std::span<const ServerClass> ServerClasses() noexcept;

}  // namespace vexa
