// The server as a file: what its headers promise to the loader, what it exports and whom it needs.
#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "comkit/Handle.h"
#include "ControlFixture.h"

namespace component {
namespace {

using Bytes = std::vector<std::byte>;
using Names = std::vector<std::string>;

/// A program file as it lies on the disk, of the bitness of these tests. Whatever lies outside the file reads as zeros.
class ProgramFile {
public:
    explicit ProgramFile(Bytes bytes) : m_bytes(std::move(bytes)) {
        const auto start = static_cast<std::size_t>(At<IMAGE_DOS_HEADER>(0).e_lfanew);
        m_headers = At<IMAGE_NT_HEADERS>(start);
        const std::size_t table =
            start + offsetof(IMAGE_NT_HEADERS, OptionalHeader) + m_headers.FileHeader.SizeOfOptionalHeader;
        for (std::size_t i = 0; i < m_headers.FileHeader.NumberOfSections; ++i)
            m_sections.push_back(At<IMAGE_SECTION_HEADER>(table + i * sizeof(IMAGE_SECTION_HEADER)));
    }

    const IMAGE_NT_HEADERS& Headers() const noexcept { return m_headers; }

    Names Exports() const {
        const auto directory = AtAddress<IMAGE_EXPORT_DIRECTORY>(Directory(IMAGE_DIRECTORY_ENTRY_EXPORT));
        Names names;
        for (DWORD i = 0; i < directory.NumberOfNames; ++i)
            names.push_back(TextAt(AtAddress<DWORD>(directory.AddressOfNames + i * DWORD{sizeof(DWORD)})));
        if (directory.NumberOfFunctions != directory.NumberOfNames) names.emplace_back("(without a name)");
        return names;
    }

    Names Imports() const {
        Names names;
        DWORD at = Directory(IMAGE_DIRECTORY_ENTRY_IMPORT);
        for (auto entry = AtAddress<IMAGE_IMPORT_DESCRIPTOR>(at); entry.Name;
             entry = AtAddress<IMAGE_IMPORT_DESCRIPTOR>(at += sizeof(IMAGE_IMPORT_DESCRIPTOR)))
            names.push_back(TextAt(entry.Name));
        return names;
    }

    bool HasVersion() const {
        const DWORD base = Directory(IMAGE_DIRECTORY_ENTRY_RESOURCE);
        const auto top = AtAddress<IMAGE_RESOURCE_DIRECTORY>(base);
        const DWORD entries = base + sizeof(IMAGE_RESOURCE_DIRECTORY);
        for (DWORD i = 0; base && i < DWORD{top.NumberOfNamedEntries} + top.NumberOfIdEntries; ++i) {
            const DWORD at = entries + i * DWORD{sizeof(IMAGE_RESOURCE_DIRECTORY_ENTRY)};
            if (AtAddress<DWORD>(at) == VersionResource) return true;
        }
        return false;
    }

    std::size_t OffsetOfHeaders() const {
        return static_cast<std::size_t>(At<IMAGE_DOS_HEADER>(0).e_lfanew) + offsetof(IMAGE_NT_HEADERS, OptionalHeader);
    }

private:
    static constexpr DWORD VersionResource = 16;  // RT_VERSION, as a number

    template <class T>
    T At(std::size_t offset) const {
        T value{};
        if (offset + sizeof(T) <= m_bytes.size()) std::memcpy(&value, m_bytes.data() + offset, sizeof(T));
        return value;
    }
    std::size_t OffsetOf(DWORD address) const {
        const auto found = std::ranges::find_if(m_sections, [&](const IMAGE_SECTION_HEADER& section) {
            return address >= section.VirtualAddress && address - section.VirtualAddress < section.SizeOfRawData;
        });
        return found == m_sections.end() ? m_bytes.size()
                                         : address - found->VirtualAddress + std::size_t{found->PointerToRawData};
    }
    template <class T>
    T AtAddress(DWORD address) const {
        return At<T>(OffsetOf(address));
    }
    std::string TextAt(DWORD address) const {
        std::string text;
        for (std::size_t at = OffsetOf(address); At<char>(at); ++at) text += At<char>(at);
        return text;
    }
    DWORD Directory(std::size_t entry) const { return m_headers.OptionalHeader.DataDirectory[entry].VirtualAddress; }

    Bytes m_bytes;
    IMAGE_NT_HEADERS m_headers{};
    std::vector<IMAGE_SECTION_HEADER> m_sections;
};

bool IsPartOfTheSystem(const std::string& library) {
    char folder[MAX_PATH];
    GetSystemDirectoryA(folder, MAX_PATH);
    return GetFileAttributesA((std::string(folder) + "\\" + library).c_str()) != INVALID_FILE_ATTRIBUTES;
}

/// Everything that is wrong with a server's file.
Names Faults(const ProgramFile& file) {
    Names faults;
    const auto flags = file.Headers().OptionalHeader.DllCharacteristics;
    const auto expect = [&](bool right, const std::string& fault) {
        if (!right) faults.push_back(fault);
    };
    expect(file.Headers().Signature == IMAGE_NT_SIGNATURE, "no program");
    expect(flags & IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE, "fixed base");
    expect(flags & IMAGE_DLLCHARACTERISTICS_NX_COMPAT, "data may run");
    if (sizeof(void*) == 8) expect(flags & IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA, "low entropy");
    expect(file.HasVersion(), "no version");
    expect(file.Exports() ==
               Names{"DllCanUnloadNow", "DllGetClassObject", "DllInstall", "DllRegisterServer", "DllUnregisterServer"},
           "other exports");
    const Names imports = file.Imports();
    expect(std::ranges::find(imports, "KERNEL32.dll") != imports.end(), "imports cannot be read");
    for (const std::string& library : imports) expect(IsPartOfTheSystem(library), "needs " + library);
    expect(!file.Headers().OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_DELAY_IMPORT].VirtualAddress,
           "delayed imports");
    return faults;
}

Bytes ReadServer() {
    const comkit::UniqueKernelHandle file(
        CreateFileW(Server::Get().File().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    Bytes bytes(GetFileSize(file.Get(), nullptr));
    DWORD read = 0;
    EXPECT_TRUE(ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr));
    return bytes;
}

/// Puts other text of the same length in the place of each occurrence.
void Replace(Bytes& bytes, const std::string& text, const std::string& other) {
    const auto* const start = reinterpret_cast<const std::byte*>(text.data());
    for (auto at = bytes.begin(); (at = std::search(at, bytes.end(), start, start + text.size())) != bytes.end(); ++at)
        std::memcpy(&*at, other.data(), other.size());
}

TEST(ServerFile, IsProtectedHasAVersionExportsItsEntryPointsAndNeedsTheSystemOnly) {
    EXPECT_EQ(Names{}, Faults(ProgramFile(ReadServer())));
}

TEST(ServerFile, EachFaultOfABrokenCopyIsSeen) {
    const Bytes whole = ReadServer();
    const std::size_t flags =
        ProgramFile(whole).OffsetOfHeaders() + offsetof(IMAGE_OPTIONAL_HEADER, DllCharacteristics);
    const auto without = [&](WORD flag) {
        return [flags, flag](Bytes& bytes) {
            WORD value = 0;
            std::memcpy(&value, bytes.data() + flags, sizeof(value));
            value = static_cast<WORD>(value & ~flag);
            std::memcpy(bytes.data() + flags, &value, sizeof(value));
        };
    };
    const std::size_t directories =
        ProgramFile(whole).OffsetOfHeaders() + offsetof(IMAGE_OPTIONAL_HEADER, DataDirectory);
    const auto withoutDirectory = [&](std::size_t entry) {
        return [directories, entry](Bytes& bytes) {
            std::memset(bytes.data() + directories + entry * sizeof(IMAGE_DATA_DIRECTORY), 0,
                        sizeof(IMAGE_DATA_DIRECTORY));
        };
    };
    struct Case {
        const char* fault;
        std::function<void(Bytes&)> damage;
    };
    std::vector<Case> cases{
        {"fixed base", without(IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE)},
        {"data may run", without(IMAGE_DLLCHARACTERISTICS_NX_COMPAT)},
        {"no version", withoutDirectory(IMAGE_DIRECTORY_ENTRY_RESOURCE)},
        {"other exports", [](Bytes& bytes) { Replace(bytes, "DllInstall", "DllDestroy"); }},
        {"needs libgcc64.dll", [](Bytes& bytes) { Replace(bytes, "OLEAUT32.dll", "libgcc64.dll"); }},
        {"imports cannot be read", withoutDirectory(IMAGE_DIRECTORY_ENTRY_IMPORT)},
    };
    if (sizeof(void*) == 8) cases.push_back({"low entropy", without(IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA)});
    for (const Case& c : cases) {
        Bytes copy = whole;
        c.damage(copy);
        EXPECT_EQ(Names{c.fault}, Faults(ProgramFile(std::move(copy))));
    }
}

}  // namespace
}  // namespace component
