// What a hidden control hands out: element control, its data element object, its data definition object. Each is a
// handle to one element; the elements' state lives in HiddenControlModel and outlives the hidden control while held.
#pragma once

#include <cstdint>
#include <memory>

#include "simulator/FrameworkSimulation.h"
#include "simulator/LateBound.h"

namespace vexa {

struct ElementHandle {
    std::shared_ptr<HiddenControlModel> control;
    std::int16_t index = 0;
};

class ElementControl final : public LateBoundObject<ElementControl> {
public:
    explicit ElementControl(ElementHandle element) : m_element(std::move(element)) {}
    static std::span<const LateMember<ElementControl>> Members();

private:
    comkit::Variant DataElement(const LateArguments&);
    ElementHandle m_element;
};

class DataElementObject final : public LateBoundObject<DataElementObject> {
public:
    explicit DataElementObject(ElementHandle element) : m_element(std::move(element)) {}
    static std::span<const LateMember<DataElementObject>> Members();

private:
    comkit::Variant DataDefinition(const LateArguments&);
    ElementHandle m_element;
};

class DataDefinitionObject final : public LateBoundObject<DataDefinitionObject> {
public:
    explicit DataDefinitionObject(ElementHandle element) : m_element(std::move(element)) {}
    static std::span<const LateMember<DataDefinitionObject>> Members();

private:
    comkit::Variant ReadDefinition(const LateArguments& arguments);
    comkit::Variant WriteDefinition(const LateArguments& arguments);
    comkit::Variant WriteValue(const LateArguments& arguments);
    comkit::Variant SetWriteEnabled(const LateArguments& arguments);
    ElementHandle m_element;
};

}  // namespace vexa
