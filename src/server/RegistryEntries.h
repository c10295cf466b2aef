// What the server writes into the registry, as data. Keys are relative to the root of all classes.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kiv::server {

struct RegistryEntry {
    std::wstring key;
    std::wstring name;                 ///< empty: the key's default value
    std::optional<std::wstring> text;  ///< nothing: the key alone
    /// Serves the server of the other bitness too, which sees the same key.
    bool shared = false;
};

/// serverFile is the full path of the server. Throws comkit::ComError.
std::vector<RegistryEntry> ServerEntries(const std::wstring& serverFile);

/// The keys, below the root of all classes, whose presence tells that a server is registered.
std::vector<std::wstring> ServerKeys();

}  // namespace kiv::server
