// A walk over what an automation object enumerates.
#pragma once

#include <oaidl.h>
#include <oleauto.h>

#include <array>
#include <optional>

#include "comkit/ComPtr.h"
#include "comkit/Dispatch.h"

namespace kiv::win32 {

class VariantWalk final {
public:
    /// Throws comkit::ComError where the object enumerates nothing.
    explicit VariantWalk(IDispatch& object) {
        const comkit::Variant answer = comkit::InvokeWith(
            object, DISPID_NEWENUM, DISPATCH_METHOD | DISPATCH_PROPERTYGET, std::array<VARIANT, 0>{});
        const bool isObject = answer.Type() == VT_UNKNOWN || answer.Type() == VT_DISPATCH;
        if (isObject) m_pItems = comkit::ComPtr<IEnumVARIANT>::From(answer.Get().punkVal);
        if (!m_pItems) throw comkit::ComError(E_NOINTERFACE);
    }

    /// Nothing at the end. Throws comkit::ComError.
    std::optional<comkit::Variant> Next() {
        comkit::Variant item;
        ULONG fetched = 0;
        const HRESULT hr = m_pItems->Next(1, item.Put(), &fetched);
        comkit::ThrowIfFailed(hr);
        if (hr != S_OK || fetched != 1) return std::nullopt;
        return item;
    }

private:
    comkit::ComPtr<IEnumVARIANT> m_pItems;
};

}  // namespace kiv::win32
