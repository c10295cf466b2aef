// The loaded server: its handle and file, and what it caches for all its objects.
#pragma once

#include <oaidl.h>
#include <windows.h>

#include <memory>
#include <string>

#include "comkit/ComPtr.h"

namespace kiv::server {

class DispatchInfo;

class Module final {
public:
    static void Attach(HINSTANCE instance) noexcept;
    static HINSTANCE Instance() noexcept;

    /// Full path. Throws comkit::ComError.
    static std::wstring FileName();

    /// The type library in the module's resources, with its file name. A new reference to one shared object.
    static comkit::ComPtr<ITypeLib> TypeLibrary();
    /// Of an interface or a coclass in it. Throws comkit::ComError.
    static comkit::ComPtr<ITypeInfo> TypeInfo(REFGUID id);
    /// Made once for each dual interface, of the controls or of the framework.
    static std::shared_ptr<const DispatchInfo> Dispatch(REFIID dualInterface);

    /// Lets go of everything cached.
    static void DropCaches() noexcept;
    /// For the end of the process, when the libraries behind the cached objects may be gone: forgets them unreleased.
    static void AbandonCaches() noexcept;
};

}  // namespace kiv::server
