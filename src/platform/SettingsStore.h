// A store of settings per machine, shaped like the registry: keys with named values.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/Value.h"

namespace kiv {

/// An open key; closed when destroyed.
class SettingsKey {
public:
    virtual ~SettingsKey() = default;
    /// Throws when there is no such value.
    virtual Value QueryValue(std::u16string_view name) = 0;
    /// Throws when the value cannot be stored. Stored as a 32-bit number.
    virtual void SetNumber(std::u16string_view name, std::int32_t value) = 0;
};

class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    /// Opens a key of the local machine with full access. Throws when it does not exist or may not be opened.
    virtual std::unique_ptr<SettingsKey> OpenKey(std::u16string_view path) = 0;
    /// The same, creating the key where it is missing.
    virtual std::unique_ptr<SettingsKey> CreateKey(std::u16string_view path) = 0;
};

}  // namespace kiv
