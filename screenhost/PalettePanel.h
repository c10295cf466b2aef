// The list of controls at the side of a screen that is laid out: the pointer first, then the classes.
//
// Choosing a class makes the next press on the screen place one; the parent passes its WM_DRAWITEM and WM_COMMAND
// messages on.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "screenhost/ClassPalette.h"

namespace screenhost {

class PalettePanel {
public:
    /// Throws TextError.
    PalettePanel(HWND parent, int id, HFONT font);

    HWND List() const noexcept { return m_list; }
    void SetClasses(std::vector<PaletteClass> classes);
    const std::vector<PaletteClass>& Classes() const noexcept { return m_classes; }
    /// Null while the pointer is chosen.
    const PaletteClass* Chosen() const;
    void ChoosePointer();
    /// The row of a class by its title or ProgID, from 0 for the pointer. Throws TextError.
    int RowOf(const std::string& name) const;

    void Show(bool visible);
    void SetPlace(const RECT& place);
    int Width() const;

    /// Another row was chosen; the chosen class is to be placed at once (double click).
    std::function<void()> onChoice;
    std::function<void()> onPlaceNow;

    void OnDraw(const DRAWITEMSTRUCT& item) const;
    void OnCommand(int notification) const;

private:
    HWND m_title = nullptr;
    HWND m_list = nullptr;
    HFONT m_font;
    std::vector<PaletteClass> m_classes;
};

}  // namespace screenhost
