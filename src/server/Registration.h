// The server in the registry: for the machine or for the current user alone.
//
// Registering is all or nothing: a failure puts everything back and is reported as it came. Unregistering takes away
// exactly what registering wrote, and the keys that are empty then; what the server of the other bitness still needs
// stays until that one goes.
#pragma once

namespace kiv::server {

enum class RegistrationScope { Machine, User };

/// Both throw comkit::ComError.
void RegisterServer(RegistrationScope scope);
void UnregisterServer(RegistrationScope scope);

}  // namespace kiv::server
