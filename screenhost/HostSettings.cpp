#include "screenhost/HostSettings.h"

#include <windows.h>

#include "comkit/Handle.h"
#include "screenhost/WideText.h"

namespace screenhost {

namespace {

constexpr const wchar_t* WindowValue = L"Window";
constexpr DWORD LongestText = 64 * 1024;  // bytes

std::wstring RecentValue(std::size_t index) {
    return L"Recent" + std::to_wstring(index + 1);
}

}  // namespace

std::string HostSettings::Read(const std::wstring& name) const {
    DWORD bytes = 0;
    const auto get = [&](wchar_t* buffer) {
        return RegGetValueW(HKEY_CURRENT_USER, m_key.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr, buffer, &bytes);
    };
    if (get(nullptr) != ERROR_SUCCESS || bytes == 0 || bytes > LongestText) return {};
    std::wstring text(bytes / sizeof(wchar_t), L'\0');
    if (get(text.data()) != ERROR_SUCCESS) return {};
    return Narrow(std::wstring_view(text.c_str()));
}

void HostSettings::Write(const std::wstring& name, const std::string& text) {
    comkit::UniqueRegKey key;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, m_key.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, key.Put(), nullptr) !=
        ERROR_SUCCESS)
        return;
    const std::wstring wide = Wide(text);
    const auto bytes = static_cast<DWORD>((wide.size() + 1) * sizeof(wchar_t));
    if (text.empty())
        RegDeleteValueW(key.Get(), name.c_str());
    else
        RegSetValueExW(key.Get(), name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(wide.c_str()), bytes);
}

RecentFiles HostSettings::Recent() const {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < RecentFiles::Most; ++i) names.push_back(Read(RecentValue(i)));
    return RecentFiles(names);
}

void HostSettings::SetRecent(const RecentFiles& files) {
    for (std::size_t i = 0; i < RecentFiles::Most; ++i)
        Write(RecentValue(i), i < files.Names().size() ? files.Names()[i] : std::string());
}

std::optional<WindowMemory> HostSettings::Window() const {
    return ParseWindowMemory(Read(WindowValue));
}

void HostSettings::SetWindow(const WindowMemory& memory) {
    Write(WindowValue, FormatWindowMemory(memory));
}

}  // namespace screenhost
