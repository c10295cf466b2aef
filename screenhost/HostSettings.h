// What the host remembers for its user, in the registry below HKEY_CURRENT_USER. What cannot be read counts as not
// remembered, what cannot be written is forgotten.
#pragma once

#include <optional>
#include <string>

#include "screenhost/RecentFiles.h"

namespace screenhost {

class HostSettings {
public:
    static constexpr const wchar_t* OwnKey = L"Software\\Corvale\\ScreenHost";

    explicit HostSettings(std::wstring key = OwnKey) : m_key(std::move(key)) {}

    RecentFiles Recent() const;
    void SetRecent(const RecentFiles& files);
    std::optional<WindowMemory> Window() const;
    void SetWindow(const WindowMemory& memory);

private:
    std::string Read(const std::wstring& name) const;
    void Write(const std::wstring& name, const std::string& text);

    std::wstring m_key;
};

}  // namespace screenhost
