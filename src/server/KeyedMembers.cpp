#include "server/KeyedMembers.h"

#include <algorithm>

namespace kiv::server {

namespace {

std::u16string_view WithoutSlot(std::u16string_view key) noexcept {
    const auto last = key.find_last_not_of(u"0123456789");
    return last == std::u16string_view::npos ? std::u16string_view() : key.substr(0, last + 1);
}

}  // namespace

DISPID MemberOfKey(std::span<const KeyedMember> properties, std::span<const KeyedMember> slots,
                   std::u16string_view key) noexcept {
    const auto property = std::ranges::find(properties, key, &KeyedMember::key);
    if (property != properties.end()) return property->member;
    const auto slot = std::ranges::find(slots, WithoutSlot(key), &KeyedMember::key);
    return slot != slots.end() ? slot->member : DISPID_UNKNOWN;
}

}  // namespace kiv::server
