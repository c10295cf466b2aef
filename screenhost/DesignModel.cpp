#include "screenhost/DesignModel.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "screenhost/TextCursor.h"

namespace screenhost {

namespace {

/// The multiple of step that is nearest; halves go up.
int Nearest(int value, int step) noexcept {
    const int shifted = value + step / 2;
    const int quotient = shifted / step - (shifted % step < 0 ? 1 : 0);
    return quotient * step;
}

Box Between(Spot a, Spot b) noexcept {
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::abs(a.x - b.x), std::abs(a.y - b.y)};
}

/// Shifts all alike, and none of those that are on the screen beyond its left or upper edge, where nobody would find
/// it.
void Shift(std::vector<DesignItem>& items, int dx, int dy) {
    for (const DesignItem& item : items) {
        dx = std::max(dx, std::min(0, -item.box.left));
        dy = std::max(dy, std::min(0, -item.box.top));
    }
    for (DesignItem& item : items) {
        item.box.left += dx;
        item.box.top += dy;
    }
}

constexpr Grip Grips[] = {{-1, -1}, {0, -1}, {1, -1}, {-1, 0}, {1, 0}, {-1, 1}, {0, 1}, {1, 1}};

}  // namespace

void DesignModel::SetItems(std::vector<DesignItem> items) {
    m_items = std::move(items);
    std::erase_if(m_selected, [this](const std::string& name) { return !Find(name); });
    m_drag = Drag::None;
}

void DesignModel::SetBox(std::string_view name, const Box& box) {
    for (DesignItem& item : m_items)
        if (EqualWithoutCase(item.name, name)) item.box = box;
}

const DesignItem* DesignModel::Find(std::string_view name) const noexcept {
    const auto found =
        std::ranges::find_if(m_items, [&](const DesignItem& item) { return EqualWithoutCase(item.name, name); });
    return found == m_items.end() ? nullptr : &*found;
}

int DesignModel::Snapped(int value) const noexcept {
    return m_bSnap ? Nearest(value, Grid) : value;
}

bool DesignModel::IsSelected(std::string_view name) const noexcept {
    return std::ranges::any_of(m_selected, [&](const std::string& each) { return EqualWithoutCase(each, name); });
}

const DesignItem* DesignModel::Leading() const noexcept {
    return m_selected.empty() ? nullptr : Find(m_selected.back());
}

void DesignModel::Select(const std::vector<std::string>& names) {
    m_selected.clear();
    for (const std::string& name : names)
        if (const DesignItem* const item = Find(name); item && !IsSelected(name)) m_selected.push_back(item->name);
}

void DesignModel::SelectAll() {
    const std::string leading = m_selected.empty() ? std::string() : m_selected.back();
    m_selected.clear();
    for (const DesignItem& item : m_items)
        if (item.name != leading) m_selected.push_back(item.name);
    if (!leading.empty()) m_selected.push_back(leading);
}

void DesignModel::SelectNext(bool backwards) {
    if (m_items.empty()) return;
    const DesignItem* const leading = Leading();
    const std::size_t count = m_items.size();
    std::size_t index = backwards ? count - 1 : 0;
    if (leading) {
        const auto at = static_cast<std::size_t>(leading - m_items.data());
        index = (at + (backwards ? count - 1 : 1)) % count;
    }
    m_selected = {m_items[index].name};
}

Box DesignModel::HandleBox(const Box& box, Grip grip) const noexcept {
    const auto at = [this](int low, int length, int side) {
        return side < 0 ? low - m_handle : side > 0 ? low + length : low + (length - m_handle) / 2;
    };
    return {at(box.left, box.width, grip.x), at(box.top, box.height, grip.y), m_handle, m_handle};
}

std::optional<Grip> DesignModel::GripAt(Spot spot) const noexcept {
    for (std::size_t i = m_selected.size(); i-- > 0;) {
        const DesignItem* const item = Find(m_selected[i]);
        if (!item) continue;
        for (const Grip grip : Grips)
            if (HandleBox(item->box, grip).Contains(spot)) return grip;
    }
    return std::nullopt;
}

const DesignItem* DesignModel::ItemAt(Spot spot) const noexcept {
    const auto found = std::ranges::find_if(m_items, [&](const DesignItem& item) { return item.box.Contains(spot); });
    return found == m_items.end() ? nullptr : &*found;
}

void DesignModel::Press(Spot spot, bool extend) {
    m_from = spot;
    m_bMoved = false;
    m_bExtend = extend;
    m_pressed.clear();
    m_band = {spot.x, spot.y, 0, 0};
    if (const auto grip = extend ? std::nullopt : GripAt(spot)) {
        m_drag = Drag::Size;
        m_grip = *grip;
    } else if (const DesignItem* const item = ItemAt(spot)) {
        PressItem(item->name, extend);
    } else {
        m_drag = Drag::Band;
        if (!extend) m_selected.clear();
    }
    m_started = SelectedItems();
}

void DesignModel::PressItem(const std::string& name, bool extend) {
    const bool wasSelected = IsSelected(name);
    m_drag = Drag::Move;
    if (wasSelected && extend) {
        std::erase(m_selected, name);
        m_drag = Drag::None;
    } else if (wasSelected) {
        // One of several: all of them may be about to be dragged, or this one to be chosen.
        m_pressed = name;
        std::erase(m_selected, name);
        m_selected.push_back(name);
    } else {
        if (!extend) m_selected.clear();
        m_selected.push_back(name);
    }
}

void DesignModel::PressToPlace(Spot spot) {
    m_from = {Snapped(spot.x), Snapped(spot.y)};
    m_bMoved = false;
    m_drag = Drag::Placement;
    m_started.clear();
    m_band = {m_from.x, m_from.y, 0, 0};
}

std::vector<DesignItem> DesignModel::DragTo(Spot spot) {
    if (m_drag == Drag::None) return {};
    const int dx = spot.x - m_from.x;
    const int dy = spot.y - m_from.y;
    if (!m_bMoved && std::abs(dx) < m_slack && std::abs(dy) < m_slack) return {};
    m_bMoved = true;
    if (m_drag == Drag::Band) m_band = Between(m_from, spot);
    if (m_drag == Drag::Placement) m_band = Between(m_from, {Snapped(spot.x), Snapped(spot.y)});
    if (m_drag == Drag::Band || m_drag == Drag::Placement || m_started.empty()) return {};
    std::vector<DesignItem> wanted = m_started;
    if (m_drag == Drag::Size) {
        for (DesignItem& item : wanted) item.box = Sized(item.box, dx, dy);
        return wanted;
    }
    // The leading one lands on the grid, and the others keep their distance from it.
    const Box& leading = m_started.back().box;
    Shift(wanted, Snapped(leading.left + dx) - leading.left, Snapped(leading.top + dy) - leading.top);
    return wanted;
}

Box DesignModel::Sized(const Box& box, int dx, int dy) const noexcept {
    Box result = box;
    if (m_grip.x < 0) {
        result.left = std::min(Snapped(box.left + dx), box.Right() - Smallest);
        result.width = box.Right() - result.left;
    }
    if (m_grip.x > 0) result.width = std::max(Snapped(box.Right() + dx) - box.left, Smallest);
    if (m_grip.y < 0) {
        result.top = std::min(Snapped(box.top + dy), box.Bottom() - Smallest);
        result.height = box.Bottom() - result.top;
    }
    if (m_grip.y > 0) result.height = std::max(Snapped(box.Bottom() + dy) - box.top, Smallest);
    return result;
}

DesignModel::Outcome DesignModel::Release() {
    const Drag drag = std::exchange(m_drag, Drag::None);
    if (drag == Drag::Placement) return {drag, m_band};
    if (drag == Drag::Band && m_bMoved) {
        for (const DesignItem& item : m_items)
            if (item.box.Touches(m_band) && !IsSelected(item.name)) m_selected.push_back(item.name);
    }
    if (drag == Drag::Move && !m_bMoved && !m_pressed.empty()) m_selected = {m_pressed};
    m_pressed.clear();
    m_started.clear();
    return {m_bMoved ? drag : Drag::None, {}};
}

std::vector<DesignItem> DesignModel::CancelDrag() {
    m_drag = Drag::None;
    m_pressed.clear();
    return std::exchange(m_started, {});
}

std::vector<DesignItem> DesignModel::SelectedItems() const {
    std::vector<DesignItem> result;
    for (const std::string& name : m_selected)
        if (const DesignItem* const item = Find(name)) result.push_back(*item);
    return result;
}

std::vector<DesignItem> DesignModel::Nudged(int columns, int rows) const {
    std::vector<DesignItem> result = SelectedItems();
    if (result.empty()) return result;
    // Onto the grid with the first step, along it with the others.
    const Box leading = result.back().box;
    Shift(result, columns ? Snapped(leading.left + columns * Grid) - leading.left : 0,
          rows ? Snapped(leading.top + rows * Grid) - leading.top : 0);
    return result;
}

std::vector<DesignItem> DesignModel::Stretched(int columns, int rows) const {
    std::vector<DesignItem> result = SelectedItems();
    for (DesignItem& item : result) {
        Box& box = item.box;
        if (columns) box.width = std::max(Snapped(box.Right() + columns * Grid) - box.left, Smallest);
        if (rows) box.height = std::max(Snapped(box.Bottom() + rows * Grid) - box.top, Smallest);
    }
    return result;
}

std::vector<DesignItem> DesignModel::Aligned(Alignment alignment) const {
    std::vector<DesignItem> result = SelectedItems();
    if (result.empty()) return result;
    const Box leading = result.back().box;
    for (auto& [name, box] : result) {
        switch (alignment) {
            case Alignment::Left:
                box.left = leading.left;
                break;
            case Alignment::Right:
                box.left = leading.Right() - box.width;
                break;
            case Alignment::Top:
                box.top = leading.top;
                break;
            case Alignment::Bottom:
                box.top = leading.Bottom() - box.height;
                break;
            case Alignment::SameWidth:
                box.width = leading.width;
                break;
            case Alignment::SameHeight:
                box.height = leading.height;
                break;
        }
    }
    return result;
}

}  // namespace screenhost
