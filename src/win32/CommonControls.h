// Makes the window classes of the month calendar and the time field known.
#pragma once

namespace kiv::win32 {

/// Cheap after the first call. Throws comkit::ComError when the system has no such classes.
void RegisterDateClasses();

}  // namespace kiv::win32
