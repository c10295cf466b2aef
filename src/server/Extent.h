// Lengths of OLE (HIMETRIC, 0.01 mm) against twips (1/1440 inch).
#pragma once

#include <windows.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/Geometry.h"

namespace kiv::server {

inline constexpr double TwipsPerHimetric = 1440.0 / 2540.0;

/// Lengths beyond what a LONG holds end at its limits.
inline LONG HimetricOf(Twips twips) noexcept {
    constexpr double Least = std::numeric_limits<LONG>::min();
    constexpr double Most = std::numeric_limits<LONG>::max();
    return static_cast<LONG>(std::clamp(std::round(twips / TwipsPerHimetric), Least, Most));
}

inline SIZEL HimetricOf(const Size& twips) noexcept {
    return {HimetricOf(twips.width), HimetricOf(twips.height)};
}

inline Size TwipsOf(const SIZEL& himetric) noexcept {
    return {static_cast<double>(himetric.cx) * TwipsPerHimetric, static_cast<double>(himetric.cy) * TwipsPerHimetric};
}

}  // namespace kiv::server
