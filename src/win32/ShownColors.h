// The colours that are really painted. One place decides: the control's own colour, or, where the user wants high
// contrast, the system's colour for that purpose.
#pragma once

#include <windows.h>

#include "platform/Color.h"

namespace kiv::win32 {

enum class ColorUse { Face, Text, GreyedText, Field, FieldText, Title, TitleText };

/// For several colours: the user's wish is asked for once.
class ShownColors {
public:
    ShownColors() noexcept;
    /// System colours are looked up now; a value that is no colour is black.
    COLORREF Of(OleColor wanted, ColorUse use) const noexcept;
    /// The colour of a text that is greyed while disabled.
    COLORREF OfText(OleColor wanted, bool enabled) const noexcept;

private:
    bool m_bHighContrast;
};

/// The same for one of them.
COLORREF ShownColor(OleColor wanted, ColorUse use) noexcept;
COLORREF ShownTextColor(OleColor wanted, bool enabled) noexcept;

/// The device context's own brush in the colour of a surface: nobody has to delete it.
HBRUSH FaceBrush(HDC dc, OleColor wanted) noexcept;
void FillFace(HDC dc, const RECT& area, OleColor wanted) noexcept;

/// After this message the colours may be others.
bool ChangesColors(UINT message) noexcept;

}  // namespace kiv::win32
