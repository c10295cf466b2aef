// The binary form of a property bag, for streams and storages.
//
// Little-endian; a header (magic, version, length of what follows), then one record per key: key, type tag, value.
// Holds plain values and fonts, nothing else, and is the same for 32- and 64-bit programs.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

#include "common/MemoryBag.h"
#include "platform/Font.h"

namespace kiv {

/// Bytes of the header: what has to be read before the length of the rest is known.
inline constexpr std::size_t PropertyStreamHeaderSize = 12;

/// The longest stream that is written or read, header included.
inline constexpr std::size_t PropertyStreamMaxSize = std::size_t{16} * 1024 * 1024;

/// Makes the platform's font object from saved traits.
using FontMaker = std::function<FontPtr(const FontTraits&)>;

/// Throws HostError 380 when the result would be longer than PropertyStreamMaxSize.
std::vector<std::byte> EncodeProperties(const MemoryBag& bag);

/// Length of the records that follow the header. Throws HostError 380 when it is no header of ours or names an
/// impossible length.
std::size_t DecodePropertyHeader(std::span<const std::byte> header);

/// Throws HostError 380 unless the records are whole, well formed and end where they should.
MemoryBag DecodeProperties(std::span<const std::byte> records, const FontMaker& makeFont);

}  // namespace kiv
