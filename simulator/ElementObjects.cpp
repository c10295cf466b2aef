#include "simulator/ElementObjects.h"

#include <utility>

#include "framework/FrameworkNames.h"

namespace vexa {

using comkit::MakeObject;
using comkit::Variant;

std::span<const LateMember<ElementControl>> ElementControl::Members() {
    static constexpr LateMember<ElementControl> members[] = {
        {Member::DataElement, 1, CallOrGet, 0, 0, &ElementControl::DataElement},
    };
    return members;
}

Variant ElementControl::DataElement(const LateArguments&) {
    m_element.control->CheckIndex(m_element.index);
    return Variant(static_cast<IDispatch*>(MakeObject<DataElementObject>(m_element).Get()));
}

std::span<const LateMember<DataElementObject>> DataElementObject::Members() {
    static constexpr LateMember<DataElementObject> members[] = {
        {Member::DataDefinition, 1, CallOrGet, 0, 0, &DataElementObject::DataDefinition},
    };
    return members;
}

Variant DataElementObject::DataDefinition(const LateArguments&) {
    m_element.control->CheckIndex(m_element.index);
    return Variant(static_cast<IDispatch*>(MakeObject<DataDefinitionObject>(m_element).Get()));
}

std::span<const LateMember<DataDefinitionObject>> DataDefinitionObject::Members() {
    static constexpr LateMember<DataDefinitionObject> members[] = {
        {Member::ReadDefinition, 1, CallOrGet, 4, 4, &DataDefinitionObject::ReadDefinition},
        {Member::WriteDefinition, 2, CallOrGet, 4, 4, &DataDefinitionObject::WriteDefinition},
        {Member::WriteValue, 3, CallOrGet, 3, 3, &DataDefinitionObject::WriteValue},
        {Member::SetWriteEnabled, 4, CallOrGet, 1, 1, &DataDefinitionObject::SetWriteEnabled},
    };
    return members;
}

Variant DataDefinitionObject::ReadDefinition(const LateArguments& arguments) {
    const ElementDefinition definition = m_element.control->ReadDefinition(m_element.index);
    arguments.Return(0, Variant(definition.lmObject));
    arguments.Return(1, Variant(definition.dataType));
    arguments.Return(2, Variant(definition.variableName));
    arguments.Return(3, Variant(definition.elementPath));
    return {};
}

Variant DataDefinitionObject::WriteDefinition(const LateArguments& arguments) {
    m_element.control->WriteDefinition(m_element.index,
                                       {arguments.Long(0), arguments.Long(1), arguments.Text(2), arguments.Text(3)});
    return {};
}

Variant DataDefinitionObject::WriteValue(const LateArguments& arguments) {
    m_element.control->WriteValue(m_element.index, arguments.Text(0), arguments.Text(1), arguments.Text(2));
    return {};
}

Variant DataDefinitionObject::SetWriteEnabled(const LateArguments& arguments) {
    m_element.control->SetWriteEnabled(m_element.index, arguments.Boolean(0));
    return {};
}

}  // namespace vexa
