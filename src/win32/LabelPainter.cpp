#include "win32/LabelPainter.h"

#include "comkit/Handle.h"

namespace kiv::win32 {

namespace {

/// Of the font that is selected, in the units of the device context.
LONG LineHeightIn(HDC dc, HFONT font) noexcept {
    TEXTMETRICW metrics{};
    if (GetTextMetricsW(dc, &metrics)) return metrics.tmHeight;
    // A recording in the old format measures nothing.
    const comkit::WindowDc screen(nullptr);
    const comkit::GdiSelection selection(screen.Get(), font);
    return GetTextMetricsW(screen.Get(), &metrics) ? metrics.tmHeight : 0;
}

}  // namespace

// A container's device context may be set up for anything.
LabelPainter::LabelPainter(HDC dc, POINT origin, Target target) noexcept
    : m_dc(dc),
      m_origin(origin),
      m_eTarget(target),
      m_formerAlign(SetTextAlign(dc, TA_LEFT | TA_TOP | TA_NOUPDATECP)),
      m_formerExtra(SetTextCharacterExtra(dc, 0)),
      m_formerBack(GetBkColor(dc)),
      m_formerFore(GetTextColor(dc)) {}

LabelPainter::~LabelPainter() {
    if (m_formerFont) SelectObject(m_dc, m_formerFont);
    UseColors(m_formerBack, m_formerFore);
    SetTextCharacterExtra(m_dc, m_formerExtra);
    SetTextAlign(m_dc, m_formerAlign);
}

RECT LabelPainter::Placed(RECT pixels) const noexcept {
    OffsetRect(&pixels, m_origin.x, m_origin.y);
    return pixels;
}

void LabelPainter::UseFont(const GdiFont& font) noexcept {
    if (font.Handle() == m_font) return;
    // To select a font takes as long as to write a line, also where it is there already, as in a container that writes
    // with the same one.
    if (m_font || GetCurrentObject(m_dc, OBJ_FONT) != font.Handle()) {
        const HGDIOBJ former = SelectObject(m_dc, font.Handle());
        if (!m_formerFont) m_formerFont = former;
    }
    m_font = font.Handle();
    m_lineHeight = m_eTarget == Target::Window ? font.LineHeightIn(m_dc) : LineHeightIn(m_dc, m_font);
}

void LabelPainter::UseColors(COLORREF back, COLORREF fore) noexcept {
    if (back != m_back) SetBkColor(m_dc, m_back = back);
    if (fore != m_fore) SetTextColor(m_dc, m_fore = fore);
}

void LabelPainter::WriteLine(const RECT& inside, const Look& look, std::wstring_view text) noexcept {
    UseFont(look.font);
    UseColors(look.back, look.fore);
    const int top = inside.top + (inside.bottom - inside.top - m_lineHeight) / 2;
    ExtTextOutW(m_dc, inside.left, top, ETO_OPAQUE | ETO_CLIPPED, &inside, text.data(), static_cast<UINT>(text.size()),
                nullptr);
}

}  // namespace kiv::win32
