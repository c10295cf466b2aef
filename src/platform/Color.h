// OLE colours: 0x00BBGGRR, or a system colour by index when the top bit is set.
#pragma once

#include <cstdint>

namespace kiv {

using OleColor = std::uint32_t;

namespace SystemColor {
inline constexpr OleColor ActiveCaption = 0x80000002;
inline constexpr OleColor WindowBackground = 0x80000005;
inline constexpr OleColor CaptionText = 0x80000009;
inline constexpr OleColor ButtonFace = 0x8000000F;
inline constexpr OleColor ButtonShadow = 0x80000010;
inline constexpr OleColor GreyText = 0x80000011;
inline constexpr OleColor ButtonText = 0x80000012;
}  // namespace SystemColor

}  // namespace kiv
