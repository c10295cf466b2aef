// The surface's part in a container's keyboard handling: Tab and access keys.
#include <algorithm>
#include <functional>
#include <vector>

#include "win32/ChildWidget.h"
#include "win32/ControlSurface.h"
#include "win32/SurfaceWindow.h"

namespace kiv::win32 {

namespace {

HWND WindowOf(const ChildWidget* child) noexcept {
    return child->Window();
}

}  // namespace

HWND ControlSurface::FirstTabStop() const noexcept {
    const auto& children = m_pImpl->Context()->children;
    const auto found = std::ranges::find_if(children, &ChildWidget::IsTabStop);
    return found == children.end() ? nullptr : WindowOf(*found);
}

HWND ControlSurface::LastTabStop() const noexcept {
    const auto& children = m_pImpl->Context()->children;
    const auto found = std::find_if(children.rbegin(), children.rend(), std::mem_fn(&ChildWidget::IsTabStop));
    return found == children.rend() ? nullptr : WindowOf(*found);
}

bool ControlSurface::TranslateKey(const MSG& message) {
    if (!Window() || message.message != WM_KEYDOWN || message.wParam != VK_TAB || GetKeyState(VK_CONTROL) < 0)
        return false;
    const HWND focus = GetFocus();
    if (!focus || (focus != Window() && !IsChild(Window(), focus))) return false;

    std::vector<HWND> stops;
    std::size_t present = 0;
    bool found = false;
    for (const ChildWidget* const child : m_pImpl->Context()->children) {
        const HWND window = child->Window();
        const bool hasFocus = window && (focus == window || IsChild(window, focus)) && child->IsTabStop();
        if (!child->IsTabStop()) continue;
        if (hasFocus) {
            present = stops.size();
            found = true;
        }
        stops.push_back(window);
    }
    if (stops.empty()) return false;
    const bool back = GetKeyState(VK_SHIFT) < 0;
    if (!found) {
        if (back) return false;
        SetFocus(stops.front());
        return true;
    }
    if (back ? present == 0 : present + 1 == stops.size()) return false;
    SetFocus(stops[back ? present - 1 : present + 1]);
    return true;
}

bool ControlSurface::PressMnemonic(wchar_t key) {
    CharUpperBuffW(&key, 1);
    const auto& children = m_pImpl->Context()->children;
    const auto found =
        std::ranges::find_if(children, [key](const ChildWidget* child) { return child->AnswersMnemonic(key); });
    if (found == children.end()) return false;
    ChildWidget* const child = *found;
    const auto context = m_pImpl->Context();
    SetFocus(child->Window());
    // Taking the focus may have ended the child.
    if (std::ranges::find(context->children, child) != context->children.end()) child->Press();
    return true;
}

}  // namespace kiv::win32
