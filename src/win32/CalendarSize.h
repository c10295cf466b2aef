// How large a month calendar has to be.
#pragma once

#include <windows.h>

#include "platform/Font.h"

namespace kiv::win32 {

/// The native calendar's own minimum for one month, in pixels. Measured once for each font, resolution and setting of
/// the today line, with a calendar that nobody sees. Throws comkit::ComError.
SIZE CalendarSize(const FontTraits& font, int dpi, bool showToday);

}  // namespace kiv::win32
