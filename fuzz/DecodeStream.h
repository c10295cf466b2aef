// A property stream as a control reads it: header, then as many bytes of records as that says.
#pragma once

#include <cstddef>
#include <span>

#include "common/MemoryBag.h"
#include "common/PropertyStream.h"
#include "headless/HeadlessFont.h"
#include "platform/HostError.h"

namespace kiv::fuzz {

using Bytes = std::span<const std::byte>;

inline MemoryBag DecodeRecords(Bytes records) {
    return DecodeProperties(records, [](const FontTraits& traits) { return headless::MakeFont(traits); });
}

/// Throws HostError for what is no such stream.
inline MemoryBag DecodeStream(Bytes stream) {
    if (stream.size() < PropertyStreamHeaderSize) throw HostError(ErrorNumber::InvalidPropertyValue);
    const std::size_t length = DecodePropertyHeader(stream.first(PropertyStreamHeaderSize));
    const Bytes records = stream.subspan(PropertyStreamHeaderSize);
    if (records.size() < length) throw HostError(ErrorNumber::InvalidPropertyValue);
    return DecodeRecords(records.first(length));
}

}  // namespace kiv::fuzz
