// The drawing of some labels into one device context: what they have in common is set up once, because setting up costs
// more than drawing. The device context is left as it was found.
#pragma once

#include <windows.h>

#include <string_view>

#include "win32/GdiFont.h"
#include "win32/ShownColors.h"

namespace kiv::win32 {

class LabelPainter final {
public:
    enum class Target {
        Any,
        /// A device context of the screen that a window's pixels are drawn with.
        Window
    };

    /// origin is where the area of the labels has its top left corner.
    LabelPainter(HDC dc, POINT origin, Target target) noexcept;
    LabelPainter(const LabelPainter&) = delete;
    LabelPainter& operator=(const LabelPainter&) = delete;
    ~LabelPainter();

    HDC Dc() const noexcept { return m_dc; }
    const ShownColors& Colors() const noexcept { return m_colors; }
    /// A rectangle of the area, in the device context.
    RECT Placed(RECT pixels) const noexcept;

    struct Look {
        const GdiFont& font;
        COLORREF back;
        COLORREF fore;
    };
    /// Fills the rectangle, in the device context, and writes one line into its middle.
    void WriteLine(const RECT& inside, const Look& look, std::wstring_view text) noexcept;

private:
    void UseFont(const GdiFont& font) noexcept;
    void UseColors(COLORREF back, COLORREF fore) noexcept;

    HDC m_dc;
    POINT m_origin;
    Target m_eTarget;
    ShownColors m_colors;
    HFONT m_font = nullptr;  ///< selected; null before the first line
    LONG m_lineHeight = 0;
    HGDIOBJ m_formerFont = nullptr;  ///< null while it is still the one that was found
    UINT m_formerAlign;
    int m_formerExtra;
    COLORREF m_formerBack;
    COLORREF m_formerFore;
    COLORREF m_back = m_formerBack;
    COLORREF m_fore = m_formerFore;
};

}  // namespace kiv::win32
