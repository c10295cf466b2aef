// Automation objects made by name.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include "comkit/ComPtr.h"
#include "comkit/Errors.h"

namespace kiv::win32 {

/// Throws comkit::ComError, also when no such object is installed.
inline comkit::ComPtr<IDispatch> CreateObject(const wchar_t* progId) {
    CLSID clsid{};
    comkit::ThrowIfFailed(CLSIDFromProgID(progId, &clsid));
    comkit::ComPtr<IDispatch> result;
    comkit::ThrowIfFailed(
        CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IDispatch), result.PutVoid()));
    return result;
}

/// Null when no such object is installed, or it cannot be made.
inline comkit::ComPtr<IDispatch> TryCreateObject(const wchar_t* progId) noexcept {
    CLSID clsid{};
    comkit::ComPtr<IDispatch> result;
    if (SUCCEEDED(CLSIDFromProgID(progId, &clsid)))
        CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IDispatch), result.PutVoid());
    return result;
}

}  // namespace kiv::win32
