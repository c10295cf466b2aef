// A property bag in memory. Keeps the keys in the order in which they were written.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "common/KeyIndex.h"
#include "platform/PropertyBag.h"

namespace kiv {

class MemoryBag final : public PropertyBag {
public:
    using Entry = std::pair<std::u16string, Value>;

    /// With saveAll, values equal to their default are kept too.
    explicit MemoryBag(bool saveAll = false) : m_bSaveAll(saveAll) {}

    Value Read(std::u16string_view key, const Value& fallback) const override;
    void Write(std::u16string_view key, const Value& value, const Value* defaultValue) override;

    /// Replaces the value where the key is known, without regard to defaults.
    void Put(std::u16string_view key, Value value);
    /// False, and nothing done, where the key is known.
    bool Add(std::u16string key, Value value);

    const std::vector<Entry>& Entries() const noexcept { return m_entries; }

private:
    std::size_t PlaceOf(std::u16string_view key) const;

    bool m_bSaveAll;
    std::vector<Entry> m_entries;
    KeyIndex m_index;
};

}  // namespace kiv
