// The events of KivShowDateTime, as the control raises them.
#pragma once

#include "common/ControlEvents.h"

namespace kiv {

class ShowControlEvents : public ControlEvents {
public:
    /// The shown text changed, whether by new data or by a setting.
    virtual void ValueChange() = 0;
};

}  // namespace kiv
