// A map for some hundred entries that is searched far more often than it changes: one block, sorted by key.
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

namespace comkit {

template <class Key, class Value>
class FlatMap {
public:
    /// Null where the key is not there. Good until the map changes.
    const Value* Find(const Key& key) const noexcept {
        const auto place = std::ranges::lower_bound(m_entries, key, {}, &Entry::first);
        return place != m_entries.end() && place->first == key ? &place->second : nullptr;
    }

    /// Instead of the value that was there, if one was.
    void Put(const Key& key, const Value& value) {
        const auto place = std::ranges::lower_bound(m_entries, key, {}, &Entry::first);
        if (place != m_entries.end() && place->first == key) {
            place->second = value;
        } else {
            m_entries.insert(place, {key, value});
        }
    }

    void Erase(const Key& key) noexcept {
        const auto place = std::ranges::lower_bound(m_entries, key, {}, &Entry::first);
        if (place != m_entries.end() && place->first == key) m_entries.erase(place);
    }

private:
    using Entry = std::pair<Key, Value>;
    std::vector<Entry> m_entries;
};

}  // namespace comkit
