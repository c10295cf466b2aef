// A control's picture as a metafile.
#pragma once

#include <objidl.h>

#include "win32/HostedSurface.h"

namespace kiv::server {

/// Fill a medium that its taker releases. Throw comkit::ComError.
void MakeMetafilePicture(win32::HostedSurface& surface, STGMEDIUM& out);
void MakeEnhancedMetafile(win32::HostedSurface& surface, STGMEDIUM& out);

}  // namespace kiv::server
