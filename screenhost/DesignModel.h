// What is laid out: where the controls are, which of them are selected, and what a mouse drag or a key does to them.
//
// Lengths are twips. The model proposes places; whoever owns the controls tells it afterwards where they really are,
// since a control may take another size than it is offered. Names are those of the screen file.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace screenhost {

struct Spot {
    int x = 0;
    int y = 0;
    friend bool operator==(const Spot&, const Spot&) = default;
};

struct Box {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    int Right() const noexcept { return left + width; }
    int Bottom() const noexcept { return top + height; }
    bool Contains(Spot spot) const noexcept {
        return spot.x >= left && spot.x < Right() && spot.y >= top && spot.y < Bottom();
    }
    bool Touches(const Box& other) const noexcept {
        return left < other.Right() && other.left < Right() && top < other.Bottom() && other.top < Bottom();
    }
    friend bool operator==(const Box&, const Box&) = default;
};

/// Which sides of a box a handle moves: -1 left or top, 1 right or bottom, 0 neither.
struct Grip {
    int x = 0;
    int y = 0;
    friend bool operator==(const Grip&, const Grip&) = default;
};

struct DesignItem {
    std::string name;
    Box box;
    friend bool operator==(const DesignItem&, const DesignItem&) = default;
};

enum class Alignment { Left, Right, Top, Bottom, SameWidth, SameHeight };

class DesignModel {
public:
    static constexpr int Grid = 120;
    static constexpr int Smallest = 120;  ///< of a side of a control that is sized

    /// handle: the side of a handle; slack: how far the mouse moves before a click becomes a drag.
    DesignModel(int handle, int slack) noexcept : m_handle(handle), m_slack(slack) {}

    /// All controls, in the order in which they lie over one another, the topmost first. What is selected and still
    /// there stays selected.
    void SetItems(std::vector<DesignItem> items);
    void SetBox(std::string_view name, const Box& box);
    const std::vector<DesignItem>& Items() const noexcept { return m_items; }
    /// Null where there is no such control.
    const DesignItem* Find(std::string_view name) const noexcept;

    bool SnapsToGrid() const noexcept { return m_bSnap; }
    void SnapToGrid(bool snap) noexcept { m_bSnap = snap; }
    int Snapped(int value) const noexcept;

    // Selection. The last one is the leading one: it has the filled handles, and others are aligned with it.
    const std::vector<std::string>& Selected() const noexcept { return m_selected; }
    bool IsSelected(std::string_view name) const noexcept;
    const DesignItem* Leading() const noexcept;
    /// Names that nobody has are left out.
    void Select(const std::vector<std::string>& names);
    void SelectAll();
    /// The control behind or before the leading one, in a circle.
    void SelectNext(bool backwards);

    // Pointing.
    /// The square of a handle, just outside of its box.
    Box HandleBox(const Box& box, Grip grip) const noexcept;
    /// A handle of a selected control.
    std::optional<Grip> GripAt(Spot spot) const noexcept;
    /// The topmost control.
    const DesignItem* ItemAt(Spot spot) const noexcept;

    // Dragging: the button goes down, the mouse moves, the button comes up or the drag is given up.
    enum class Drag { None, Move, Size, Band, Placement };
    /// extend: Ctrl or Shift is held, to add to the selection or to take from it.
    void Press(Spot spot, bool extend);
    /// The drag that follows draws the box of a new control.
    void PressToPlace(Spot spot);
    Drag Dragging() const noexcept { return m_drag; }
    /// Of the handle that is dragged.
    Grip DragGrip() const noexcept { return m_grip; }
    /// The places that the dragged controls should take now.
    std::vector<DesignItem> DragTo(Spot spot);
    /// The rectangle that a band or a placement has drawn so far.
    const Box& Band() const noexcept { return m_band; }
    struct Outcome {
        Drag drag = Drag::None;  ///< None also for a drag that never left its place
        Box placed;              ///< for a placement; no size where the mouse was only clicked
    };
    Outcome Release();
    /// The places that the dragged controls had.
    std::vector<DesignItem> CancelDrag();

    // Keys and commands: the places that the selected controls should take.
    std::vector<DesignItem> Nudged(int columns, int rows) const;
    std::vector<DesignItem> Stretched(int columns, int rows) const;
    std::vector<DesignItem> Aligned(Alignment alignment) const;

private:
    std::vector<DesignItem> SelectedItems() const;
    Box Sized(const Box& box, int dx, int dy) const noexcept;
    void PressItem(const std::string& name, bool extend);

    int m_handle;
    int m_slack;
    bool m_bSnap = true;
    std::vector<DesignItem> m_items;
    std::vector<std::string> m_selected;

    Drag m_drag = Drag::None;
    bool m_bMoved = false;
    bool m_bExtend = false;
    Grip m_grip;
    Spot m_from;
    std::string m_pressed;              ///< selected alone when the button comes up where it went down
    std::vector<DesignItem> m_started;  ///< the dragged controls where they were
    Box m_band;
};

}  // namespace screenhost
