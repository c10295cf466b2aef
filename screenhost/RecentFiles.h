// The screens that were used last, the newest first, and where the window stood: what the host remembers between
// sessions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace screenhost {

class RecentFiles {
public:
    static constexpr std::size_t Most = 8;

    RecentFiles() = default;
    /// As they were remembered; empty names and second mentions are left out.
    explicit RecentFiles(const std::vector<std::string>& names);

    /// Puts a file in front. Names that differ only in case are the same file. An empty name is none.
    void Add(const std::string& name);
    void Remove(std::string_view name);
    const std::vector<std::string>& Names() const noexcept { return m_names; }

private:
    std::vector<std::string> m_names;
};

/// How a file stands in a menu: with its number as access key; a long path without its middle.
std::string RecentLabel(std::size_t index, const std::string& name);

/// The window as its user left it; pixels of the screen.
struct WindowMemory {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t logHeight = 0;
    bool isMaximized = false;
    bool showsDevice = false;
    friend bool operator==(const WindowMemory&, const WindowMemory&) = default;
};

std::string FormatWindowMemory(const WindowMemory& memory);
/// Nothing for a text that is no window's: numbers missing, or sizes that no window has.
std::optional<WindowMemory> ParseWindowMemory(std::string_view text);

}  // namespace screenhost
