#include "screenhost/TextFile.h"

#include <algorithm>

#include "comkit/Handle.h"
#include "screenhost/ErrorText.h"
#include "screenhost/WideText.h"

namespace screenhost {

namespace {

comkit::UniqueKernelHandle OpenFile(const std::string& name, DWORD access, DWORD creation) {
    const HANDLE handle =
        CreateFileW(Wide(name).c_str(), access, FILE_SHARE_READ, nullptr, creation, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) throw TextError(name + ": " + ErrorText(comkit::LastErrorResult()));
    return comkit::UniqueKernelHandle(handle);
}

}  // namespace

std::string ReadTextFile(const std::string& name, std::size_t limit) {
    const comkit::UniqueKernelHandle file = OpenFile(name, GENERIC_READ, OPEN_EXISTING);
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(file.Get(), &size)) throw TextError(name + ": " + ErrorText(comkit::LastErrorResult()));
    if (size.QuadPart > static_cast<LONGLONG>(limit)) throw TextError(name + ": the file is too long");
    std::string text(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD read = 0;
    if (!ReadFile(file.Get(), text.data(), static_cast<DWORD>(text.size()), &read, nullptr))
        throw TextError(name + ": " + ErrorText(comkit::LastErrorResult()));
    text.resize(read);
    return text;
}

void MakeFolderOf(const std::string& name) {
    for (std::size_t at = name.find_first_of("/\\"); at != std::string::npos; at = name.find_first_of("/\\", at + 1))
        if (at > 0) CreateDirectoryW(Wide(name.substr(0, at)).c_str(), nullptr);
}

void WriteTextFile(const std::string& name, std::string_view text) {
    const std::string neighbour = name + ".new";
    {
        const comkit::UniqueKernelHandle file = OpenFile(neighbour, GENERIC_WRITE, CREATE_ALWAYS);
        DWORD written = 0;
        if (!WriteFile(file.Get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr) ||
            written != text.size())
            throw TextError(neighbour + ": " + ErrorText(comkit::LastErrorResult()));
    }
    if (!MoveFileExW(Wide(neighbour).c_str(), Wide(name).c_str(), MOVEFILE_REPLACE_EXISTING))
        throw TextError(name + ": " + ErrorText(comkit::LastErrorResult()));
}

}  // namespace screenhost
