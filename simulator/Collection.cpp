#include "simulator/Collection.h"

#include "simulator/Simulation.h"

namespace vexa {

using comkit::Variant;

Collection::Collection() {
    Simulation::CheckInjectedFailure();
}

std::span<const LateMember<Collection>> Collection::Members() {
    static constexpr LateMember<Collection> members[] = {
        {L"Item", DISPID_VALUE, CallOrGet, 1, 1, &Collection::Item},
        {L"Add", 1, CallOrGet, 1, 1, &Collection::Add},
        {L"Count", 2, CallOrGet, 0, 0, &Collection::Count},
        {L"_NewEnum", DISPID_NEWENUM, CallOrGet, 0, 0, &Collection::NewEnum},
    };
    return members;
}

Variant Collection::Add(const LateArguments& arguments) {
    Simulation::CheckInjectedFailure();
    m_objects.push_back(arguments.Object(0));
    return {};
}

Variant Collection::Item(const LateArguments& arguments) {
    Simulation::CheckInjectedFailure();
    const std::int32_t index = arguments.Long(0);
    if (index < 1 || static_cast<std::size_t>(index) > m_objects.size())
        throw SimulatorError(SimulatorError::Reason::NoSuchElement, u"the collection has no such item");
    return Variant(m_objects[static_cast<std::size_t>(index) - 1].Get());
}

Variant Collection::Count(const LateArguments&) {
    Simulation::CheckInjectedFailure();
    return Variant(static_cast<std::int32_t>(m_objects.size()));
}

Variant Collection::NewEnum(const LateArguments&) {
    Simulation::CheckInjectedFailure();
    return EnumeratorOver(m_objects);
}

}  // namespace vexa
