#include "win32/ShownColors.h"

#include "win32/OleColors.h"
#include "win32/SystemAnswers.h"

namespace kiv::win32 {

namespace {

int SystemColorFor(ColorUse use) noexcept {
    switch (use) {
        case ColorUse::Face:
            return COLOR_BTNFACE;
        case ColorUse::Text:
            return COLOR_BTNTEXT;
        case ColorUse::GreyedText:
            return COLOR_GRAYTEXT;
        case ColorUse::Field:
            return COLOR_WINDOW;
        case ColorUse::FieldText:
            return COLOR_WINDOWTEXT;
        case ColorUse::Title:
            return COLOR_ACTIVECAPTION;
        case ColorUse::TitleText:
            return COLOR_CAPTIONTEXT;
    }
    return COLOR_BTNTEXT;
}

}  // namespace

ShownColors::ShownColors() noexcept : m_bHighContrast(SystemAnswers::Current().isHighContrast()) {}

COLORREF ShownColors::Of(OleColor wanted, ColorUse use) const noexcept {
    return m_bHighContrast ? GetSysColor(SystemColorFor(use)) : ColorRefOf(wanted);
}

COLORREF ShownColors::OfText(OleColor wanted, bool enabled) const noexcept {
    return enabled ? Of(wanted, ColorUse::Text) : Of(SystemColor::GreyText, ColorUse::GreyedText);
}

COLORREF ShownColor(OleColor wanted, ColorUse use) noexcept {
    return ShownColors().Of(wanted, use);
}

COLORREF ShownTextColor(OleColor wanted, bool enabled) noexcept {
    return ShownColors().OfText(wanted, enabled);
}

HBRUSH FaceBrush(HDC dc, OleColor wanted) noexcept {
    SetDCBrushColor(dc, ShownColor(wanted, ColorUse::Face));
    return static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
}

void FillFace(HDC dc, const RECT& area, OleColor wanted) noexcept {
    FillRect(dc, &area, FaceBrush(dc, wanted));
}

bool ChangesColors(UINT message) noexcept {
    return message == WM_SYSCOLORCHANGE || message == WM_SETTINGCHANGE;
}

}  // namespace kiv::win32
