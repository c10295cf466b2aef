// Runs a fuzz target over files, for compilers that come without a fuzzer: every file named, and every file in the
// folders named. Besides each file as it is, every beginning of it is run.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::size_t Replay(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> content{std::istreambuf_iterator<char>(file), {}};
    const std::vector<std::uint8_t> bytes(content.begin(), content.end());
    for (std::size_t size = 0; size <= bytes.size(); ++size) {
        // A copy of just that size, so that a read beyond the end is seen.
        const std::vector<std::uint8_t> beginning(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
        LLVMFuzzerTestOneInput(beginning.data(), beginning.size());
    }
    return bytes.size() + 1;
}

}  // namespace

int main(int argc, char** argv) {
    std::size_t files = 0;
    std::size_t runs = 0;
    for (int i = 1; i < argc; ++i) {
        const std::filesystem::path path(argv[i]);
        if (!std::filesystem::is_directory(path)) {
            runs += Replay(path);
            ++files;
            continue;
        }
        for (const auto& entry : std::filesystem::directory_iterator(path)) {
            runs += Replay(entry.path());
            ++files;
        }
    }
    std::printf("%zu files, %zu runs\n", files, runs);
    return files == 0 ? 1 : 0;  // a corpus that is not there must not look like one without faults
}
