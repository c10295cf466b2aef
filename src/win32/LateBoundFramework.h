// The Vexa framework, reached by name (framework/FrameworkNames.h). Every failure is a comkit::ComError; where the
// framework is not installed, every answer is null.
//
// The hidden control is made with its event sink advised; letting it go unadvises the sink first, so that the listener
// hears nothing after that. The same holds for a help definition that is attached.
#pragma once

#include "platform/Framework.h"

namespace kiv::win32 {

class LateBoundFramework final : public Framework {
public:
    std::unique_ptr<HiddenControl> CreateHiddenControl(std::int16_t elementCount,
                                                       DeviceValueListener& listener) override;
    CollectionPtr CreateCollection() override;
    HelpDefinitionPtr CreateHelpDefinition() override;
};

}  // namespace kiv::win32
