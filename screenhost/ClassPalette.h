// The controls that a designer can choose from: their classes, what they are called, and their toolbox pictures.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "comkit/Handle.h"

namespace screenhost {

struct PaletteClass {
    std::string progId;
    std::string title;
    comkit::UniqueBitmap picture;  ///< null where the class has none; the upper left pixel's colour is transparent

    /// "KivSetDateTime" of "KivDateTime.KivSetDateTime": what controls of the class are named after.
    std::string Stem() const;
};

/// The controls of a component server's type library, in its order; none where the file has no type library.
std::vector<PaletteClass> ControlsOfLibrary(const std::wstring& file);

/// All controls that are registered on this machine, by title.
std::vector<PaletteClass> RegisteredControls();

}  // namespace screenhost
