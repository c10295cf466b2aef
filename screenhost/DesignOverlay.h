// What lies over the controls while a screen is laid out: a sheet of glass that takes the mouse and the keyboard, and
// small windows for what a designer has to see: handles, and the frame that is being drawn.
//
// The controls stay active in place below it, in design mode, and paint themselves; nothing reaches them.
#pragma once

#include <windows.h>

#include <memory>
#include <vector>

#include "screenhost/WindowBase.h"

namespace screenhost {

enum class MarkKind { LeadingHandle, Handle, Edge };

struct MarkPlace {
    RECT place;
    MarkKind kind;
};

class DesignOverlay {
public:
    /// Input goes to the view as messages of the glass, with positions in the view's client area.
    explicit DesignOverlay(HWND view);
    ~DesignOverlay();

    /// Over everything in the view.
    void Cover();
    void Lift();
    void Focus() const;
    HWND Glass() const noexcept;
    /// Replaces all marks.
    void ShowMarks(const std::vector<MarkPlace>& marks);

private:
    class GlassWindow;
    class Mark;

    HWND m_view;
    std::unique_ptr<GlassWindow> m_glass;
    std::vector<std::unique_ptr<Mark>> m_marks;
};

}  // namespace screenhost
