#include "screenhost/Dialogs.h"

#include <commdlg.h>

#include <algorithm>
#include <array>

#include "screenhost/WideText.h"

namespace screenhost {

std::string AskForFile(HWND owner, const std::string& suggestion, const FileKind& kind) {
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
    request.Flags = OFN_OVERWRITEPROMPT | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST;
    return GetSaveFileNameW(&request) ? Narrow(std::wstring_view(file.data())) : std::string();
}

}  // namespace screenhost
