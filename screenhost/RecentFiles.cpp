#include "screenhost/RecentFiles.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "screenhost/TextCursor.h"

namespace screenhost {

namespace {

constexpr std::size_t LongestLabel = 60;
constexpr std::int32_t MostPixels = 32767;

/// "C:\plants\...\clock.screen"; the name of the file itself stays whole.
std::string Shortened(const std::string& path) {
    constexpr std::string_view Gap = "...";
    const std::size_t file = path.find_last_of("/\\");
    const std::size_t first = path.find_first_of("/\\", 3);
    if (path.size() <= LongestLabel || file == std::string::npos || first >= file) return path;
    std::size_t kept = path.size() - file + Gap.size();
    kept = kept < LongestLabel ? LongestLabel - kept : 0;
    const std::size_t last = path.find_last_of("/\\", kept);
    const std::size_t end = last == std::string::npos ? first : std::max(first, last);
    if (end >= file) return path;
    // Not through the middle of a character: a separator is one by itself.
    return path.substr(0, end + 1) + std::string(Gap) + path.substr(file);
}

}  // namespace

RecentFiles::RecentFiles(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        const auto isSame = [&](const std::string& known) { return EqualWithoutCase(known, name); };
        if (!name.empty() && m_names.size() < Most && std::ranges::none_of(m_names, isSame)) m_names.push_back(name);
    }
}

void RecentFiles::Add(const std::string& name) {
    if (name.empty()) return;
    Remove(name);
    m_names.insert(m_names.begin(), name);
    if (m_names.size() > Most) m_names.pop_back();
}

void RecentFiles::Remove(std::string_view name) {
    std::erase_if(m_names, [&](const std::string& known) { return EqualWithoutCase(known, name); });
}

std::string RecentLabel(std::size_t index, const std::string& name) {
    std::string label(1, '&');
    (label += std::to_string(index + 1)) += ' ';
    for (const char c : Shortened(name)) {
        if (c == '&') label += '&';
        label += c;
    }
    return label;
}

std::string FormatWindowMemory(const WindowMemory& memory) {
    std::string text;
    for (const std::int32_t number :
         {memory.left, memory.top, memory.width, memory.height, memory.logHeight,
          std::int32_t{memory.isMaximized ? 1 : 0}, std::int32_t{memory.showsDevice ? 1 : 0}})
        (text += std::to_string(number)) += ' ';
    text.pop_back();
    return text;
}

std::optional<WindowMemory> ParseWindowMemory(std::string_view text) {
    std::array<std::int32_t, 7> numbers{};
    for (std::int32_t& number : numbers) {
        while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc() || number < -MostPixels || number > MostPixels) return std::nullopt;
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    }
    const WindowMemory memory{numbers[0], numbers[1],      numbers[2],     numbers[3],
                              numbers[4], numbers[5] != 0, numbers[6] != 0};
    if (!text.empty() || memory.width <= 0 || memory.height <= 0 || memory.logHeight <= 0) return std::nullopt;
    return memory;
}

}  // namespace screenhost
