// The system's own dialogs.
#pragma once

#include <windows.h>

#include <string>

namespace screenhost {

struct FileKind {
    const wchar_t* filter;     ///< pairs of text and pattern, as the dialog takes them
    const wchar_t* extension;  ///< without the dot
};

/// Where to save to; empty when the user changed his mind.
std::string AskForFile(HWND owner, const std::string& suggestion, const FileKind& kind);
/// What to open; empty when the user changed his mind.
std::string AskForExistingFile(HWND owner, const FileKind& kind);

}  // namespace screenhost
