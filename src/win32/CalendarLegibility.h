// What the native month calendar hides from the user when its title and its months have the same background.
//
// It writes the names of the weekdays in the title's background colour, and the chosen day in the months' background
// colour on the title's. With equal colours, as the disabled ones are by default, both would vanish.
#pragma once

#include <windows.h>

namespace kiv::win32 {

struct HiddenPartsColors {
    COLORREF weekdays;
    COLORREF chosenDay;
};

/// To be called after the native painting, with the device context that was painted in. The calendar must show one
/// month.
void DrawHiddenParts(HWND calendar, HDC dc, const HiddenPartsColors& colors);

}  // namespace kiv::win32
