// Laying a screen out: what mouse, keyboard and commands do to the controls, and the document's history.
//
// Every finished edit is one step of the history: the document's text before and after, so that whatever a control
// keeps in its section is undone with it.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "screenhost/DesignModel.h"
#include "screenhost/DesignOverlay.h"
#include "screenhost/DocumentHistory.h"

namespace screenhost {

class HostedControl;
class ScreenFile;
class ScreenView;

/// What the next press on the screen places.
struct NewControl {
    std::string progId;
    std::string stem;  ///< of its name
};

class DesignSession {
public:
    /// The view outlives the session.
    explicit DesignSession(ScreenView& view);

    /// The document on the screen is another one; the controls need not be open yet.
    void StartDocument(std::string text);
    /// Design mode begins, or goes on with another document: the controls are open.
    void Enter();
    /// Design mode ends: what the controls hold is part of the document.
    void Leave();

    DesignModel& Model() noexcept { return m_model; }
    DocumentHistory& History() noexcept { return m_history; }
    std::vector<HostedControl*> Selection();
    HWND InputWindow() const noexcept { return m_overlay.Glass(); }
    void Focus() const { m_overlay.Focus(); }

    /// Places the control with the next press; nothing with an empty one.
    void Choose(NewControl control);
    bool IsPlacing() const noexcept { return !m_placing.progId.empty(); }
    /// At a free spot near the upper left corner, in the control's own size.
    void PlaceNow(const NewControl& control);
    void Select(const std::vector<std::string>& names);

    void Delete();
    void Copy() const;
    void Cut();
    void Paste();
    void Undo();
    void Redo();
    void Align(Alignment alignment);
    /// Makes a step of the history of whatever has changed. False when nothing has.
    bool Commit(const std::string& label, const std::string& tag = {});

    /// Mouse and keys of the view in design mode. True: dealt with.
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    /// The controls may have taken other places, or the view another size.
    void OnLayout();

    /// Selection, places, tool or history are not what they were.
    std::function<void()> onChange;
    std::function<void()> onProperties;
    std::function<void(POINT screen)> onMenu;
    std::function<void(const std::string&)> onProblem;

private:
    void OnButtonDown(POINT point, WPARAM keys);
    void OnMouseMove(POINT point);
    void OnButtonUp(POINT point);
    void OnRightButton(POINT point);
    bool OnKey(WPARAM key);
    bool OnCommandKey(WPARAM key);
    void OnEscape();
    void OnContextMenu(LPARAM lParam);
    bool SetCursorFor(POINT point) const;
    void Place(const NewControl& control, const Box& box);
    void Apply(const std::vector<DesignItem>& places, bool keepRight, bool keepBottom);
    void EndDrag();
    void GoTo(const std::string& text);
    void ReadItems();
    void ShowMarks();
    void Changed();
    std::string SelectionTag(const char* what) const;

    ScreenView& m_view;
    DesignModel m_model;
    DocumentHistory m_history;
    DesignOverlay m_overlay;
    NewControl m_placing;
    bool m_bEntered = false;
};

}  // namespace screenhost
