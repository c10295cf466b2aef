// What a screen designer does, as window messages: the palette, the screen under the glass, the property frame.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "screenhost/DesignModel.h"
#include "screenhost/MainWindow.h"
#include "screenhost/MessagePump.h"
#include "screenhost/UserActions.h"

namespace screenhost {

class DesignActions {
public:
    DesignActions(UserActions& user, MessagePump& pump, MainWindow& window) noexcept
        : m_user(user), m_pump(pump), m_window(window) {}

    // All throw TextError. Lengths are twips of the screen.

    /// A row of the palette, by title or ProgID.
    void Choose(const std::string& name);
    /// Draws with the left button held; clicks where the box has no size.
    void Draw(const Box& box);
    /// Clicks into the middle of a control.
    void Select(const std::string& name, bool also);
    void Drag(const std::string& name, int dx, int dy);
    /// handle: "N", "NE", "E" and so on.
    void DragHandle(const std::string& name, const std::string& handle, int dx, int dy);

    /// A row of the device panel.
    void ChooseVariable(const std::string& variable);

    /// A page of the property frame, by its tab.
    void TurnToPage(const std::string& title);
    /// A button of the frame, or a check box or option button of its page.
    void PressInFrame(const std::string& caption);
    // Fields are those of the property frame or, where none is open, of the main window beside the screen.

    /// Types into the field behind a label, in place of what is there.
    void TypeField(const std::string& label, const std::string& text);
    /// Goes to an entry of the list behind a label with the arrow keys. The beginning of its text is enough.
    void ChooseField(const std::string& label, const std::string& entry);
    /// A field's text, a list's chosen entry; "True" or "False" for a check box or option button.
    std::string FieldText(const std::string& label);

private:
    PropertyFrame& Frame();
    std::vector<HWND> WindowsBesideTheScreen();
    /// The check box with this caption, or the field that follows the label with this caption.
    HWND FindField(const std::string& label);
    HWND Glass();

    UserActions& m_user;
    MessagePump& m_pump;
    MainWindow& m_window;
};

}  // namespace screenhost
