// Reading of what late-bound objects hand out, by OLE's own conversions.
#pragma once

#include <oleauto.h>

#include "comkit/Errors.h"
#include "comkit/Variant.h"
#include "comkit/VariantReferences.h"

namespace kiv::win32 {

/// Follows references. Throws comkit::ComError when the value does not convert.
inline comkit::Variant ConvertedTo(VARTYPE type, const VARIANT& value) {
    comkit::Variant result;
    comkit::ThrowIfFailed(comkit::IsWhole(value) ? result.ConvertFrom(value, type) : DISP_E_TYPEMISMATCH);
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
