// Reading of what late-bound objects hand out, by OLE's own conversions.
#pragma once

#include <oleauto.h>

#include "comkit/Errors.h"
#include "comkit/Variant.h"

namespace kiv::win32 {

/// Follows references. Throws comkit::ComError when the value does not convert.
inline comkit::Variant ConvertedTo(VARTYPE type, const VARIANT& value) {
    comkit::Variant result;
    // The function takes its source without const and leaves it alone.
    comkit::ThrowIfFailed(VariantChangeType(result.Put(), const_cast<VARIANT*>(&value), 0, type));
    return result;
}

inline std::int32_t NumberOf(const VARIANT& value) {
    return ConvertedTo(VT_I4, value).Get().lVal;
}

inline std::u16string TextOf(const VARIANT& value) {
    const comkit::Variant text = ConvertedTo(VT_BSTR, value);
    return std::u16string(comkit::ViewOf(text.Get().bstrVal));
}

}  // namespace kiv::win32
