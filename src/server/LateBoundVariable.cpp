#include "server/LateBoundVariable.h"

#include "comkit/Dispatch.h"
#include "comkit/VariantReferences.h"
#include "framework/FrameworkNames.h"
#include "platform/HostError.h"
#include "server/ValueConversion.h"
#include "win32/FrameworkObjects.h"

namespace kiv::server {

namespace {

comkit::ComPtr<IDispatch> ObjectIn(const VARIANT& variant) noexcept {
    comkit::Variant direct;
    if (!comkit::IsWhole(variant) || FAILED(direct.CopyFrom(variant))) return {};
    const VARIANT& value = direct.Get();
    const bool isObject = value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN;
    return isObject ? comkit::ComPtr<IDispatch>::From(value.punkVal) : comkit::ComPtr<IDispatch>();
}

}  // namespace

LateBoundVariable::LateBoundVariable(const VARIANT& object) noexcept : m_pObject(ObjectIn(object)) {}

Value LateBoundVariable::ElementValue(std::u16string_view path) {
    // Held for the call: the callee may bring the end of whoever holds the variable.
    const comkit::ComPtr<IDispatch> variable = m_pObject;
    if (!variable) throw HostError(ErrorNumber::ObjectNotSet);
    const auto element = win32::ObjectOf(comkit::Call(*variable, vexa::Member::Element, path));
    return ValueOf(comkit::Call(*element, vexa::Member::Value).Get());
}

}  // namespace kiv::server
