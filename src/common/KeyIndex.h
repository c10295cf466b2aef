// Where a key stands in a list of keys that each stand there once. The list belongs to the caller; the index knows only
// places in it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace kiv {

class KeyIndex {
public:
    static constexpr std::size_t None = static_cast<std::size_t>(-1);

    /// keyAt tells the key at a place of the list.
    template <typename KeyAt>
    std::size_t Find(std::u16string_view key, KeyAt keyAt) const {
        if (m_slots.empty()) return None;
        for (std::size_t i = Hash(key) & Mask();; i = (i + 1) & Mask()) {
            if (m_slots[i] == 0) return None;
            const std::size_t place = m_slots[i] - 1;
            if (keyAt(place) == key) return place;
        }
    }

    /// The key must not be there yet; place is the number of keys so far.
    template <typename KeyAt>
    void Add(std::u16string_view key, std::size_t place, KeyAt keyAt) {
        // Half of the slots stay empty, so that a search soon ends.
        if (2 * (place + 1) > m_slots.size()) {
            m_slots.assign(m_slots.empty() ? FirstSlots : 2 * m_slots.size(), 0);
            for (std::size_t i = 0; i < place; ++i) Occupy(keyAt(i), i);
        }
        Occupy(key, place);
    }

private:
    static constexpr std::size_t FirstSlots = 32;

    static std::size_t Hash(std::u16string_view key) noexcept {
        std::uint32_t hash = 2166136261;
        for (const char16_t unit : key) hash = (hash ^ unit) * 16777619;
        return hash ^ (hash >> 15);
    }
    std::size_t Mask() const noexcept { return m_slots.size() - 1; }
    void Occupy(std::u16string_view key, std::size_t place) {
        std::size_t i = Hash(key) & Mask();
        while (m_slots[i] != 0) i = (i + 1) & Mask();
        m_slots[i] = static_cast<std::uint32_t>(place + 1);
    }

    std::vector<std::uint32_t> m_slots;  ///< a power of two of them; 0 for an empty one, else the place plus one
};

}  // namespace kiv
