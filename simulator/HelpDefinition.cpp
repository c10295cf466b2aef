#include "simulator/HelpDefinition.h"

#include "comkit/Errors.h"
#include "simulator/Simulation.h"
#include "Vexa.h"

namespace vexa {

using comkit::Variant;

namespace {
enum Event : DISPID { HelpContextIdChange = 1, HelpFileChange, WhatsThisHelpIdChange, WhatsThisHelpIdsChange };
}

HelpDefinition::HelpDefinition() : m_events(*Identity(), DIID_HelpDefinitionEvents) {
    Simulation::CheckInjectedFailure();
}

std::span<const LateMember<HelpDefinition>> HelpDefinition::Members() {
    static constexpr LateMember<HelpDefinition> members[] = {
        {L"FireHelpContextID", 1, CallOrGet, 1, 1, &HelpDefinition::FireHelpContextId},
        {L"FireHelpFile", 2, CallOrGet, 1, 1, &HelpDefinition::FireHelpFile},
        {L"FireWhatsThisHelpID", 3, CallOrGet, 1, 1, &HelpDefinition::FireWhatsThisHelpId},
        {L"FireWhatsThisHelpIDs", 4, CallOrGet, 1, 1, &HelpDefinition::FireWhatsThisHelpIds},
    };
    return members;
}

Variant HelpDefinition::FireHelpContextId(const LateArguments& arguments) {
    m_events.Fire(HelpContextIdChange, arguments.Long(0));
    return {};
}

Variant HelpDefinition::FireHelpFile(const LateArguments& arguments) {
    m_events.Fire(HelpFileChange, arguments.Text(0));
    return {};
}

Variant HelpDefinition::FireWhatsThisHelpId(const LateArguments& arguments) {
    m_events.Fire(WhatsThisHelpIdChange, arguments.Long(0));
    return {};
}

Variant HelpDefinition::FireWhatsThisHelpIds(const LateArguments& arguments) {
    Variant ids = arguments.Value(0);
    if ((ids.Type() & VT_ARRAY) == 0) throw comkit::ComError(DISP_E_TYPEMISMATCH);
    m_events.Send(WhatsThisHelpIdsChange, &ids.Get(), 1);
    return {};
}

}  // namespace vexa
