// The persistent state of KivShowDateTime: keys, defaults and order.
#pragma once

#include "common/Persistence.h"
#include "showcontrol/ShowControlProperties.h"

namespace kiv {

const PersistenceDescription<ShowControlProperties>& ShowControlPersistence();

}  // namespace kiv
