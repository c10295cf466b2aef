#include "simulator/VariablesObject.h"

#include "simulator/Simulation.h"

namespace vexa {

using comkit::MakeObject;
using comkit::Variant;

namespace {

std::u16string ReadPath(std::u16string_view path) {
    Simulation::CheckInjectedFailure();
    VariableAddress address;
    address.path = path;
    return Simulation::Instance().Device().Read(address);
}

}  // namespace

VariablesObject::VariablesObject() {
    Simulation::CheckInjectedFailure();
}

std::span<const LateMember<VariablesObject>> VariablesObject::Members() {
    static constexpr LateMember<VariablesObject> members[] = {
        {L"Element", DISPID_VALUE, CallOrGet, 1, 1, &VariablesObject::Element},
    };
    return members;
}

/// An unknown path fails here, not when the value is asked for.
Variant VariablesObject::Element(const LateArguments& arguments) {
    std::u16string path = arguments.Text(0);
    ReadPath(path);
    return Variant(static_cast<IDispatch*>(MakeObject<VariableElement>(std::move(path)).Get()));
}

std::span<const LateMember<VariableElement>> VariableElement::Members() {
    static constexpr LateMember<VariableElement> members[] = {
        {L"Value", DISPID_VALUE, CallOrGet, 0, 0, &VariableElement::Value},
    };
    return members;
}

Variant VariableElement::Value(const LateArguments&) {
    return Variant(ReadPath(m_path));
}

}  // namespace vexa
