#include "win32/ApplicationHelpFile.h"

#include <htmlhelp.h>

#include "comkit/Bstr.h"

namespace kiv::win32 {

namespace {

using HtmlHelpFunction = HWND(WINAPI*)(HWND, LPCWSTR, UINT, DWORD_PTR);

// Controls may live in several apartments.
SRWLOCK g_lock = SRWLOCK_INIT;
std::wstring g_file;
ApplicationHelpFile::Viewer g_viewer = nullptr;

class Lock {
public:
    Lock() noexcept { AcquireSRWLockExclusive(&g_lock); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
    ~Lock() { ReleaseSRWLockExclusive(&g_lock); }
};

bool HasExtension(const std::wstring& file, const wchar_t* extension) noexcept {
    const std::size_t dot = file.find_last_of(L'.');
    return dot != std::wstring::npos && lstrcmpiW(file.c_str() + dot, extension) == 0;
}

/// Full path; empty where there is no such file.
std::wstring FindFile(const std::wstring& file) {
    if (file.empty()) return {};
    const DWORD length = SearchPathW(nullptr, file.c_str(), nullptr, 0, nullptr, nullptr);
    std::wstring found(length, L'\0');
    found.resize(SearchPathW(nullptr, file.c_str(), nullptr, length, found.data(), nullptr));
    return found;
}

/// Null where the system has none. The control works on threads of its own: it stays loaded.
HtmlHelpFunction FindHtmlHelp() noexcept {
    static const HMODULE library = LoadLibraryExW(L"hhctrl.ocx", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (!library) return nullptr;
    return reinterpret_cast<HtmlHelpFunction>(reinterpret_cast<void*>(GetProcAddress(library, "HtmlHelpW")));
}

bool ShowHtmlHelp(const std::wstring& file, const HelpRequest& request) {
    const HtmlHelpFunction htmlHelp = FindHtmlHelp();
    if (!htmlHelp) return false;
    const auto topic = static_cast<DWORD_PTR>(static_cast<std::uint32_t>(request.topic));
    if (!request.popUp) return htmlHelp(request.asking, file.c_str(), HH_HELP_CONTEXT, topic) != nullptr;
    RECT area{};
    GetWindowRect(request.asking, &area);
    HH_POPUP popUp{};
    popUp.cbStruct = sizeof(popUp);
    popUp.idString = static_cast<UINT>(request.topic);
    popUp.pt = {(area.left + area.right) / 2, area.top};
    popUp.clrForeground = popUp.clrBackground = static_cast<COLORREF>(-1);
    popUp.rcMargins = {-1, -1, -1, -1};
    // Where help compilers put the texts of pop-ups.
    const std::wstring texts = file + L"::/cshelp.txt";
    return htmlHelp(request.asking, texts.c_str(), HH_DISPLAY_TEXT_POPUP, reinterpret_cast<DWORD_PTR>(&popUp)) !=
           nullptr;
}

bool ShowBySystem(const std::wstring& file, const HelpRequest& request) {
    if (HasExtension(file, L".chm")) return ShowHtmlHelp(file, request);
    if (!HasExtension(file, L".hlp")) return false;
    return WinHelpW(request.asking, file.c_str(), request.popUp ? HELP_CONTEXTPOPUP : HELP_CONTEXT,
                    static_cast<ULONG_PTR>(static_cast<std::uint32_t>(request.topic))) != FALSE;
}

}  // namespace

void ApplicationHelpFile::SetHelpFile(std::u16string_view path) {
    std::wstring file(comkit::ToWide(path));
    const Lock lock;
    g_file.swap(file);
}

bool ApplicationHelpFile::Show(const HelpRequest& request) {
    if (request.topic == 0) return false;
    std::wstring file;
    Viewer viewer = nullptr;
    {
        const Lock lock;
        file = g_file;
        viewer = g_viewer;
    }
    file = FindFile(file);
    if (file.empty()) return false;
    return viewer ? viewer(file, request) : ShowBySystem(file, request);
}

void ApplicationHelpFile::UseViewer(Viewer viewer) noexcept {
    const Lock lock;
    g_viewer = viewer;
}

}  // namespace kiv::win32
