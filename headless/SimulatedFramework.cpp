#include "headless/SimulatedFramework.h"

#include <string>

#include "headless/HeadlessHelp.h"

namespace kiv::headless {

namespace {

class SimulatedDefinition final : public DataDefinition {
public:
    SimulatedDefinition(std::shared_ptr<vexa::HiddenControlModel> model, std::int16_t index)
        : m_model(std::move(model)), m_index(index) {}

    DataElementBinding ReadDefinition() override {
        const vexa::ElementDefinition definition = m_model->ReadDefinition(m_index);
        return {definition.lmObject, definition.dataType, definition.variableName, definition.elementPath};
    }
    void WriteDefinition(const DataElementBinding& binding) override {
        m_model->WriteDefinition(m_index,
                                 {binding.lmObject, binding.dataType, binding.variableName, binding.elementPath});
    }
    void WriteValue(std::u16string_view text, std::u16string_view display, std::u16string_view use) override {
        m_model->WriteValue(m_index, text, display, use);
    }
    void SetWriteEnabled(bool enabled) override { m_model->SetWriteEnabled(m_index, enabled); }

private:
    std::shared_ptr<vexa::HiddenControlModel> m_model;
    std::int16_t m_index;
};

class SimulatedElement final : public DataElement {
public:
    SimulatedElement(std::shared_ptr<vexa::HiddenControlModel> model, std::int16_t index)
        : m_definition(std::make_shared<SimulatedDefinition>(std::move(model), index)) {}
    std::shared_ptr<DataDefinition> Definition() override { return m_definition; }

private:
    std::shared_ptr<DataDefinition> m_definition;
};

class SimulatedElementControl final : public ElementControl {
public:
    SimulatedElementControl(std::shared_ptr<vexa::HiddenControlModel> model, std::int16_t index)
        : m_model(std::move(model)), m_index(index) {}
    DataElementPtr Data() override { return std::make_shared<SimulatedElement>(m_model, m_index); }

private:
    std::shared_ptr<vexa::HiddenControlModel> m_model;
    std::int16_t m_index;
};

class SimulatedWalk final : public ElementWalk {
public:
    explicit SimulatedWalk(std::shared_ptr<vexa::HiddenControlModel> model) : m_model(std::move(model)) {}
    std::unique_ptr<ElementControl> Next() override {
        if (m_next >= m_model->ElementCount()) return nullptr;
        return std::make_unique<SimulatedElementControl>(m_model, m_next++);
    }

private:
    std::shared_ptr<vexa::HiddenControlModel> m_model;
    std::int16_t m_next = 0;
};

class SimulatedHidden final : public HiddenControl {
public:
    explicit SimulatedHidden(std::shared_ptr<vexa::HiddenControlModel> model) : m_model(std::move(model)) {}
    ~SimulatedHidden() override { m_model->Close(); }
    SimulatedHidden(const SimulatedHidden&) = delete;
    SimulatedHidden& operator=(const SimulatedHidden&) = delete;

    DataElementPtr Element(std::int16_t index) override {
        m_model->CheckIndex(index);
        return std::make_shared<SimulatedElement>(m_model, index);
    }
    std::unique_ptr<ElementWalk> Elements() override { return std::make_unique<SimulatedWalk>(m_model); }

private:
    std::shared_ptr<vexa::HiddenControlModel> m_model;
};

}  // namespace

CollectionPtr SimulatedFramework::CreateCollection() {
    return std::make_shared<HeadlessCollection>([](const std::string&) {});
}

HelpDefinitionPtr SimulatedFramework::CreateHelpDefinition() {
    return std::make_shared<HeadlessHelp>([](const std::string&) {});
}

std::unique_ptr<HiddenControl> SimulatedFramework::CreateHiddenControl(std::int16_t elementCount,
                                                                       DeviceValueListener& listener) {
    auto model = m_simulation.CreateHiddenControl(
        [&listener](std::int16_t index, const std::u16string& value) { listener.OnValueReceived(index, value); });
    model->SetElementCount(elementCount);
    return std::make_unique<SimulatedHidden>(std::move(model));
}

}  // namespace kiv::headless
