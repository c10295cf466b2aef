// What a designer's property list needs to know of a property's type, as the type library tells it.
#pragma once

#include <oaidl.h>

#include <string>
#include <vector>

namespace kiv::server {

struct PropertyType {
    enum class Kind { Other, Color, Font, Enumeration };
    struct NamedValue {
        std::wstring name;
        LONG value = 0;
    };

    Kind kind = Kind::Other;
    std::vector<NamedValue> values;  ///< of an enumeration, in their order

    /// Null where the value has no name.
    const NamedValue* Find(LONG value) const noexcept;
};

/// interfaceType describes the interface that has the property. Throws comkit::ComError: DISP_E_MEMBERNOTFOUND where
/// there is no property of this number that can be put.
PropertyType TypeOfProperty(ITypeInfo& interfaceType, DISPID property);

/// The kinds of all properties that can be put, each kind once.
std::vector<PropertyType::Kind> KindsOfProperties(ITypeInfo& interfaceType);

}  // namespace kiv::server
