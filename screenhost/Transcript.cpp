#include "screenhost/Transcript.h"

#include <algorithm>

#include "screenhost/TextCursor.h"
#include "screenhost/WideText.h"

namespace screenhost {

namespace {

constexpr std::size_t KindWidth = 8;

/// A windows program has no console of its own; started from one it may still write to it.
HANDLE StandardOutput() noexcept {
    HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    if ((output == nullptr || output == INVALID_HANDLE_VALUE) && AttachConsole(ATTACH_PARENT_PROCESS))
        output = GetStdHandle(STD_OUTPUT_HANDLE);
    return output == INVALID_HANDLE_VALUE ? nullptr : output;
}

}  // namespace

Transcript::Transcript(const std::string& file) {
    if (file.empty()) {
        m_output = StandardOutput();
        return;
    }
    const HANDLE handle = CreateFileW(Wide(file).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) throw TextError(file + ": cannot be written");
    m_file.Reset(handle);
    m_output = handle;
}

std::chrono::milliseconds Transcript::Elapsed() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - m_start);
}

void Transcript::Line(std::string_view kind, std::string_view text) {
    const auto elapsed = Elapsed().count();
    std::string seconds = std::to_string(elapsed / 1000);
    std::string thousandths = std::to_string(elapsed % 1000);
    seconds.insert(0, seconds.size() < 4 ? 4 - seconds.size() : 0, ' ');
    thousandths.insert(0, 3 - thousandths.size(), '0');
    std::string line = seconds + "." + thousandths + "  ";
    line += kind;
    line.append(kind.size() < KindWidth ? KindWidth - kind.size() : 0, ' ');
    line += "  ";
    line += text;
    line += '\n';
    Write(line);
}

void Transcript::Write(std::string_view text) noexcept {
    if (!m_output) return;
    DWORD written = 0;
    WriteFile(m_output, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

}  // namespace screenhost
