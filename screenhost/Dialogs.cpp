#include "screenhost/Dialogs.h"

#include <commdlg.h>

#include <algorithm>
#include <array>

#include "screenhost/WideText.h"

namespace screenhost {

namespace {

using FileDialog = BOOL(WINAPI*)(OPENFILENAMEW*);

std::string Ask(FileDialog dialog, HWND owner, const std::string& suggestion, const FileKind& kind, DWORD flags) {
    std::array<wchar_t, 1024> file{};
    std::wstring start = Wide(suggestion);
    std::ranges::replace(start, L'/', L'\\');
    start.resize(std::min(start.size(), file.size() - 1));
    std::ranges::copy(start, file.begin());
    OPENFILENAMEW request{};
    request.lStructSize = sizeof(request);
    request.hwndOwner = owner;
    request.lpstrFilter = kind.filter;
    request.lpstrFile = file.data();
    request.nMaxFile = static_cast<DWORD>(file.size());
    request.lpstrDefExt = kind.extension;
    request.Flags = flags | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST;
    return dialog(&request) ? Narrow(std::wstring_view(file.data())) : std::string();
}

}  // namespace

std::string AskForFile(HWND owner, const std::string& suggestion, const FileKind& kind) {
    return Ask(&GetSaveFileNameW, owner, suggestion, kind, OFN_OVERWRITEPROMPT);
}

std::string AskForExistingFile(HWND owner, const FileKind& kind) {
    return Ask(&GetOpenFileNameW, owner, {}, kind, OFN_FILEMUSTEXIST);
}

}  // namespace screenhost
