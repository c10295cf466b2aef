// Settings of the machine: through the framework's registry object where that is installed, otherwise in the Windows
// registry, below HKEY_LOCAL_MACHINE. Failures are comkit::ComError. Numbers are stored as REG_DWORD.
#pragma once

#include "platform/SettingsStore.h"

namespace kiv::win32 {

class RegistrySettings final : public SettingsStore {
public:
    std::unique_ptr<SettingsKey> OpenKey(std::u16string_view path) override;
    std::unique_ptr<SettingsKey> CreateKey(std::u16string_view path) override;
};

}  // namespace kiv::win32
