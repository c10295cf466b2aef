// Reading of keyboard and mouse messages.
#pragma once

#include <windows.h>

#include <cstdint>

#include "platform/Widgets.h"
#include "win32/NativeWindow.h"

namespace kiv::win32 {

struct MouseInput {
    MouseAction action;
    std::int16_t button;  ///< as in MouseArgs
    std::int16_t shift;
    POINT position;  ///< pixels, in the message's window
};

/// Keys down and up, those with Alt included.
bool IsKeyMessage(UINT id) noexcept;
/// Moves and the left, right and middle button.
bool IsMouseMessage(UINT id) noexcept;

/// The message must be a mouse message. A second press of a double click is a press.
MouseInput ReadMouseMessage(const Message& message) noexcept;

/// 1 Shift, 2 Ctrl, 4 Alt: as they were when the present message was made.
std::int16_t ShiftState() noexcept;

}  // namespace kiv::win32
