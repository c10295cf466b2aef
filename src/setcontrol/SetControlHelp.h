// What KivSetDateTime does with the framework's help settings, and which child takes the focus for it.
#pragma once

#include "common/VexaIntegration.h"
#include "setcontrol/SetControlContext.h"

namespace kiv {

class SetControlHelp final : public HelpEffects {
public:
    /// An array of help IDs counts only where it has one for each part.
    static constexpr std::size_t PartCount = 6;

    explicit SetControlHelp(SetControlContext& context) noexcept : m_context(context) {}

    /// For the children that take input.
    void ApplyHelpContextID(std::int32_t id) override;
    /// For all children.
    void ApplyWhatsThisHelpID(std::int32_t id) override;
    /// Outer frame, box for the PC's clock, inner frame, daylight-saving box, calendar, time field.
    void ApplyWhatsThisHelpIDs(std::span<const HelpIDText> ids) override;

    /// The calendar where it is shown, the time field otherwise.
    void SetFocus();

private:
    SetControlContext& m_context;
};

}  // namespace kiv
