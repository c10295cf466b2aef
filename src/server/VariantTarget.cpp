#include "server/VariantTarget.h"

#include <utility>

#include "comkit/Errors.h"
#include "comkit/VariantReferences.h"

namespace kiv::server {

namespace {

/// The bytes of a plain value of one type are moved; a text's former owner is freed.
void Store(VARIANT& reference, VARIANT& value) {
    switch (value.vt) {
        case VT_BSTR:
            std::swap(*reference.pbstrVal, value.bstrVal);
            break;
        case VT_BOOL:
        case VT_I2:
            *reference.piVal = value.iVal;
            break;
        case VT_I4:
            *reference.plVal = value.lVal;
            break;
        case VT_R4:
            *reference.pfltVal = value.fltVal;
            break;
        case VT_R8:
        case VT_DATE:
            *reference.pdblVal = value.dblVal;
            break;
        default:
            throw comkit::ComError(DISP_E_TYPEMISMATCH);
    }
}

}  // namespace

void AssignTo(VARIANT& target, comkit::Variant value) {
    if (!comkit::IsWhole(target)) throw comkit::ComError(E_POINTER);
    if (!(target.vt & VT_BYREF)) {
        comkit::ThrowIfFailed(VariantClear(&target));
        target = value.Detach();
    } else if (target.vt == (VT_BYREF | VT_VARIANT)) {
        AssignTo(*target.pvarVal, std::move(value));
    } else {
        const auto type = static_cast<VARTYPE>(target.vt & ~VT_BYREF);
        comkit::ThrowIfFailed(VariantChangeType(&value.Get(), &value.Get(), 0, type));
        Store(target, value.Get());
    }
}

}  // namespace kiv::server
