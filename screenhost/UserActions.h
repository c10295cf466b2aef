// What a user does, as the window messages that come of it: mouse buttons at the place of a child window, keys to the
// window that has the focus.
//
// The mouse itself is not moved, so that a visit can be played while somebody works on the same display. A click goes
// to the window that really lies under the point; where that is not the wanted one, the action fails and says why.
#pragma once

#include <windows.h>

#include <string>

#include "screenhost/MessagePump.h"
#include "screenhost/ScriptFile.h"

namespace screenhost {

class UserActions {
public:
    UserActions(MessagePump& pump, HWND mainWindow) noexcept : m_pump(pump), m_main(mainWindow) {}

    // All throw TextError.

    /// Clicks the visible child window that has this caption (ampersands do not count; the beginning is enough where it
    /// is the only one).
    void ClickCaption(HWND root, const std::string& caption);
    /// The same for a button of the host's own.
    void ClickButton(const std::string& caption);
    /// Pages a month calendar to the day's month by the arrows of its title, then clicks the day.
    void PickDay(HWND root, const CivilDate& date);
    /// Types into a time field, part by part.
    void TypeTime(HWND root, const TimeOfDay& time);
    /// Presses the left button and lets it go where it was, or elsewhere. keys: MK_CONTROL, MK_SHIFT.
    void Click(HWND window, POINT point, WPARAM keys = 0);
    void Drag(HWND window, POINT from, POINT to, WPARAM keys = 0);
    /// At the beginning of a window's text.
    void ClickText(HWND window);
    /// A key, to the window that has the focus.
    void Tap(WPARAM key);
    /// A character, or a name such as "Tab", "Shift+Tab", "Left", "Alt+U".
    void PressKey(const std::string& key);

private:
    void PrepareClick(HWND window, POINT screen) const;
    void WaitOutDoubleClick(HWND window, POINT point);
    void TurnToMonth(HWND calendar, const CivilDate& date);
    void ChooseTimePart(HWND field, int part);

    MessagePump& m_pump;
    HWND m_main;
    HWND m_lastWindow = nullptr;
    POINT m_lastPoint{};
    std::chrono::steady_clock::time_point m_lastClick;
};

}  // namespace screenhost
