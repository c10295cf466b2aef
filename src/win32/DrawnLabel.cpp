#include "win32/DrawnLabel.h"

#include "comkit/Bstr.h"
#include "platform/SameText.h"
#include "win32/Dpi.h"
#include "win32/ShownColors.h"

namespace kiv::win32 {

RECT DrawnLabel::PixelRect() const noexcept {
    const int dpi = m_pOwner->ResolutionForLabels();
    if (m_lPixelsDpi != dpi) {
        m_pixels = PixelEdges(m_bounds, dpi);
        m_lPixelsDpi = dpi;
    }
    return m_pixels;
}

void DrawnLabel::SetBounds(const Rect& bounds) {
    if (m_bounds == bounds) return;
    InvalidateIfShown();
    m_bounds = bounds;
    m_lPixelsDpi = 0;
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
    if (SameText(m_strCaption, caption)) return false;
    m_strCaption = caption;
    if (m_bVisible) m_pOwner->OnCaptionChanged(*this);
    return true;
}

const GdiFont& DrawnLabel::DrawingFont() const {
    const int dpi = m_pOwner->ResolutionForLabels();
    if (!m_pGdiFont || m_lFontDpi != dpi) {
        m_pGdiFont = FindGdiFont(TraitsOrDefault(m_pFont), dpi);
        m_lFontDpi = dpi;
    }
    return *m_pGdiFont;
}

void DrawnLabel::Draw(LabelPainter& painter) const {
    RECT inside = painter.Placed(PixelRect());
    if (m_bSunken) DrawEdge(painter.Dc(), &inside, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
    const ShownColors& colors = painter.Colors();
    painter.WriteLine(inside, {DrawingFont(), colors.Of(m_back, ColorUse::Face), colors.OfText(m_fore, m_bEnabled)},
                      comkit::ToWide(m_strCaption));
}

}  // namespace kiv::win32
