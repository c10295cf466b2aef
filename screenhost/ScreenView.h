// The screen itself: the area in which the controls live, and the document that says which.
//
// At run time the controls have the mouse and the keyboard. At design time a session has them, and a grid shows where
// things snap to.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "screenhost/DesignSession.h"
#include "screenhost/HostedControl.h"
#include "screenhost/ScreenFile.h"
#include "screenhost/WindowBase.h"

namespace screenhost {

class ScreenView final : public WindowBase {
public:
    /// context.view is set to the new window. Throws TextError.
    ScreenView(HWND parent, ScreenContext& context, ScreenFile file);
    ~ScreenView() override;

    void OpenControls();
    void CloseControls() noexcept;
    /// Another document takes the place of the present one, which is not asked.
    void Load(ScreenFile file);
    /// Makes all controls anew in the other mode. What was laid out is kept, what happened at run time is not.
    void SwitchMode(bool userMode);

    /// The screen as it is laid out, in either mode. Throws TextError.
    std::string DocumentText();
    std::string Title();

    std::vector<std::unique_ptr<HostedControl>>& Controls() noexcept { return m_controls; }
    /// Throws TextError when there is no such control.
    HostedControl& Find(const std::string& name);
    /// Null when there is none.
    HostedControl* TryFind(const std::string& name);
    DesignSession& Design() noexcept { return *m_design; }
    /// Of all controls with a margin round them, in pixels.
    SIZE ContentSize() const;
    /// After another place or size of a control.
    void OnLayout();
    /// Controls were moved or sized, and the hand is off them.
    void AfterDrag();

    // While the screen is laid out:

    /// A new control, opened, in its own size where the box has none worth the name. Returns its name. Throws TextError
    /// when the control cannot be made; then there is no trace of it.
    std::string Add(const std::string& progId, const std::string& stem, const Box& box);
    /// Copies of all controls of another screen, opened, moved down and to the right. Returns their names. Throws
    /// TextError when the screen is full.
    std::vector<std::string> AddCopies(ScreenFile& other, int shift);
    void Remove(const std::vector<std::string>& names);
    /// The sections of these controls, as a screen of its own.
    std::string TextOf(const std::vector<std::string>& names);
    /// Goes to another state of the same document. Controls whose section is the same live on; returns the names of
    /// those that were made anew.
    std::vector<std::string> Restore(const std::string& text);

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void MakeControls();
    HostedControl& OpenControl(ScreenSection& section);
    void FollowMode();
    void Paint();
    void PaintFailure(HDC dc, const HostedControl& control) const;

    ScreenContext& m_context;
    ScreenFile m_file;
    std::vector<std::unique_ptr<HostedControl>> m_controls;
    std::optional<DesignSession> m_design;
};

}  // namespace screenhost
