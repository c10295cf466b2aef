// What the server writes into the registry, as data. Keys are relative to the root of all classes.
#pragma once

#include <string>
#include <vector>

#include "comkit/Registration.h"

namespace kiv::server {

/// serverFile is the full path of the server. Throws comkit::ComError.
std::vector<comkit::RegistryEntry> ServerEntries(const std::wstring& serverFile);

/// The keys, below the root of all classes, whose presence tells that a server is registered.
std::vector<std::wstring> ServerKeys();

}  // namespace kiv::server
