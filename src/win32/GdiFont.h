// Windows' own fonts for the fonts of the core. Equal fonts at equal resolutions share one handle, which lives as long
// as anybody holds it.
#pragma once

#include <windows.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "comkit/Handle.h"
#include "comkit/SlimLock.h"
#include "platform/Font.h"
#include "platform/Geometry.h"

namespace kiv::win32 {

class GdiFont {
public:
    /// Throws std::bad_alloc when the system has no handle left.
    GdiFont(const FontTraits& traits, int dpi);
    HFONT Handle() const noexcept { return m_font.Get(); }

    /// Pixels of one line of text.
    SIZE Measure(std::wstring_view text) const;
    /// Of any text, in the units of the device context, which must be one of the screen in pixels and have the font
    /// selected: it is asked once.
    LONG LineHeightIn(HDC screen) const noexcept;

private:
    struct Measured {
        std::wstring text;
        SIZE size;
    };

    comkit::UniqueFont m_font;
    mutable std::atomic<LONG> m_lineHeight{0};  ///< 0: not measured yet
    // The same few texts are measured again and again: a label that is laid out, a screen of labels that show no value
    // yet.
    mutable comkit::SlimLock m_lock;
    mutable std::array<Measured, 8> m_recent{};
    mutable std::size_t m_oldest = 0;
};

using GdiFontPtr = std::shared_ptr<const GdiFont>;

GdiFontPtr FindGdiFont(const FontTraits& traits, int dpi);

/// Size of one line of text at a resolution.
Size MeasureTextIn(const FontPtr& font, std::u16string_view text, int dpi);
Size MeasureTextIn(const GdiFont& font, std::u16string_view text, int dpi);

/// A null font means the default font.
FontTraits TraitsOrDefault(const FontPtr& font);

}  // namespace kiv::win32
