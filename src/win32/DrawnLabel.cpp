#include "win32/DrawnLabel.h"

#include "comkit/Bstr.h"
#include "comkit/Handle.h"
#include "win32/Dpi.h"
#include "win32/OleColors.h"

namespace kiv::win32 {

RECT DrawnLabel::PixelRect() const noexcept {
    return PixelEdges(m_bounds, m_pOwner->ResolutionForLabels());
}

void DrawnLabel::SetBounds(const Rect& bounds) {
    if (m_bounds == bounds) return;
    m_pOwner->Invalidate(m_bounds);
    m_bounds = bounds;
    m_pOwner->Invalidate(m_bounds);
}

void DrawnLabel::SetFont(const FontPtr& font) {
    m_pFont = font;
    m_pGdiFont.reset();
    m_pOwner->Invalidate(m_bounds);
}

bool DrawnLabel::SetCaption(std::u16string_view caption) {
    if (m_strCaption == caption) return false;
    m_strCaption = caption;
    m_pOwner->Invalidate(m_bounds);
    return true;
}

HFONT DrawnLabel::FontHandle() const {
    const int dpi = m_pOwner->ResolutionForLabels();
    if (!m_pGdiFont || m_lFontDpi != dpi) {
        m_pGdiFont = FindGdiFont(TraitsOrDefault(m_pFont), dpi);
        m_lFontDpi = dpi;
    }
    return m_pGdiFont->Handle();
}

void DrawnLabel::Draw(HDC dc) const {
    RECT inside = PixelRect();
    if (m_bSunken) DrawEdge(dc, &inside, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
    const comkit::GdiSelection selection(dc, FontHandle());
    SetBkColor(dc, ColorRefOf(m_back));
    SetTextColor(dc, ColorRefOf(m_bEnabled ? m_fore : SystemColor::GreyText));
    // One call fills and writes. The text stands in the middle of a label that is higher than it.
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    const int top = inside.top + (inside.bottom - inside.top - metrics.tmHeight) / 2;
    const std::wstring_view text = comkit::ToWide(m_strCaption);
    ExtTextOutW(dc, inside.left, top, ETO_OPAQUE | ETO_CLIPPED, &inside, text.data(), static_cast<UINT>(text.size()),
                nullptr);
}

}  // namespace kiv::win32
