#include "server/PropertyType.h"

#include <ocidl.h>

#include <algorithm>
#include <optional>

#include "comkit/Bstr.h"
#include "comkit/ComPtr.h"
#include "server/TypeDescriptions.h"

namespace kiv::server {

namespace {

using Kind = PropertyType::Kind;

// OLE_COLOR of the standard library of OLE automation: a colour is known by the name of its type alone.
constexpr GUID ColorType{0x66504301, 0xBE0F, 0x101A, {0x8B, 0xBB, 0x00, 0xAA, 0x00, 0x30, 0x0C, 0xAB}};

bool IsPut(const FUNCDESC& function) noexcept {
    return (function.invkind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF)) != 0 && function.cParams > 0;
}

const TYPEDESC& ValueType(const FUNCDESC& put) noexcept {
    const TYPEDESC* type = &put.lprgelemdescParam[put.cParams - 1].tdesc;
    while (type->vt == VT_PTR) type = type->lptdesc;
    return *type;
}

std::vector<PropertyType::NamedValue> NamedValues(ITypeInfo& enumeration) {
    std::vector<PropertyType::NamedValue> values;
    const WORD count = TypeAttributes(enumeration)->cVars;
    for (UINT i = 0; i < count; ++i) {
        const VariableDescription constant(enumeration, i);
        comkit::Bstr name;
        comkit::ThrowIfFailed(enumeration.GetDocumentation(constant->memid, name.Put(), nullptr, nullptr, nullptr));
        values.push_back({std::wstring(comkit::ToWide(name.View())), constant->lpvarValue->lVal});
    }
    return values;
}

PropertyType Resolve(ITypeInfo& owner, const TYPEDESC& type) {
    if (type.vt != VT_USERDEFINED) return {};
    comkit::ComPtr<ITypeInfo> named;
    comkit::ThrowIfFailed(owner.GetRefTypeInfo(type.hreftype, named.Put()));
    const TypeAttributes attributes(*named);
    if (IsEqualGUID(attributes->guid, ColorType)) return {Kind::Color, {}};
    if (IsEqualGUID(attributes->guid, IID_IFontDisp)) return {Kind::Font, {}};
    if (attributes->typekind == TKIND_ENUM) return {Kind::Enumeration, NamedValues(*named)};
    if (attributes->typekind == TKIND_ALIAS) return Resolve(*named, attributes->tdescAlias);
    return {};
}

}  // namespace

const PropertyType::NamedValue* PropertyType::Find(LONG value) const noexcept {
    const auto found = std::ranges::find(values, value, &NamedValue::value);
    return found == values.end() ? nullptr : &*found;
}

PropertyType TypeOfProperty(ITypeInfo& interfaceType, DISPID property) {
    const WORD count = TypeAttributes(interfaceType)->cFuncs;
    for (UINT i = 0; i < count; ++i) {
        const FunctionDescription function(interfaceType, i);
        if (function->memid == property && IsPut(*function)) return Resolve(interfaceType, ValueType(*function));
    }
    throw comkit::ComError(DISP_E_MEMBERNOTFOUND);
}

std::vector<Kind> KindsOfProperties(ITypeInfo& interfaceType) {
    std::vector<Kind> kinds;
    const WORD count = TypeAttributes(interfaceType)->cFuncs;
    for (UINT i = 0; i < count; ++i) {
        const FunctionDescription function(interfaceType, i);
        if (!IsPut(*function)) continue;
        const Kind kind = Resolve(interfaceType, ValueType(*function)).kind;
        if (std::ranges::find(kinds, kind) == kinds.end()) kinds.push_back(kind);
    }
    return kinds;
}

}  // namespace kiv::server
