#include "win32/InputMessages.h"

#include <windowsx.h>

namespace kiv::win32 {

namespace {

constexpr int LeftButton = 1;
constexpr int RightButton = 2;
constexpr int MiddleButton = 4;
constexpr int ShiftKey = 1;
constexpr int ControlKey = 2;
constexpr int AltKey = 4;

bool IsDown(int key) noexcept {
    return GetKeyState(key) < 0;
}

int ButtonOf(UINT id) noexcept {
    switch (id) {
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
        case WM_LBUTTONUP:
            return LeftButton;
        case WM_RBUTTONDOWN:
        case WM_RBUTTONDBLCLK:
        case WM_RBUTTONUP:
            return RightButton;
        default:
            return MiddleButton;
    }
}

MouseAction ActionOf(UINT id) noexcept {
    switch (id) {
        case WM_MOUSEMOVE:
            return MouseAction::Move;
        case WM_LBUTTONUP:
        case WM_RBUTTONUP:
        case WM_MBUTTONUP:
            return MouseAction::Up;
        default:
            return MouseAction::Down;
    }
}

}  // namespace

bool IsKeyMessage(UINT id) noexcept {
    return id == WM_KEYDOWN || id == WM_KEYUP || id == WM_SYSKEYDOWN || id == WM_SYSKEYUP;
}

bool IsMouseMessage(UINT id) noexcept {
    return id >= WM_MOUSEMOVE && id <= WM_MBUTTONDBLCLK;
}

MouseInput ReadMouseMessage(const Message& message) noexcept {
    const auto keys = static_cast<unsigned>(message.wParam);
    const MouseAction action = ActionOf(message.id);
    int buttons = ButtonOf(message.id);
    if (action == MouseAction::Move)
        buttons = (keys & MK_LBUTTON ? LeftButton : 0) | (keys & MK_RBUTTON ? RightButton : 0) |
                  (keys & MK_MBUTTON ? MiddleButton : 0);
    const int shift =
        (keys & MK_SHIFT ? ShiftKey : 0) | (keys & MK_CONTROL ? ControlKey : 0) | (IsDown(VK_MENU) ? AltKey : 0);
    return {action,
            static_cast<std::int16_t>(buttons),
            static_cast<std::int16_t>(shift),
            {GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)}};
}

std::int16_t ShiftState() noexcept {
    return static_cast<std::int16_t>((IsDown(VK_SHIFT) ? ShiftKey : 0) | (IsDown(VK_CONTROL) ? ControlKey : 0) |
                                     (IsDown(VK_MENU) ? AltKey : 0));
}

}  // namespace kiv::win32
