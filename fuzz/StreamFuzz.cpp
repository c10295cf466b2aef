// Reads whatever bytes come as a property stream, without a control.
//
// Beyond not crashing: what cannot be read is refused with the one error that there is for it; what can is written,
// read and written again with the same bytes; and records that end too early are refused.
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "fuzz/DecodeStream.h"
#include "fuzz/Require.h"

namespace {

using namespace kiv;
using fuzz::Bytes;

template <class Decode>
bool IsRefused(Decode&& decode) {
    try {
        decode();
    } catch (const HostError& error) {
        Require(error.Number() == ErrorNumber::InvalidPropertyValue);
        return true;
    }
    return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Bytes bytes = std::as_bytes(std::span(data, size));
    MemoryBag bag;
    if (IsRefused([&] { bag = fuzz::DecodeStream(bytes); })) return 0;
    const std::vector<std::byte> written = EncodeProperties(bag);
    Require(EncodeProperties(fuzz::DecodeStream(written)) == written);
    const Bytes records = Bytes(written).subspan(PropertyStreamHeaderSize);
    if (!records.empty()) Require(IsRefused([&] { fuzz::DecodeRecords(records.first(records.size() - 1)); }));
    return 0;
}
