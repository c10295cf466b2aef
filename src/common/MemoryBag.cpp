#include "common/MemoryBag.h"

#include <algorithm>

#include "common/ValueConversion.h"

namespace kiv {

Value MemoryBag::Read(std::u16string_view key, const Value& fallback) const {
    const Entry* entry = Find(key);
    return entry ? entry->second : fallback;
}

void MemoryBag::Write(std::u16string_view key, const Value& value, const Value* defaultValue) {
    if (!m_bSaveAll && defaultValue && IsSameValue(value, *defaultValue)) return;
    Put(key, value);
}

void MemoryBag::Put(std::u16string_view key, Value value) {
    const auto known = m_index.find(key);
    if (known != m_index.end()) {
        m_entries[known->second].second = std::move(value);
        return;
    }
    m_entries.emplace_back(key, std::move(value));
    m_index.emplace(key, m_entries.size() - 1);
}

const MemoryBag::Entry* MemoryBag::Find(std::u16string_view key) const noexcept {
    const auto known = m_index.find(key);
    return known == m_index.end() ? nullptr : &m_entries[known->second];
}

}  // namespace kiv
