// The screen itself: the area in which the controls live.
//
// At run time the controls have the mouse and the keyboard. At design time a sheet of glass lies over them, which takes
// the mouse for the designer, and a grid shows where things snap to.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "screenhost/DesignTool.h"
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
    /// Makes all controls anew in the other mode. What was laid out is kept, what happened at run time is not.
    void SwitchMode(bool userMode);

    /// The screen's text with the controls' present state. Throws TextError.
    std::string SavedText();
    std::string Title();

    std::vector<std::unique_ptr<HostedControl>>& Controls() noexcept { return m_controls; }
    /// Throws TextError when there is no such control.
    HostedControl& Find(const std::string& name);
    HostedControl* Selected();
    /// Of all controls with a margin round them, in pixels.
    SIZE ContentSize() const;
    /// After another place or size of a control.
    void OnLayout();

private:
    class Glass;

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnDesignMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void Paint();
    void PaintFailure(HDC dc, const HostedControl& control) const;

    ScreenContext& m_context;
    ScreenFile m_file;
    std::vector<std::unique_ptr<HostedControl>> m_controls;
    std::unique_ptr<Glass> m_glass;
    std::optional<DesignTool> m_tool;
};

}  // namespace screenhost
