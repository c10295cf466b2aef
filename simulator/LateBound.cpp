#include "simulator/LateBound.h"

#include "comkit/Errors.h"
#include "simulator/ComErrors.h"

namespace vexa {

using comkit::ComError;
using comkit::ComPtr;
using comkit::ThrowIfFailed;
using comkit::Variant;

VARIANT& LateArguments::At(std::size_t position) const {
    if (position >= Count()) throw ComError(DISP_E_PARAMNOTOPTIONAL);
    return m_params.rgvarg[Count() - 1 - position];
}

bool LateArguments::IsMissing(std::size_t position) const noexcept {
    if (position >= Count()) return true;
    const VARIANT& argument = m_params.rgvarg[Count() - 1 - position];
    return argument.vt == VT_ERROR && argument.scode == DISP_E_PARAMNOTFOUND;
}

Variant LateArguments::Value(std::size_t position) const {
    Variant value;
    ThrowIfFailed(VariantCopyInd(value.Put(), &At(position)));
    return value;
}

Variant LateArguments::Converted(std::size_t position, VARTYPE type) const {
    Variant value = Value(position);
    ThrowIfFailed(VariantChangeType(&value.Get(), &value.Get(), 0, type));
    return value;
}

std::int32_t LateArguments::Long(std::size_t position) const {
    return Converted(position, VT_I4).Get().lVal;
}

std::int16_t LateArguments::Short(std::size_t position) const {
    return Converted(position, VT_I2).Get().iVal;
}

bool LateArguments::Boolean(std::size_t position) const {
    return Converted(position, VT_BOOL).Get().boolVal != VARIANT_FALSE;
}

std::u16string LateArguments::Text(std::size_t position) const {
    return std::u16string(comkit::ViewOf(Converted(position, VT_BSTR).Get().bstrVal));
}

ComPtr<IDispatch> LateArguments::Object(std::size_t position) const {
    const Variant value = Value(position);
    if (value.Type() != VT_DISPATCH && value.Type() != VT_UNKNOWN) throw ComError(DISP_E_TYPEMISMATCH);
    IUnknown* const object = value.Get().punkVal;
    auto dispatch = ComPtr<IDispatch>::From(object);
    if (object && !dispatch) throw ComError(DISP_E_TYPEMISMATCH);
    return dispatch;
}

namespace {

/// Puts value, which has the target's type already, to where a typed by-reference argument points.
void StoreTyped(VARIANT& argument, Variant& value) {
    VARIANT& v = value.Get();
    switch (argument.vt & ~VT_BYREF) {
        case VT_I2:
            *argument.piVal = v.iVal;
            break;
        case VT_I4:
        case VT_INT:
            *argument.plVal = v.lVal;
            break;
        case VT_UI4:
        case VT_UINT:
            *argument.pulVal = v.ulVal;
            break;
        case VT_R8:
        case VT_DATE:
            *argument.pdblVal = v.dblVal;
            break;
        case VT_BOOL:
            *argument.pboolVal = v.boolVal;
            break;
        case VT_BSTR:
            SysFreeString(*argument.pbstrVal);
            *argument.pbstrVal = value.Detach().bstrVal;
            break;
        default:
            throw ComError(DISP_E_TYPEMISMATCH);
    }
}

}  // namespace

void LateArguments::Return(std::size_t position, Variant value) const {
    VARIANT* argument = &At(position);
    // A script's variable arrives as a reference to a Variant, which may hold a typed reference of its caller's.
    if (argument->vt == (VT_BYREF | VT_VARIANT)) {
        VARIANT* const target = argument->pvarVal;
        if ((target->vt & VT_BYREF) == 0) {
            ThrowIfFailed(VariantClear(target));
            *target = value.Detach();
            return;
        }
        argument = target;
    }
    if ((argument->vt & VT_BYREF) == 0) throw ComError(DISP_E_TYPEMISMATCH);
    const auto type = static_cast<VARTYPE>(argument->vt & ~VT_BYREF);
    ThrowIfFailed(VariantChangeType(&value.Get(), &value.Get(), 0, type));
    StoreTyped(*argument, value);
}

HRESULT CheckCall(WORD flags, const DISPPARAMS& params, std::size_t fewest, std::size_t most) noexcept {
    const bool isPut = (flags & PutKinds) != 0;
    if (isPut) {
        if (params.cNamedArgs != 1 || params.rgdispidNamedArgs[0] != DISPID_PROPERTYPUT) return DISP_E_PARAMNOTOPTIONAL;
    } else if (params.cNamedArgs != 0) {
        return DISP_E_NONAMEDARGS;
    }
    return params.cArgs < fewest || params.cArgs > most ? DISP_E_BADPARAMCOUNT : S_OK;
}

namespace {

void Fill(EXCEPINFO* info, const ErrorReport& report) noexcept {
    if (!info) return;
    *info = {};
    info->scode = report.result;
    // Without memory for them the number has to do.
    info->bstrSource = SysAllocString(L"VexaSimulator");
    info->bstrDescription =
        SysAllocStringLen(reinterpret_cast<const OLECHAR*>(report.text.data()), static_cast<UINT>(report.text.size()));
}

}  // namespace

HRESULT ReportCurrentException(EXCEPINFO* info) noexcept {
    const ErrorReport report = ReportOfCurrentException();
    // The caller's own mistakes are told apart from errors that a member raised.
    if (HRESULT_FACILITY(report.result) == FACILITY_DISPATCH) return report.result;
    Fill(info, report);
    return DISP_E_EXCEPTION;
}

}  // namespace vexa
