#include "screenhost/DesignTool.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "screenhost/Units.h"

namespace screenhost {

namespace {

constexpr int GridTwips = 120;
constexpr int HandleSize = 7;
constexpr int SmallestControl = 8;

int Snapped(int pixels) {
    const int grid = std::max(1, PixelsFromTwips(GridTwips));
    const int half = pixels < 0 ? -grid / 2 : grid / 2;
    return (pixels + half) / grid * grid;
}

}  // namespace

DesignTool::DesignTool(HWND view, Place place, Move move)
    : m_view(view), m_place(std::move(place)), m_move(std::move(move)) {}

void DesignTool::Reset(std::size_t count) {
    m_count = count;
    m_dragged.reset();
    Select(count > 0 ? std::optional<std::size_t>(0) : std::nullopt);
}

void DesignTool::Select(std::optional<std::size_t> control) {
    if (m_selected && *m_selected < m_count) InvalidateAround(m_place(*m_selected));
    m_selected = control;
    if (m_selected) InvalidateAround(m_place(*m_selected));
}

RECT DesignTool::HandleRect(const RECT& control, const Handle& handle) const {
    const int size = Scaled(HandleSize);
    const auto at = [size](LONG low, LONG high, int side) {
        return side < 0 ? low - size : side > 0 ? high : (low + high - size) / 2;
    };
    RECT result{};
    result.left = at(control.left, control.right, handle.x);
    result.top = at(control.top, control.bottom, handle.y);
    result.right = result.left + size;
    result.bottom = result.top + size;
    return result;
}

void DesignTool::InvalidateAround(const RECT& control) const {
    RECT around = control;
    InflateRect(&around, Scaled(HandleSize) + 1, Scaled(HandleSize) + 1);
    InvalidateRect(m_view, &around, TRUE);
}

std::optional<DesignTool::Handle> DesignTool::HandleAt(POINT point) const {
    if (!m_selected) return std::nullopt;
    const RECT control = m_place(*m_selected);
    for (int y = -1; y <= 1; ++y) {
        for (int x = -1; x <= 1; ++x) {
            const RECT place = HandleRect(control, {x, y});
            if ((x || y) && PtInRect(&place, point)) return Handle{x, y};
        }
    }
    return std::nullopt;
}

std::optional<std::size_t> DesignTool::ControlAt(POINT point) const {
    for (std::size_t i = m_count; i-- > 0;) {
        const RECT place = m_place(i);
        if (PtInRect(&place, point)) return i;
    }
    return std::nullopt;
}

void DesignTool::OnButtonDown(POINT point) {
    m_dragged = HandleAt(point);
    if (!m_dragged) {
        Select(ControlAt(point));
        if (!m_selected) return;
        m_dragged = Handle{};
    }
    m_from = point;
    m_start = m_place(*m_selected);
    SetCapture(m_view);
}

void DesignTool::OnMouseMove(POINT point) {
    if (!m_dragged || !m_selected) return;
    const int dx = Snapped(static_cast<int>(point.x - m_from.x));
    const int dy = Snapped(static_cast<int>(point.y - m_from.y));
    RECT place = m_start;
    const bool whole = m_dragged->x == 0 && m_dragged->y == 0;
    if (whole) OffsetRect(&place, dx, dy);
    if (m_dragged->x < 0) place.left = std::min<LONG>(place.left + dx, place.right - SmallestControl);
    if (m_dragged->x > 0) place.right = std::max<LONG>(place.right + dx, place.left + SmallestControl);
    if (m_dragged->y < 0) place.top = std::min<LONG>(place.top + dy, place.bottom - SmallestControl);
    if (m_dragged->y > 0) place.bottom = std::max<LONG>(place.bottom + dy, place.top + SmallestControl);
    Apply(place);
}

void DesignTool::OnButtonUp() {
    if (!m_dragged) return;
    m_dragged.reset();
    ReleaseCapture();
}

bool DesignTool::OnKey(WPARAM key, bool shift) {
    if (!m_selected) return false;
    const int step = std::max(1, PixelsFromTwips(GridTwips));
    const int dx = key == VK_LEFT ? -step : key == VK_RIGHT ? step : 0;
    const int dy = key == VK_UP ? -step : key == VK_DOWN ? step : 0;
    if (!dx && !dy) return false;
    RECT place = m_place(*m_selected);
    if (shift) {
        place.right = std::max<LONG>(place.right + dx, place.left + SmallestControl);
        place.bottom = std::max<LONG>(place.bottom + dy, place.top + SmallestControl);
    } else {
        OffsetRect(&place, dx, dy);
    }
    Apply(place);
    return true;
}

void DesignTool::Apply(const RECT& place) {
    const RECT before = m_place(*m_selected);
    if (EqualRect(&before, &place)) return;
    InvalidateAround(before);
    m_move(*m_selected, place);
    InvalidateAround(m_place(*m_selected));
}

LPCWSTR DesignTool::CursorAt(POINT point) const {
    if (const auto handle = HandleAt(point)) {
        if (handle->x == 0) return IDC_SIZENS;
        if (handle->y == 0) return IDC_SIZEWE;
        return handle->x == handle->y ? IDC_SIZENWSE : IDC_SIZENESW;
    }
    return ControlAt(point) ? IDC_SIZEALL : IDC_ARROW;
}

void DesignTool::Paint(HDC dc) const {
    if (!m_selected) return;
    const RECT control = m_place(*m_selected);
    for (int y = -1; y <= 1; ++y) {
        for (int x = -1; x <= 1; ++x) {
            if (!x && !y) continue;
            RECT place = HandleRect(control, {x, y});
            FillRect(dc, &place, GetSysColorBrush(COLOR_HIGHLIGHT));
            InflateRect(&place, -1, -1);
            FillRect(dc, &place, GetSysColorBrush(COLOR_WINDOW));
        }
    }
}

}  // namespace screenhost
