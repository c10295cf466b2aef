// Lengths of OLE (HIMETRIC, 0.01 mm) against twips (1/1440 inch).
#pragma once

#include <windows.h>

#include <cmath>

#include "platform/Geometry.h"

namespace kiv::server {

inline constexpr double TwipsPerHimetric = 1440.0 / 2540.0;

inline LONG HimetricOf(Twips twips) noexcept {
    return static_cast<LONG>(std::lround(twips / TwipsPerHimetric));
}

inline SIZEL HimetricOf(const Size& twips) noexcept {
    return {HimetricOf(twips.width), HimetricOf(twips.height)};
}

inline Size TwipsOf(const SIZEL& himetric) noexcept {
    return {static_cast<double>(himetric.cx) * TwipsPerHimetric, static_cast<double>(himetric.cy) * TwipsPerHimetric};
}

}  // namespace kiv::server
