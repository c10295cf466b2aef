// Whole reads and writes on IStream.
#pragma once

#include <objidl.h>

#include <cstddef>
#include <span>
#include <vector>

namespace kiv::server {

/// Throws comkit::ComError STG_E_READFAULT when the stream ends early. Takes memory as the bytes arrive, so that a
/// length that the stream only claims costs nothing.
std::vector<std::byte> ReadBytes(IStream& stream, std::size_t count);

/// Throws comkit::ComError when not everything could be written.
void WriteBytes(IStream& stream, std::span<const std::byte> bytes);

}  // namespace kiv::server
