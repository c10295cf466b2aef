// The rules of the screen checker that are about one control's slots.
#pragma once

#include <vector>

#include "screenhost/ControlSchema.h"
#include "screenhost/ScreenCheck.h"

namespace screenhost {

/// Adds what it finds, in the order of the slots.
void CheckSlots(const ScreenSection& section, const ControlSchema& schema, std::vector<Finding>& findings);

}  // namespace screenhost
