// The choice "use the PC's clock" as it was last made on this machine, in a store of settings that all instances share.
#pragma once

#include <optional>
#include <string_view>

#include "platform/SettingsStore.h"

namespace kiv {

/// Nothing where no choice was stored or the store cannot be read.
std::optional<bool> LoadUsePCDateTimeSetting(SettingsStore& settings, std::u16string_view keyPath);

/// Failures are swallowed.
void SaveUsePCDateTimeSetting(SettingsStore& settings, std::u16string_view keyPath, bool usePC);

}  // namespace kiv
