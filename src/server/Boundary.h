// Where the controls' C++ exceptions become HRESULTs. Every COM method of the server whose body can fail runs in here.
//
// A HostError n becomes 0x800A0000 + n with error information: its own source and description or, where it has none,
// the library's name and the standard text of the number. Any other failure carries what it brought along; a failure
// without words clears the information that an earlier call may have left on the thread.
#pragma once

#include <windows.h>

#include <type_traits>

#include "comkit/ComPtr.h"

namespace kiv::server {

/// To be called in a catch block only.
HRESULT ResultOfCurrentException() noexcept;

/// Error n of the host as a HRESULT.
constexpr HRESULT HostResult(long number) noexcept {
    return static_cast<HRESULT>(0x800A0000u + static_cast<unsigned long>(number));
}

/// void means S_OK, a HRESULT passes through.
template <class Body>
HRESULT AtBoundary(Body&& body) noexcept {
    try {
        if constexpr (std::is_void_v<decltype(body())>) {
            body();
            return S_OK;
        } else {
            return body();
        }
    } catch (...) {
        return ResultOfCurrentException();
    }
}

/// The same for a body that may run handlers of the container: self stays alive until the body is done.
template <class Body>
HRESULT AtBoundaryOf(IUnknown& self, Body&& body) noexcept {
    const comkit::ComPtr<IUnknown> keepAlive(&self);
    return AtBoundary(std::forward<Body>(body));
}

}  // namespace kiv::server
