// IEnumVARIANT over objects, for _NewEnum.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <utility>
#include <vector>

#include "comkit/Enumerator.h"
#include "comkit/Variant.h"

namespace vexa {

using ObjectList = std::vector<comkit::ComPtr<IDispatch>>;

namespace detail {
inline void ObjectToVariant(const comkit::ComPtr<IDispatch>& object, VARIANT& element) {
    element = comkit::Variant(object.Get()).Detach();
}
inline void ClearVariant(VARIANT& element) noexcept {
    VariantClear(&element);
}
}  // namespace detail

using ObjectEnumerator = comkit::Enumerator<IEnumVARIANT, VARIANT, comkit::ComPtr<IDispatch>, &detail::ObjectToVariant,
                                            &detail::ClearVariant>;

/// What _NewEnum returns.
inline comkit::Variant EnumeratorOver(ObjectList objects) {
    const auto enumerator = comkit::MakeObject<ObjectEnumerator>(std::move(objects));
    return comkit::Variant(static_cast<IUnknown*>(enumerator.Get()));
}

}  // namespace vexa
