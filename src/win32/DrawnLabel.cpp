#include "win32/DrawnLabel.h"

#include "comkit/Bstr.h"
#include "comkit/Handle.h"
#include "win32/Dpi.h"
#include "win32/ShownColors.h"

namespace kiv::win32 {

RECT DrawnLabel::PixelRect() const noexcept {
    return PixelEdges(m_bounds, m_pOwner->ResolutionForLabels());
}

void DrawnLabel::SetBounds(const Rect& bounds) {
    if (m_bounds == bounds) return;
    InvalidateIfShown();
    m_bounds = bounds;
    InvalidateIfShown();
}

void DrawnLabel::SetVisible(bool visible) {
    if (m_bVisible == visible) return;
    m_bVisible = visible;
    m_pOwner->Invalidate(m_bounds);
}

void DrawnLabel::SetFont(const FontPtr& font) {
    m_pFont = font;
    m_pGdiFont.reset();
    InvalidateIfShown();
}

bool DrawnLabel::SetCaption(std::u16string_view caption) {
    if (m_strCaption == caption) return false;
    m_strCaption = caption;
    InvalidateIfShown();
    m_pOwner->OnCaptionChanged(*this);
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
    // A container's device context may be set up for anything.
    SetTextAlign(dc, TA_LEFT | TA_TOP | TA_NOUPDATECP);
    SetTextCharacterExtra(dc, 0);
    SetBkColor(dc, ShownColor(m_back, ColorUse::Face));
    SetTextColor(dc, ShownTextColor(m_fore, m_bEnabled));
    // One call fills and writes. The text stands in the middle of a label that is higher than it.
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    const int top = inside.top + (inside.bottom - inside.top - metrics.tmHeight) / 2;
    const std::wstring_view text = comkit::ToWide(m_strCaption);
    ExtTextOutW(dc, inside.left, top, ETO_OPAQUE | ETO_CLIPPED, &inside, text.data(), static_cast<UINT>(text.size()),
                nullptr);
}

}  // namespace kiv::win32
