// What the parts of KivShowDateTime share; see ControlContext.
#pragma once

#include "common/ControlContext.h"
#include "platform/ShowPlatform.h"
#include "showcontrol/ShowControlEvents.h"
#include "showcontrol/ShowControlLabels.h"
#include "showcontrol/ShowControlState.h"

namespace kiv {

class ShowControlContext final
    : public ControlContext<ShowPlatform, ShowControlEvents, ShowControlLabels, ShowControlState> {
public:
    ShowControlContext(const ShowPlatform& platform, ShowControlEvents& events)
        : ControlContext(platform, events, std::make_unique<ShowControlLabels>(platform.area)) {}

    LabelArea& Area() const { return Platform().area; }

    /// The control needs saving, and nobody is told; silent while properties are loaded.
    void MarkDirty() {
        if (State().IsLoading()) return;
        Life().CallOut([&] { Platform().container.MarkDirty(); });
    }
};

}  // namespace kiv
