#include "pages/PageField.h"

#include <utility>

#include "platform/HostError.h"

namespace kiv {

PageField::PageField(const FieldDescription& description, PageView& view) : m_description(description), m_view(view) {
    if (!IsTextBox()) m_strText = description.caption;
    for (const FieldEntry& entry : description.entries) m_entries.push_back({std::u16string(entry.text), entry.data});
}

bool PageField::IsTextBox() const noexcept {
    return m_description.kind == FieldKind::TextBox || m_description.kind == FieldKind::NumericBox;
}

void PageField::SetText(std::u16string_view text) {
    if (m_strText == text) return;
    m_strText = text;
    m_view.ShowField(*this);
}

void PageField::SetEnabled(bool enabled) {
    if (m_bEnabled == enabled) return;
    m_bEnabled = enabled;
    m_view.ShowField(*this);
}

void PageField::SetValue(int value) {
    if (m_iValue == value) return;
    m_iValue = value;
    m_view.ShowField(*this);
}

void PageField::SetEntries(std::vector<PageEntry> entries) {
    m_entries = std::move(entries);
    m_iListIndex = None;
    m_view.ShowField(*this);
}

void PageField::SetListIndex(int index) {
    if (index != None && !HasEntry(index)) throw HostError(ErrorNumber::InvalidPropertyValue);
    if (m_iListIndex == index) return;
    m_iListIndex = index;
    m_view.ShowField(*this);
}

std::int32_t PageField::ItemData() const noexcept {
    return HasEntry(m_iListIndex) ? m_entries[static_cast<std::size_t>(m_iListIndex)].data : None;
}

}  // namespace kiv
