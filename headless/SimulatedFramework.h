// The simulated framework and device, as a control sees a framework: the portable counterpart of reaching them by name
// through COM. The simulation must outlive the hidden controls.
#pragma once

#include <memory>

#include "platform/Framework.h"
#include "simulator/FrameworkSimulation.h"

namespace kiv::headless {

class SimulatedFramework final : public Framework {
public:
    explicit SimulatedFramework(vexa::FrameworkSimulation& simulation) : m_simulation(simulation) {}

    std::unique_ptr<HiddenControl> CreateHiddenControl(std::int16_t elementCount,
                                                       DeviceValueListener& listener) override;
    CollectionPtr CreateCollection() override;
    HelpDefinitionPtr CreateHelpDefinition() override;

private:
    vexa::FrameworkSimulation& m_simulation;
};

}  // namespace kiv::headless
