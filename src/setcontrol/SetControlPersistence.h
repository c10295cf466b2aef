// The persistent state of KivSetDateTime: keys, defaults and order.
#pragma once

#include "common/Persistence.h"
#include "setcontrol/SetControlProperties.h"

namespace kiv {

const PersistenceDescription<SetControlProperties>& SetControlPersistence();

}  // namespace kiv
