#include "screenhost/ScreenFile.h"

#include <algorithm>

#include "screenhost/Utf8.h"

namespace screenhost {

namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t MaxNameLength = 255;

/// Names and keys: letters, digits, underscore; anything beyond ASCII counts as a letter.
bool IsName(std::string_view name) noexcept {
    if (name.empty() || name.size() > MaxNameLength) return false;
    return std::ranges::all_of(name, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
               static_cast<unsigned char>(c) >= 0x80;
    });
}

std::string_view TrimRight(std::string_view text) noexcept {
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

std::string_view Trim(std::string_view text) noexcept {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    return TrimRight(text);
}

/// Where a key is not a plain name it stands in quotes.
std::string SpellKey(std::string_view key) {
    if (IsName(key)) return std::string(key);
    const auto wide = Utf16FromUtf8(key);
    if (!wide) throw TextError("a key is not UTF-8");
    return Quoted(*wide);
}

}  // namespace

std::size_t ScreenSection::IndexOf(std::string_view key) const noexcept {
    const auto found = std::ranges::find_if(
        m_lines, [&](const Line& line) { return line.entry && EqualWithoutCase(line.entry->first, key); });
    return static_cast<std::size_t>(found - m_lines.begin());
}

const ScreenValue* ScreenSection::Find(std::string_view key) const noexcept {
    const std::size_t index = IndexOf(key);
    return index < m_lines.size() ? &m_lines[index].entry->second : nullptr;
}

std::vector<std::string> ScreenSection::Keys() const {
    std::vector<std::string> result;
    for (const Line& line : m_lines)
        if (line.entry) result.push_back(line.entry->first);
    return result;
}

std::size_t ScreenSection::LineOf(std::string_view key) const noexcept {
    const std::size_t index = IndexOf(key);
    return index < m_lines.size() ? m_lines[index].number : 0;
}

std::string ScreenSection::Text() const {
    std::string result;
    for (const Line& line : m_lines) (result += line.text) += line.end;
    return result;
}

std::size_t ScreenSection::PlaceBehind(std::string_view key) const noexcept {
    if (const std::size_t index = IndexOf(key); index < m_lines.size()) return index + 1;
    const auto last = std::find_if(m_lines.rbegin(), m_lines.rend(), [](const Line& line) { return !!line.entry; });
    if (last != m_lines.rend()) return static_cast<std::size_t>(m_lines.rend() - last);
    return m_bHasHeader ? 1 : 0;
}

void ScreenSection::Put(std::string_view key, const ScreenValue& value, std::string_view after) {
    const std::size_t index = IndexOf(key);
    const std::string text = SpellKey(key) + " = " + FormatValue(value);
    if (index < m_lines.size()) {
        Line& line = m_lines[index];
        if (line.entry->second == value) return;
        line.text = text;
        line.entry = std::pair(std::string(key), value);
        return;
    }
    const std::size_t place = PlaceBehind(after);
    std::string end = "\n";
    if (place > 0) {
        Line& before = m_lines[place - 1];
        // The last line of a file may lack its end.
        if (before.end.empty()) before.end = "\n";
        end = before.end;
    }
    m_lines.insert(m_lines.begin() + static_cast<std::ptrdiff_t>(place),
                   Line{text, end, std::pair(std::string(key), value), 0});
}

void ScreenSection::Remove(std::string_view key) {
    const std::size_t index = IndexOf(key);
    if (index < m_lines.size()) m_lines.erase(m_lines.begin() + static_cast<std::ptrdiff_t>(index));
}

ScreenFile::ScreenFile() {
    m_sections.emplace_back();
}

ScreenFile ScreenFile::Parse(std::string_view text) {
    if (text.size() > MaxBytes) throw TextError("the file is longer than " + std::to_string(MaxBytes) + " bytes");
    ScreenFile file;
    if (text.starts_with(ByteOrderMark)) {
        file.m_byteOrderMark = ByteOrderMark;
        text.remove_prefix(ByteOrderMark.size());
    }
    std::size_t number = 0;
    ForEachLine(text, [&](std::string_view line, std::string_view end) { file.ReadLine(line, end, ++number); });
    return file;
}

void ScreenFile::ReadLine(std::string_view text, std::string_view end, std::size_t number) {
    ScreenSection::Line line{std::string(text), std::string(end), std::nullopt, number};
    const std::string_view content = Trim(text);
    const bool isHeader = content.starts_with('[');
    if (isHeader) m_sections.emplace_back().m_bHasHeader = true;
    try {
        if (isHeader)
            ReadHeader(content, m_sections.back());
        else if (!content.empty() && content.front() != ';')
            ReadEntry(content, line);
    } catch (const TextError& error) {
        m_problems.push_back({number, error.what()});
    }
    m_sections.back().m_lines.push_back(std::move(line));
}

void ScreenFile::ReadHeader(std::string_view text, ScreenSection& section) {
    // Until the name is known to be good, nothing of the section counts.
    section.m_bIgnored = true;
    const std::size_t close = text.find(']');
    if (close == std::string_view::npos) throw TextError("\"]\" is missing; the control is left out");
    const std::string_view name = Trim(text.substr(1, close - 1));
    if (!IsName(name) || !Utf16FromUtf8(name))
        throw TextError("this is not a name for a control (letters, digits, underscores); the control is left out");
    TextCursor(text.substr(close + 1)).ExpectEnd();
    if (FindControl(name)) throw TextError("a second control named " + std::string(name) + "; it is left out");
    if (ControlCount() >= MaxControls)
        throw TextError("more than " + std::to_string(MaxControls) + " controls; this one is left out");
    section.m_name = name;
    section.m_bIgnored = false;
}

void ScreenFile::ReadEntry(std::string_view text, ScreenSection::Line& line) {
    TextCursor cursor(text);
    std::string key;
    if (cursor.Peek() == '"') {
        key = Utf8FromUtf16(cursor.ReadQuoted());
        cursor.SkipBlanks();
        cursor.Expect('=', "\"=\" between key and value");
    } else {
        const std::size_t equals = text.find('=');
        if (equals == std::string_view::npos) throw TextError("\"=\" between key and value is missing");
        key = TrimRight(text.substr(0, equals));
        if (!IsName(key) || !Utf16FromUtf8(key)) throw TextError("this is not a key (letters, digits, underscores)");
        cursor = TextCursor(text.substr(equals + 1));
    }
    cursor.SkipBlanks();
    ScreenValue value = ReadValue(cursor);
    cursor.ExpectEnd();
    if (m_sections.back().Find(key)) throw TextError("a second value for " + key + "; the first one counts");
    line.entry.emplace(std::move(key), std::move(value));
}

std::string ScreenFile::Text() const {
    std::string result = m_byteOrderMark;
    for (const ScreenSection& section : m_sections) result += section.Text();
    return result;
}

std::size_t ScreenFile::ControlCount() const noexcept {
    return static_cast<std::size_t>(
        std::ranges::count_if(m_sections, [](const auto& s) { return s.m_bHasHeader && !s.m_bIgnored; }));
}

std::vector<ScreenSection*> ScreenFile::Controls() {
    std::vector<ScreenSection*> result;
    for (ScreenSection& section : m_sections)
        if (section.m_bHasHeader && !section.m_bIgnored) result.push_back(&section);
    return result;
}

ScreenSection* ScreenFile::FindControl(std::string_view name) noexcept {
    for (ScreenSection& section : m_sections)
        if (section.m_bHasHeader && !section.m_bIgnored && EqualWithoutCase(section.m_name, name)) return &section;
    return nullptr;
}

ScreenSection& ScreenFile::AddControl(std::string_view name) {
    if (!IsName(name) || !Utf16FromUtf8(name)) throw TextError("this is not a name for a control");
    if (FindControl(name)) throw TextError("a second control named " + std::string(name));
    if (ControlCount() >= MaxControls) throw TextError("the screen is full");
    std::string end = "\n";
    bool isEmpty = true;
    for (ScreenSection& existing : m_sections) {
        for (ScreenSection::Line& line : existing.m_lines) {
            if (line.end.empty()) line.end = end;
            end = line.end;
            isEmpty = false;
        }
    }
    if (!isEmpty) m_sections.back().m_lines.push_back({"", end, std::nullopt, 0});
    ScreenSection& section = m_sections.emplace_back();
    section.m_name = name;
    section.m_bHasHeader = true;
    std::string header(1, '[');
    (header += name) += ']';
    section.m_lines.push_back({std::move(header), end, std::nullopt, 0});
    return section;
}

ScreenSection& ScreenFile::AddCopy(const ScreenSection& source, std::string_view name) {
    ScreenSection& section = AddControl(name);
    const std::string end = section.m_lines.front().end;
    for (const ScreenSection::Line& line : source.m_lines) {
        const bool isHeader = source.m_bHasHeader && &line == &source.m_lines.front();
        if (!isHeader && !Trim(line.text).empty()) section.m_lines.push_back({line.text, end, line.entry, 0});
    }
    return section;
}

void ScreenFile::RemoveControl(std::string_view name) {
    const ScreenSection* const section = FindControl(name);
    m_sections.remove_if([section](const ScreenSection& candidate) { return &candidate == section; });
}

std::string ScreenFile::FreeName(std::string_view stem) {
    for (std::size_t number = 1;; ++number) {
        std::string name(stem);
        name += std::to_string(number);
        if (!FindControl(name)) return name;
    }
}

SectionUpdate::SectionUpdate(ScreenSection& section, std::vector<std::string> knownKeys, std::string_view after)
    : m_section(section), m_stale(std::move(knownKeys)), m_after(after) {}

void SectionUpdate::Write(std::string_view key, const ScreenValue& value) {
    m_section.Put(key, value, m_after);
    m_after = key;
    std::erase_if(m_stale, [&](const std::string& known) { return EqualWithoutCase(known, key); });
}

void SectionUpdate::Finish() {
    for (const std::string& key : m_stale) m_section.Remove(key);
    m_stale.clear();
}

}  // namespace screenhost
