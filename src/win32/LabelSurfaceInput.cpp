// Mouse, keys and F1 of a label surface, whether they come to a window of its own or through its container.
#include <algorithm>

#include "win32/ApplicationHelpFile.h"
#include "win32/Dpi.h"
#include "win32/LabelSurfaceImpl.h"

namespace kiv::win32 {

std::optional<LRESULT> LabelSurface::Impl::HandleInput(UINT id, WPARAM wParam, LPARAM lParam) {
    if (id == WM_CAPTURECHANGED || id == WM_CANCELMODE) {
        m_pPressed = nullptr;
        m_bCaptured = false;
        return std::nullopt;
    }
    if (IsKeyMessage(id) || id == WM_CHAR) return TellKey(id, wParam);
    if (!IsMouseMessage(id) || !m_bEnabled) return std::nullopt;
    // The second press of a double click is no further click when it ends.
    if (id == WM_LBUTTONDOWN || id == WM_LBUTTONDBLCLK) m_bSecondPress = id == WM_LBUTTONDBLCLK;
    TellMouse(ReadMouseMessage({Window(), id, wParam, lParam}));
    return 0;
}

// There is nothing here that would use a key: it is told, and the default handling has it unless a handler took it
// away.
std::optional<LRESULT> LabelSurface::Impl::TellKey(UINT id, WPARAM wParam) {
    const bool down = id == WM_KEYDOWN || id == WM_SYSKEYDOWN;
    if (down) m_bSwallowCharacter = false;
    if (id == WM_CHAR && m_bSwallowCharacter) return 0;
    if (!m_pSurface || !m_pListener || !m_bEnabled) return std::nullopt;
    const auto held = shared_from_this();
    auto code = static_cast<std::int16_t>(wParam);
    if (down) {
        m_pListener->OnKeyDown(*m_pSurface, code, ShiftState());
        // The key's character is on its way already.
        m_bSwallowCharacter = code == 0;
    } else if (id == WM_CHAR) {
        m_pListener->OnKeyPress(*m_pSurface, code);
    } else {
        m_pListener->OnKeyUp(*m_pSurface, code, ShiftState());
    }
    return code == 0 ? std::optional<LRESULT>(0) : std::nullopt;
}

void LabelSurface::Impl::TellMouse(const MouseInput& input) {
    const auto held = shared_from_this();
    const bool left = input.button == 1;
    if (input.action == MouseAction::Down && m_pSite) m_pSite->OnMouseActivate();
    if (!m_pSurface || !m_pListener) return;
    Widget& source = m_pPressed ? *m_pPressed : SourceAt(input.position);
    const Rect bounds = &source == m_pSurface ? Rect{} : source.Bounds();
    const MouseArgs args{input.button,
                         input.shift,
                         {TwipsFromPixels(input.position.x, m_dpi) - bounds.left,
                          TwipsFromPixels(input.position.y, m_dpi) - bounds.top}};
    const bool isClick = input.action == MouseAction::Up && left && !m_bSecondPress && m_pPressed == &source &&
                         &SourceAt(input.position) == &source;
    const bool isDoubleClick = input.action == MouseAction::Down && left && m_bSecondPress;
    if (left && input.action != MouseAction::Move) {
        m_pPressed = input.action == MouseAction::Down ? &source : nullptr;
        Capture(m_pPressed != nullptr);
        if (!m_pListener || !IsPresent(&source)) return;
    }
    m_pListener->OnMouse(source, input.action, args);
    if (!m_pListener || !IsPresent(&source)) return;
    if (isClick) m_pListener->OnClick(source);
    if (isDoubleClick) m_pListener->OnDblClick(source);
}

/// For a label that was pointed at, be it enabled or not.
bool LabelSurface::Impl::ShowHelpFor(LPARAM lParam) const {
    if (!lParam) return false;
    const auto& help = *reinterpret_cast<const HELPINFO*>(lParam);
    if (help.iContextType != HELPINFO_WINDOW || GetKeyState(VK_F1) < 0) return false;
    const HWND window = Window() ? Window() : m_container;
    POINT position = help.MousePos;
    ScreenToClient(window, &position);
    if (!Window()) position = {position.x - m_place.left, position.y - m_place.top};
    for (const DrawnLabel* const label : m_labels) {
        const RECT area = label->PixelRect();
        if (!label->IsVisible() || !PtInRect(&area, position)) continue;
        return ApplicationHelpFile::Show({window, label->Help().whatsThisID, true});
    }
    return false;
}

Widget& LabelSurface::Impl::SourceAt(POINT position) noexcept {
    for (DrawnLabel* const label : m_labels) {
        const RECT area = label->PixelRect();
        if (label->IsVisible() && label->IsEnabled() && PtInRect(&area, position)) return *label;
    }
    return *m_pSurface;
}

bool LabelSurface::Impl::IsPresent(const Widget* source) const noexcept {
    return m_pSurface && (source == m_pSurface || std::ranges::find(m_labels, source) != m_labels.end());
}

void LabelSurface::Impl::Capture(bool wanted) {
    m_bCaptured = wanted;
    if (const HWND window = Window()) {
        if (wanted) {
            SetCapture(window);
        } else if (GetCapture() == window) {
            ReleaseCapture();
        }
    } else if (m_pSite) {
        m_pSite->OnCapture(wanted);
    }
}

}  // namespace kiv::win32
