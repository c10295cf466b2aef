// A component server that is used although it is not installed.
//
// A server that can register itself for the current user does so, because its classes find one another by ProgID, and
// is unregistered again at the end; one that is registered already is used as it is. The classes of one that cannot are
// announced to this process only, straight from the library, under the names of its type library.
#pragma once

#include <windows.h>

#include <objbase.h>

#include <map>
#include <string>
#include <vector>

#include "comkit/ComPtr.h"
#include "comkit/Handle.h"

namespace screenhost {

class ServerLibrary {
public:
    /// Throws TextError.
    explicit ServerLibrary(const std::string& file);
    ServerLibrary(ServerLibrary&&) noexcept = default;
    ServerLibrary& operator=(ServerLibrary&&) = delete;
    /// To be destroyed when nothing of the server is alive any more.
    ~ServerLibrary();

    /// Classes by ProgID ("Library.Class") that only this process knows.
    const std::map<std::string, CLSID>& Classes() const noexcept { return m_classes; }

    const std::wstring& File() const noexcept { return m_file; }
    /// An object of a class that need not be registered, such as a property page; null where the library has no such
    /// class. Throws comkit::ComError.
    comkit::ComPtr<IUnknown> Create(REFCLSID clsid) const;

private:
    HRESULT Register(bool add) const noexcept;
    void AnnounceClasses(const std::wstring& path);
    void Announce(ITypeInfo& type, const std::string& library);

    std::wstring m_file;
    comkit::UniqueModule m_module;
    std::map<std::string, CLSID> m_classes;
    std::vector<DWORD> m_announced;
    bool m_bUnregister = false;
    bool m_bForUser = true;
};

}  // namespace screenhost
