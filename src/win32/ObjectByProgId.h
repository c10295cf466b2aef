// Automation objects made by name.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include "comkit/ComPtr.h"

namespace kiv::win32 {

/// Null when no such object is installed: that is no failure, and a screen of many controls asks for it often. Throws
/// comkit::ComError when it cannot be made.
comkit::ComPtr<IDispatch> CreateObject(const wchar_t* progId);

/// Null when no such object is installed, or it cannot be made.
comkit::ComPtr<IDispatch> TryCreateObject(const wchar_t* progId) noexcept;

/// For how long a name that was found to stand for nothing is not looked for again, in milliseconds.
inline constexpr ULONGLONG AbsenceHolds = 100;

}  // namespace kiv::win32
