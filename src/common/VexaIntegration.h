// What a control has of the framework while it is in run mode, beside its bindings: the help object, whose events it
// hears, and the collection of its data elements.
//
// Every call into the framework may fail, come back, or end the control; failures are swallowed step by step. A Stop or
// another Start in the middle of a Start ends the first one, and nothing of it stays.
#pragma once

#include <cstdint>

#include "common/ControlEntry.h"
#include "common/FrameworkLink.h"
#include "common/Lifeline.h"
#include "platform/FrameworkHelp.h"

namespace kiv {

/// What a control does with the framework's help settings; the help file is not its own affair. Failures are swallowed
/// in each step.
class HelpEffects {
public:
    virtual ~HelpEffects() = default;
    virtual void ApplyHelpContextID(std::int32_t id) = 0;
    virtual void ApplyWhatsThisHelpID(std::int32_t id) = 0;
    virtual void ApplyWhatsThisHelpIDs(std::span<const HelpIDText> ids) = 0;
};

class VexaIntegration final : private HelpListener {
public:
    struct World {
        Framework& framework;
        ApplicationHelp& help;
        const Lifeline& life;
    };

    /// All of them outlive this object's use.
    VexaIntegration(ControlEntry& control, const World& world, FrameworkLink& link, HelpEffects& effects);

    /// Makes the help object and the collection. Started again, it keeps the help object and makes another collection.
    void Start();
    /// Lets go of both.
    void Stop() noexcept;

    FrameworkObjectPtr HelpObject() const noexcept { return m_pHelpObject; }
    FrameworkObjectPtr SubElements() const noexcept { return m_pSubElements; }

private:
    void CreateHelpObject(std::uint32_t run);
    void ReleaseHelpObject() noexcept;
    void BuildSubElements(std::uint32_t run);
    void AddIfNamed(ElementControl& control, Collection& collection) const;
    void ReleaseSubElements() noexcept;

    void OnHelpContextIDChange(std::int32_t id) override;
    void OnHelpFileChange(std::u16string_view path) override;
    void OnWhatsThisHelpIDChange(std::int32_t id) override;
    void OnWhatsThisHelpIDsChange(std::span<const HelpIDText> ids) override;

    ControlEntry& m_control;
    World m_world;
    FrameworkLink& m_link;
    HelpEffects& m_effects;
    HelpDefinitionPtr m_pHelpObject;
    CollectionPtr m_pSubElements;
    std::uint32_t m_lRun = 0;  ///< counts starts and stops
};

}  // namespace kiv
