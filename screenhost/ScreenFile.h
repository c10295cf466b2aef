// A screen as a text file: keys of the screen itself, then one section for each control.
//
//   ; Set the device's clock
//   Title = "Device clock"
//
//   [SetClock]
//   ProgID = "KivDateTime.KivSetDateTime"
//   Left = 240
//   ...
//
// The file is kept line by line. What nobody changes is written back byte for byte: comments, blank lines, order, line
// ends, the spelling of values, keys that nobody knows, and lines that cannot be understood. Those are listed among the
// problems with their number; everything else counts. Names and keys are compared without regard to case.
#pragma once

#include <cstddef>
#include <list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "screenhost/ScreenValue.h"

namespace screenhost {

struct Problem {
    std::size_t line;  ///< from 1
    std::string message;
};

class ScreenSection {
public:
    const std::string& Name() const noexcept { return m_name; }

    /// Null when there is no such key. Valid until the section is changed.
    const ScreenValue* Find(std::string_view key) const noexcept;
    std::vector<std::string> Keys() const;
    /// The line of the file, from 1, on which a key stood when it was read; 0 for one that was put since.
    std::size_t LineOf(std::string_view key) const noexcept;
    /// The same of the section's header.
    std::size_t HeaderLine() const noexcept { return m_bHasHeader ? m_lines.front().number : 0; }
    /// The section's own lines, header included.
    std::string Text() const;

    /// Changes a key's value, and leaves its line alone where the value is the same. A new key is placed behind the key
    /// `after`, or behind the last key where there is none of that name. Throws TextError when the value cannot be
    /// written.
    void Put(std::string_view key, const ScreenValue& value, std::string_view after = {});
    void Remove(std::string_view key);

private:
    friend class ScreenFile;
    struct Line {
        std::string text;
        std::string end;
        std::optional<std::pair<std::string, ScreenValue>> entry;
        std::size_t number = 0;
    };

    std::size_t IndexOf(std::string_view key) const noexcept;
    std::size_t PlaceBehind(std::string_view key) const noexcept;

    std::string m_name;
    bool m_bHasHeader = false;
    bool m_bIgnored = false;
    std::vector<Line> m_lines;
};

class ScreenFile {
public:
    /// More controls than this are reported and not loaded.
    static constexpr std::size_t MaxControls = 256;
    static constexpr std::size_t MaxBytes = std::size_t{4} * 1024 * 1024;

    /// Throws TextError for more than MaxBytes; whatever else is wrong is listed among the problems.
    static ScreenFile Parse(std::string_view text);

    const std::vector<Problem>& Problems() const noexcept { return m_problems; }
    std::string Text() const;

    /// The keys before the first section.
    ScreenSection& Screen() noexcept { return m_sections.front(); }
    /// The controls in the file's order. A section is valid until its control is removed.
    std::vector<ScreenSection*> Controls();
    ScreenSection* FindControl(std::string_view name) noexcept;

    /// Throws TextError when the name is taken or is no name.
    ScreenSection& AddControl(std::string_view name);
    /// A new control with the keys and comments of another one, of this file or not. Throws as AddControl.
    ScreenSection& AddCopy(const ScreenSection& source, std::string_view name);
    /// With all its lines; nothing where there is no such control.
    void RemoveControl(std::string_view name);
    /// The stem with the lowest number from 1 that makes it a free name.
    std::string FreeName(std::string_view stem);

private:
    ScreenFile();
    void ReadLine(std::string_view text, std::string_view end, std::size_t number);
    void ReadHeader(std::string_view text, ScreenSection& section);
    void ReadEntry(std::string_view text, ScreenSection::Line& line);
    std::size_t ControlCount() const noexcept;

    std::string m_byteOrderMark;
    std::list<ScreenSection> m_sections;  // stay where they are when others come and go
    std::vector<Problem> m_problems;
};

/// One saving of a control's keys: values are put in the order in which they are written, and the keys that the control
/// knows but did not write this time (because they are back at their default) disappear. Others stay.
class SectionUpdate {
public:
    /// knownKeys: what the control has read or written before. New keys follow the key `after`.
    SectionUpdate(ScreenSection& section, std::vector<std::string> knownKeys, std::string_view after);
    void Write(std::string_view key, const ScreenValue& value);
    void Finish();

private:
    ScreenSection& m_section;
    std::vector<std::string> m_stale;
    std::string m_after;
};

}  // namespace screenhost
