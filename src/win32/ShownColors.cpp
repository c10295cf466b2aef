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

COLORREF ShownColor(OleColor wanted, ColorUse use) noexcept {
    if (SystemAnswers::Current().isHighContrast()) return GetSysColor(SystemColorFor(use));
    return ColorRefOf(wanted);
}

COLORREF ShownTextColor(OleColor wanted, bool enabled) noexcept {
    return enabled ? ShownColor(wanted, ColorUse::Text) : ShownColor(SystemColor::GreyText, ColorUse::GreyedText);
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
