// The font object that a container hands to a control, seen from inside the control.
//
// A font is shared by reference: the control, its children and the container hold the same object, and whoever holds
// it may change it in place. Traits() therefore reads the object's state at the moment of the call.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace kiv {

/// Everything about a font that is worth saving.
struct FontTraits {
    std::u16string name;
    std::int64_t size = 82500;  ///< points times 10,000, the unit of the OLE currency type
    std::int16_t weight = 400;  ///< 0..1000; 400 is regular, 700 bold
    std::int16_t charset = 0;
    bool italic = false;
    bool underline = false;
    bool strikethrough = false;
    friend bool operator==(const FontTraits&, const FontTraits&) = default;
};

class PlatformFont;  // whatever a platform makes of it

class Font {
public:
    virtual ~Font() = default;
    virtual FontTraits Traits() const = 0;
    /// By this a platform knows the fonts of its own make; null for those of any other.
    virtual PlatformFont* OfPlatform() noexcept { return nullptr; }
};

using FontPtr = std::shared_ptr<Font>;

}  // namespace kiv
