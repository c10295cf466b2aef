// Selecting, moving and sizing controls with the mouse and the arrow keys while a screen is laid out.
//
// Works in pixels of the view's client area; the view passes mouse and keyboard on and asks it to paint.
#pragma once

#include <windows.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

namespace screenhost {

class DesignTool {
public:
    using Place = std::function<RECT(std::size_t)>;
    using Move = std::function<void(std::size_t, const RECT&)>;
    DesignTool(HWND view, Place place, Move move);

    void Reset(std::size_t count);
    std::optional<std::size_t> Selected() const noexcept { return m_selected; }
    void Select(std::optional<std::size_t> control);

    void OnButtonDown(POINT point);
    void OnMouseMove(POINT point);
    void OnButtonUp();
    /// True for a key that moved or sized the selected control. Shift sizes.
    bool OnKey(WPARAM key, bool shift);
    LPCWSTR CursorAt(POINT point) const;
    void Paint(HDC dc) const;

private:
    /// Which sides of the rectangle a handle moves.
    struct Handle {
        int x = 0;  ///< -1 left, 1 right
        int y = 0;  ///< -1 top, 1 bottom
    };
    std::optional<Handle> HandleAt(POINT point) const;
    std::optional<std::size_t> ControlAt(POINT point) const;
    RECT HandleRect(const RECT& control, const Handle& handle) const;
    void InvalidateAround(const RECT& control) const;
    void Apply(const RECT& place);

    HWND m_view;
    Place m_place;
    Move m_move;
    std::size_t m_count = 0;
    std::optional<std::size_t> m_selected;
    std::optional<Handle> m_dragged;  ///< x and y 0: the whole control
    POINT m_from{};
    RECT m_start{};
};

}  // namespace screenhost
