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
LabelPainter::LabelPainter(HDC dc, POINT origin) noexcept
    : m_dc(dc),
      m_origin(origin),
      m_formerAlign(SetTextAlign(dc, TA_LEFT | TA_TOP | TA_NOUPDATECP)),
      m_formerExtra(SetTextCharacterExtra(dc, 0)),
      m_formerBack(GetBkColor(dc)),
      m_formerFore(GetTextColor(dc)) {}

LabelPainter::~LabelPainter() {
    if (m_font) SelectObject(m_dc, m_formerFont);
    SetTextColor(m_dc, m_formerFore);
    SetBkColor(m_dc, m_formerBack);
    SetTextCharacterExtra(m_dc, m_formerExtra);
    SetTextAlign(m_dc, m_formerAlign);
}

RECT LabelPainter::Placed(RECT pixels) const noexcept {
    OffsetRect(&pixels, m_origin.x, m_origin.y);
    return pixels;
}

void LabelPainter::UseFont(HFONT font) noexcept {
    if (font == m_font) return;
    const HGDIOBJ former = SelectObject(m_dc, font);
    if (!m_font) m_formerFont = former;
    m_font = font;
    m_lineHeight = LineHeightIn(m_dc, font);
}

void LabelPainter::WriteLine(const RECT& inside, const Look& look, std::wstring_view text) noexcept {
    UseFont(look.font);
    SetBkColor(m_dc, look.back);
    SetTextColor(m_dc, look.fore);
    const int top = inside.top + (inside.bottom - inside.top - m_lineHeight) / 2;
    ExtTextOutW(m_dc, inside.left, top, ETO_OPAQUE | ETO_CLIPPED, &inside, text.data(), static_cast<UINT>(text.size()),
                nullptr);
}

}  // namespace kiv::win32
