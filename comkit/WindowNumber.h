// What tells one window from another.
#pragma once

#include <windows.h>

#include <cstdint>

namespace comkit {

/// Handles have 32 significant bits, also in 64-bit programs; what fills the upper half is nobody's promise. Under Wine
/// 8 GetWindow and GetParent fill it with zeros, everything else with the sign, which shows once a process has seen
/// some thirty thousand windows come and go.
inline std::uint32_t WindowNumber(HWND window) noexcept {
    return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(window));
}

inline bool IsSameWindow(HWND left, HWND right) noexcept {
    return WindowNumber(left) == WindowNumber(right);
}

}  // namespace comkit
