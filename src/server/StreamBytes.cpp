#include "server/StreamBytes.h"

#include <algorithm>

#include "comkit/Errors.h"

namespace kiv::server {

namespace {
constexpr std::size_t ChunkSize = std::size_t{64} * 1024;
}

std::vector<std::byte> ReadBytes(IStream& stream, std::size_t count) {
    std::vector<std::byte> bytes;
    while (bytes.size() < count) {
        const std::size_t had = bytes.size();
        const std::size_t wanted = std::min(count - had, ChunkSize);
        bytes.resize(had + wanted);
        ULONG got = 0;
        comkit::ThrowIfFailed(stream.Read(bytes.data() + had, static_cast<ULONG>(wanted), &got));
        if (got == 0 || got > wanted) throw comkit::ComError(STG_E_READFAULT);
        bytes.resize(had + got);
    }
    return bytes;
}

void WriteBytes(IStream& stream, std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const std::size_t wanted = std::min(bytes.size(), ChunkSize);
        ULONG written = 0;
        comkit::ThrowIfFailed(stream.Write(bytes.data(), static_cast<ULONG>(wanted), &written));
        if (written == 0 || written > wanted) throw comkit::ComError(STG_E_MEDIUMFULL);
        bytes = bytes.subspan(written);
    }
}

}  // namespace kiv::server
