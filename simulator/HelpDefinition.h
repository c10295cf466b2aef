// The framework's help definition of one control. The framework raises its events; here a host or a test does, by the
// Fire methods: FireHelpContextID(ID), FireHelpFile(Path), FireWhatsThisHelpID(ID), FireWhatsThisHelpIDs(Array).
#pragma once

#include "simulator/EventSource.h"
#include "simulator/LateBound.h"

namespace vexa {

class HelpDefinition final : public LateBoundObject<HelpDefinition> {
public:
    HelpDefinition();
    static std::span<const LateMember<HelpDefinition>> Members();
    void* FindInterface(REFIID iid) noexcept { return m_events.Find(iid); }

private:
    comkit::Variant FireHelpContextId(const LateArguments& arguments);
    comkit::Variant FireHelpFile(const LateArguments& arguments);
    comkit::Variant FireWhatsThisHelpId(const LateArguments& arguments);
    comkit::Variant FireWhatsThisHelpIds(const LateArguments& arguments);

    EventSource m_events;
};

}  // namespace vexa
