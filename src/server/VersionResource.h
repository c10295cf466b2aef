// The version that the server's own version resource tells.
#pragma once

#include "pages/AboutBox.h"

namespace kiv::server {

/// Major, minor, and the third number of the file version. Throws comkit::ComError.
VersionNumbers OwnVersion();

}  // namespace kiv::server
