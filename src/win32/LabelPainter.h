// The drawing of some labels into one device context: what they have in common is set up once, because setting up costs
// more than drawing. The device context is left as it was found.
#pragma once

#include <windows.h>

#include <string_view>

namespace kiv::win32 {

class LabelPainter final {
public:
    /// origin is where the area of the labels has its top left corner.
    LabelPainter(HDC dc, POINT origin) noexcept;
    LabelPainter(const LabelPainter&) = delete;
    LabelPainter& operator=(const LabelPainter&) = delete;
    ~LabelPainter();

    HDC Dc() const noexcept { return m_dc; }
    /// A rectangle of the area, in the device context.
    RECT Placed(RECT pixels) const noexcept;

    struct Look {
        HFONT font;
        COLORREF back;
        COLORREF fore;
    };
    /// Fills the rectangle, in the device context, and writes one line into its middle.
    void WriteLine(const RECT& inside, const Look& look, std::wstring_view text) noexcept;

private:
    void UseFont(HFONT font) noexcept;

    HDC m_dc;
    POINT m_origin;
    HFONT m_font = nullptr;  ///< selected; null while it is still the one that was found
    LONG m_lineHeight = 0;
    HGDIOBJ m_formerFont = nullptr;
    UINT m_formerAlign;
    int m_formerExtra;
    COLORREF m_formerBack;
    COLORREF m_formerFore;
};

}  // namespace kiv::win32
