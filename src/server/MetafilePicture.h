// A control's picture as a metafile.
#pragma once

#include <objidl.h>

#include "win32/ControlSurface.h"

namespace kiv::server {

/// Fill a medium that its taker releases. Throw comkit::ComError.
void MakeMetafilePicture(win32::ControlSurface& surface, STGMEDIUM& out);
void MakeEnhancedMetafile(win32::ControlSurface& surface, STGMEDIUM& out);

}  // namespace kiv::server
