// Dates and times of the core as SYSTEMTIME, and back. Milliseconds are dropped; the weekday is not filled in.
#pragma once

#include <windows.h>

#include "platform/DateTime.h"

namespace kiv::win32 {

inline SYSTEMTIME SystemTimeOf(const DateTime& value) noexcept {
    SYSTEMTIME result{};
    result.wYear = static_cast<WORD>(value.date.year);
    result.wMonth = static_cast<WORD>(value.date.month);
    result.wDay = static_cast<WORD>(value.date.day);
    result.wHour = static_cast<WORD>(value.time.hour);
    result.wMinute = static_cast<WORD>(value.time.minute);
    result.wSecond = static_cast<WORD>(value.time.second);
    return result;
}

inline DateTime DateTimeOf(const SYSTEMTIME& time) noexcept {
    return {{time.wYear, time.wMonth, time.wDay}, {time.wHour, time.wMinute, time.wSecond}};
}

}  // namespace kiv::win32
