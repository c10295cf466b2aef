// One control on a page. It holds its whole state, whether or not there is a window to show it; the view is told when
// the page changes the state, not when the user does.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "pages/PageDescription.h"
#include "pages/PageView.h"

namespace kiv {

struct PageEntry {
    std::u16string text;
    std::int32_t data = 0;
};

class PageField final {
public:
    /// What a list without a selected entry reports for an entry's place and number.
    static constexpr std::int32_t None = -1;

    /// Both outlive the field.
    PageField(const FieldDescription& description, PageView& view);
    PageField(const PageField&) = delete;
    PageField& operator=(const PageField&) = delete;

    const FieldDescription& Description() const noexcept { return m_description; }
    bool Is(std::u16string_view name) const noexcept { return m_description.name == name; }
    bool IsTextBox() const noexcept;

    /// What is typed in a text box; of anything else, its caption.
    const std::u16string& Text() const noexcept { return m_strText; }
    void SetText(std::u16string_view text);
    bool IsEnabled() const noexcept { return m_bEnabled; }
    void SetEnabled(bool enabled);
    /// Check box: 0, 1 or, grey, 2. Option button: 1 while chosen.
    int Value() const noexcept { return m_iValue; }
    void SetValue(int value);
    std::span<const PageEntry> Entries() const noexcept { return m_entries; }
    /// Nothing is selected then.
    void SetEntries(std::vector<PageEntry> entries);
    int ListIndex() const noexcept { return m_iListIndex; }
    /// Throws HostError 380 where there is no such entry; None is one.
    void SetListIndex(int index);
    /// The number of the selected entry.
    std::int32_t ItemData() const noexcept;

    // What the user did. An entry that does not exist counts as none.
    void TakeText(std::u16string_view text) { m_strText = text; }
    void TakeValue(int value) noexcept { m_iValue = value; }
    void TakeListIndex(int index) noexcept { m_iListIndex = HasEntry(index) ? index : None; }

private:
    bool HasEntry(int index) const noexcept { return index >= 0 && static_cast<std::size_t>(index) < m_entries.size(); }

    const FieldDescription& m_description;
    PageView& m_view;
    std::u16string m_strText;
    std::vector<PageEntry> m_entries;
    int m_iValue = 0;
    int m_iListIndex = None;
    bool m_bEnabled = true;
};

}  // namespace kiv
