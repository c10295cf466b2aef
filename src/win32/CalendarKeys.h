// Which date a key chooses in a month calendar: the arrows a day or a week on, Page Up and Page Down a month (with Ctrl
// a year), Home and End the ends of the month.
#pragma once

#include <windows.h>

#include <optional>

#include "platform/DateTime.h"

namespace kiv::win32 {

/// Nothing for a key that chooses no date, and where the date would lie outside the calendar's years. A month that has
/// no such day gives its last one.
std::optional<CivilDate> DateAfterKey(const CivilDate& date, WPARAM key, bool control) noexcept;

}  // namespace kiv::win32
