// Fonts of the core as OLE font objects, and back. A wrapped font shares the object: a change through either side is
// seen by both.
#pragma once

#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

#include "comkit/ComPtr.h"
#include "platform/Font.h"

namespace kiv::win32 {

class OleFont final : public Font {
public:
    /// font must not be null.
    explicit OleFont(comkit::ComPtr<IFont> font);

    /// Reads the font object; what it fails to tell stays at the defaults of FontTraits.
    FontTraits Traits() const override;
    const comkit::ComPtr<IFont>& Object() const noexcept { return m_pFont; }

private:
    comkit::ComPtr<IFont> m_pFont;
};

/// Null in, null out; null also when the object is no font.
FontPtr WrapFont(IUnknown* object);

/// A new font object. Throws comkit::ComError.
FontPtr MakeFont(const FontTraits& traits);

/// The font object behind a font; a new one with the same traits where it is of another make. Null in, null out.
comkit::ComPtr<IFontDisp> FontDispOf(const FontPtr& font);

/// What a null font means: the system's dialog font at 8.25 points. A new object with each call.
FontPtr DefaultFont();
FontTraits DefaultFontTraits();

}  // namespace kiv::win32
