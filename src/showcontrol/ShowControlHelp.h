// What KivShowDateTime does with the framework's help settings: it has labels only, so that help for it is the
// container's to give.
#pragma once

#include "common/VexaIntegration.h"
#include "showcontrol/ShowControlContext.h"

namespace kiv {

class ShowControlHelp final : public HelpEffects {
public:
    explicit ShowControlHelp(ShowControlContext& context) noexcept : m_context(context) {}

    void ApplyHelpContextID(std::int32_t id) override;
    void ApplyWhatsThisHelpID(std::int32_t id) override;
    void ApplyWhatsThisHelpIDs(std::span<const HelpIDText> /*ids*/) override {}

private:
    void SetOnExtender(std::u16string_view name, std::int32_t id);

    ShowControlContext& m_context;
};

}  // namespace kiv
