// Values of the core as VARIANTs, and back.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include "comkit/Variant.h"
#include "platform/Value.h"

namespace kiv::server {

/// What the core has no form for (arrays, foreign objects, Null, ...) becomes Unsupported. Unsigned 32-bit numbers are
/// taken bit for bit, as colours are written that way. Never fails but for want of memory.
Value ValueOf(const VARIANT& original);

/// Throws comkit::ComError where a font cannot be made.
comkit::Variant VariantOf(const Value& value);

/// Equal in kind, or equal as whole numbers of different width.
bool SameValue(const Value& left, const Value& right);

}  // namespace kiv::server
