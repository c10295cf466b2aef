// Between a screen file's font and the system's font object.
#pragma once

#include <optional>

#include "comkit/ComPtr.h"
#include "screenhost/ScreenValue.h"

struct IFontDisp;

namespace screenhost {

/// Throws ComError.
comkit::ComPtr<IFontDisp> MakeFontObject(const FontSpec& wanted);

/// Nothing when the object is no font.
std::optional<FontSpec> ReadFontObject(IUnknown* object);

/// The font that the system uses for messages, which is the host's own.
FontSpec SystemMessageFont();

}  // namespace screenhost
