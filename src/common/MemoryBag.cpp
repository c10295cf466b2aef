#include "common/MemoryBag.h"

#include <utility>

#include "common/ValueConversion.h"

namespace kiv {

std::size_t MemoryBag::PlaceOf(std::u16string_view key) const {
    return m_index.Find(key, [this](std::size_t i) { return std::u16string_view(m_entries[i].first); });
}

Value MemoryBag::Read(std::u16string_view key, const Value& fallback) const {
    const std::size_t place = PlaceOf(key);
    return place == KeyIndex::None ? fallback : m_entries[place].second;
}

void MemoryBag::Write(std::u16string_view key, const Value& value, const Value* defaultValue) {
    if (!m_bSaveAll && defaultValue && IsSameValue(value, *defaultValue)) return;
    Put(key, value);
}

void MemoryBag::Put(std::u16string_view key, Value value) {
    const std::size_t place = PlaceOf(key);
    if (place == KeyIndex::None) {
        Add(std::u16string(key), std::move(value));
    } else {
        m_entries[place].second = std::move(value);
    }
}

bool MemoryBag::Add(std::u16string key, Value value) {
    if (PlaceOf(key) != KeyIndex::None) return false;
    m_entries.emplace_back(std::move(key), std::move(value));
    m_index.Add(m_entries.back().first, m_entries.size() - 1,
                [this](std::size_t i) { return std::u16string_view(m_entries[i].first); });
    return true;
}

}  // namespace kiv
