// Fonts of the core as OLE font objects, and back. A wrapped font shares the object: a change through either side is
// seen by both.
//
// A font that is made from traits has no object until somebody asks for it: a screen of a thousand controls would spend
// most of its time on font objects that nobody ever looks at.
#pragma once

#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

#include "comkit/ComPtr.h"
#include "platform/Font.h"

namespace kiv {

/// Base of what OfPlatform answers here: an OleFont.
class PlatformFont {};

}  // namespace kiv

namespace kiv::win32 {

class OleFont final : public Font, public PlatformFont {
public:
    /// Is told once, as soon as there is an object and before anybody is given it.
    class Watcher {
    public:
        virtual void OnObjectMade() = 0;

    protected:
        ~Watcher() = default;
    };

    /// font must not be null.
    explicit OleFont(comkit::ComPtr<IFont> font);
    explicit OleFont(FontTraits traits);

    /// Reads the font object, where there is one; what it fails to tell stays at the defaults of FontTraits.
    FontTraits Traits() const override;
    PlatformFont* OfPlatform() noexcept override { return this; }

    bool HasObject() const noexcept { return static_cast<bool>(m_pFont); }
    /// Never null. Throws comkit::ComError.
    const comkit::ComPtr<IFont>& Object();
    /// Instead of any other; null for none. It must take itself away before it ends.
    void SetWatcher(Watcher* watcher) noexcept { m_pWatcher = watcher; }

private:
    comkit::ComPtr<IFont> m_pFont;
    FontTraits m_traits;  ///< while there is no object
    Watcher* m_pWatcher = nullptr;
};

/// Null where it is of another make, and for null.
std::shared_ptr<OleFont> OleFontOf(const FontPtr& font) noexcept;

/// Null in, null out; null also when the object is no font.
FontPtr WrapFont(IUnknown* object);

/// A font of its own, without an object so far.
FontPtr MakeFont(const FontTraits& traits);

/// The font object behind a font; a new one with the same traits where it is of another make. Null in, null out. Throws
/// comkit::ComError.
comkit::ComPtr<IFontDisp> FontDispOf(const FontPtr& font);

/// What a null font means: the system's dialog font at 8.25 points. A new one with each call.
FontPtr DefaultFont();
FontTraits DefaultFontTraits();

}  // namespace kiv::win32
