#include "win32/NativeFrame.h"

#include <commctrl.h>
#include <oleacc.h>

#include <algorithm>

#include "comkit/Bstr.h"
#include "comkit/Handle.h"
#include "win32/AccessKeys.h"
#include "win32/InputMessages.h"
#include "win32/PaintScope.h"
#include "win32/ShownColors.h"

namespace kiv::win32 {

namespace {
// Pixels at 96 dpi.
constexpr int CaptionIndent = 9;
constexpr int CaptionPadding = 2;
}  // namespace

void NativeFrame::SetCaption(std::u16string_view caption) {
    if (m_strCaption == caption) return;
    m_strCaption = caption;
    if (Window()) SetWindowTextW(Window(), comkit::ToWide(m_strCaption).data());
}

WindowDescription NativeFrame::Describe() const {
    return {.className = WC_BUTTONW,
            .text = comkit::ToWide(m_strCaption).data(),
            .style = BS_GROUPBOX | WS_CLIPCHILDREN,
            .extendedStyle = WS_EX_CONTROLPARENT,
            .place = {},
            .parent = nullptr,
            .hasInnerWindows = false};
}

std::optional<LRESULT> NativeFrame::HandleInstead(const Message& message) {
    switch (message.id) {
        case WM_NCHITTEST:
            return HTCLIENT;
        // All of it is painted at once, in WM_PAINT.
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT:
        case WM_PRINTCLIENT:
            Paint(PaintScope(message).Dc());
            return 0;
        // Here the native group box would paint itself at once, past WM_PAINT.
        case WM_ENABLE:
            InvalidateRect(message.window, nullptr, TRUE);
            return 0;
        case WM_SETTEXT:
        case WM_UPDATEUISTATE: {
            const LRESULT result = DefWindowProcW(message.window, message.id, message.wParam, message.lParam);
            InvalidateRect(message.window, nullptr, TRUE);
            return result;
        }
        default:
            return ChildWidget::HandleInstead(message);
    }
}

AccessibleFacts NativeFrame::Access() const {
    return {WithoutAccessKey(m_strCaption), ROLE_SYSTEM_GROUPING, {}, 0};
}

LRESULT NativeFrame::RunNative(NativeWindow& native, const Message& message) {
    if (!IsMouseMessage(message.id)) return native.CallNative(message);
    if (message.id == WM_LBUTTONDOWN || message.id == WM_LBUTTONDBLCLK) SetCapture(message.window);
    if (message.id == WM_LBUTTONUP && GetCapture() == message.window) ReleaseCapture();
    return 0;
}

void NativeFrame::Paint(HDC dc) const {
    const comkit::GdiSelection font(dc, FontHandle());
    RECT border{};
    GetClientRect(Window(), &border);
    FillFace(dc, border, GetBack());
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    border.top += metrics.tmHeight / 2;
    DrawEdge(dc, &border, EDGE_ETCHED, BF_RECT);
    if (!m_strCaption.empty()) PaintCaption(dc, border);
}

void NativeFrame::PaintCaption(HDC dc, const RECT& border) const {
    const int dpi = Context()->dpi;
    const int indent = MulDiv(CaptionIndent, dpi, USER_DEFAULT_SCREEN_DPI);
    const int padding = MulDiv(CaptionPadding, dpi, USER_DEFAULT_SCREEN_DPI);
    UINT format = DT_SINGLELINE | DT_END_ELLIPSIS;
    if (SendMessageW(Window(), WM_QUERYUISTATE, 0, 0) & UISF_HIDEACCEL) format |= DT_HIDEPREFIX;

    const std::wstring text(comkit::ToWide(m_strCaption));
    RECT area{border.left + indent, 0, border.right - indent, border.bottom};
    RECT needed = area;
    DrawTextW(dc, text.c_str(), -1, &needed, format | DT_CALCRECT);
    area.right = std::min(area.right, needed.right);
    area.bottom = needed.bottom;
    if (area.right <= area.left) return;

    FillFace(dc, {area.left - padding, area.top, area.right + padding, area.bottom}, GetBack());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, ShownTextColor(GetFore(), GetEnabled()));
    DrawTextW(dc, text.c_str(), -1, &area, format);
}

}  // namespace kiv::win32
