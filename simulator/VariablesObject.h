// The device's variables as a host hands them to a control's RefreshDisplay: Element(Path) returns an object with
// Value. The value is what the device has when it is asked for.
#pragma once

#include <string>

#include "simulator/LateBound.h"

namespace vexa {

class VariablesObject final : public LateBoundObject<VariablesObject> {
public:
    VariablesObject();
    static std::span<const LateMember<VariablesObject>> Members();

private:
    comkit::Variant Element(const LateArguments& arguments);
};

class VariableElement final : public LateBoundObject<VariableElement> {
public:
    explicit VariableElement(std::u16string path) : m_path(std::move(path)) {}
    static std::span<const LateMember<VariableElement>> Members();

private:
    comkit::Variant Value(const LateArguments&);
    std::u16string m_path;
};

}  // namespace vexa
