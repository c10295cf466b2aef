// Text on the system's clipboard.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace screenhost {

/// False when another program holds the clipboard.
bool PutClipboardText(HWND owner, std::string_view text);
/// Empty where there is no text.
std::string GetClipboardText(HWND owner);

}  // namespace screenhost
