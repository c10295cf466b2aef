// Which member of a control is saved under which persistence key.
#pragma once

#include <oaidl.h>

#include <span>
#include <string_view>

namespace kiv::server {

struct KeyedMember {
    std::u16string_view key;
    DISPID member;
};

/// The member behind a key: one of properties by its whole key, or one of slots by its key without the slot's number.
/// DISPID_UNKNOWN where there is none.
DISPID MemberOfKey(std::span<const KeyedMember> properties, std::span<const KeyedMember> slots,
                   std::u16string_view key) noexcept;

}  // namespace kiv::server
