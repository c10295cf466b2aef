#include "common/VexaIntegration.h"

#include <memory>
#include <utility>

#include "common/Attempt.h"

namespace kiv {

VexaIntegration::VexaIntegration(ControlEntry& control, const World& world, FrameworkLink& link, HelpEffects& effects)
    : m_control(control), m_world(world), m_link(link), m_effects(effects) {}

void VexaIntegration::Start() {
    const std::uint32_t run = ++m_lRun;
    CreateHelpObject(run);
    if (m_lRun == run) BuildSubElements(run);
}

void VexaIntegration::Stop() noexcept {
    ++m_lRun;
    ReleaseSubElements();
    ReleaseHelpObject();
}

void VexaIntegration::CreateHelpObject(std::uint32_t run) {
    if (m_pHelpObject) return;
    HelpDefinitionPtr help;
    Attempt([&] { help = m_world.life.CallOut([&] { return m_world.framework.CreateHelpDefinition(); }); });
    if (!help || m_lRun != run) return;
    m_pHelpObject = help;
    Attempt([&] { m_world.life.CallOut([&] { help->Attach(*this); }); });
    // Released while it was being attached: that was too early for the events.
    if (m_pHelpObject != help) help->Detach();
}

void VexaIntegration::ReleaseHelpObject() noexcept {
    const HelpDefinitionPtr help = std::move(m_pHelpObject);
    if (help) help->Detach();
}

void VexaIntegration::BuildSubElements(std::uint32_t run) {
    ReleaseSubElements();
    CollectionPtr collection;
    Attempt([&] { collection = m_world.life.CallOut([&] { return m_world.framework.CreateCollection(); }); });
    if (!collection || m_lRun != run) return;
    std::unique_ptr<ElementWalk> elements;
    Attempt([&] {
        if (m_link.Answers()) elements = m_link.Elements();
    });
    while (elements && m_lRun == run) {
        std::unique_ptr<ElementControl> control;
        Attempt([&] { control = m_world.life.CallOut([&] { return elements->Next(); }); });
        if (!control) break;
        Attempt([&] { AddIfNamed(*control, *collection); });
    }
    if (m_lRun == run) m_pSubElements = collection;
}

void VexaIntegration::AddIfNamed(ElementControl& control, Collection& collection) const {
    const DataElementPtr element = m_world.life.CallOut([&] { return control.Data(); });
    // Blanks are a name here.
    if (!element || m_link.Read(element).variableName.empty()) return;
    m_world.life.CallOut([&] { collection.Add(element); });
}

void VexaIntegration::ReleaseSubElements() noexcept {
    const CollectionPtr collection = std::move(m_pSubElements);
    if (collection) Attempt([&] { collection->Walk(); });
}

void VexaIntegration::OnHelpContextIDChange(std::int32_t id) {
    m_control.Enter([&] { m_effects.ApplyHelpContextID(id); });
}

void VexaIntegration::OnHelpFileChange(std::u16string_view path) {
    m_control.Enter([&] { Attempt([&] { m_world.life.CallOut([&] { m_world.help.SetHelpFile(path); }); }); });
}

void VexaIntegration::OnWhatsThisHelpIDChange(std::int32_t id) {
    m_control.Enter([&] { m_effects.ApplyWhatsThisHelpID(id); });
}

void VexaIntegration::OnWhatsThisHelpIDsChange(std::span<const HelpIDText> ids) {
    m_control.Enter([&] { m_effects.ApplyWhatsThisHelpIDs(ids); });
}

}  // namespace kiv
