// The account of a session: one line for everything that happened, in UTF-8, each written at once.
#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "comkit/Handle.h"

namespace screenhost {

class Transcript {
public:
    /// Writes to a file, or to standard output where the name is empty. Throws TextError when the file cannot be made.
    explicit Transcript(const std::string& file);

    /// A line with the seconds since the start in front.
    void Line(std::string_view kind, std::string_view text);
    /// Text as it stands.
    void Write(std::string_view text) noexcept;

    std::chrono::milliseconds Elapsed() const;

private:
    comkit::UniqueKernelHandle m_file;
    HANDLE m_output = nullptr;
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

}  // namespace screenhost
