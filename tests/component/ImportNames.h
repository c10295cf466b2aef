// The import table of a loaded module.
#pragma once

#include <windows.h>

#include <cstddef>
#include <functional>

namespace component {

/// Calls visit for each function imported by name: its library, its name, and where the module keeps its address.
inline void VisitImports(HMODULE module, const std::function<void(const char*, const char*, void**)>& visit) {
    auto* const base = reinterpret_cast<std::byte*>(module);
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    if (directory.VirtualAddress == 0) return;
    const auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
    for (; library->Name != 0; ++library) {
        const auto* const libraryName = reinterpret_cast<const char*>(base + library->Name);
        const auto* name = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + library->OriginalFirstThunk);
        auto* address = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++address) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
            const auto* const entry = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
            visit(libraryName, reinterpret_cast<const char*>(&entry->Name[0]),
                  reinterpret_cast<void**>(&address->u1.Function));
        }
    }
}

}  // namespace component
