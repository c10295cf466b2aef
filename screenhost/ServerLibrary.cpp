#include "screenhost/ServerLibrary.h"

#include <oleauto.h>

#include <array>

#include "comkit/Bstr.h"
#include "comkit/ComPtr.h"
#include "screenhost/ErrorText.h"
#include "screenhost/WideText.h"

namespace screenhost {

namespace {

using GetClassObjectFunction = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
using InstallFunction = HRESULT(STDAPICALLTYPE*)(BOOL, LPCWSTR);

template <class Function>
Function FindExport(HMODULE module, const char* name) noexcept {
    // Through void*, because a FARPROC has no useful type of its own.
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

std::wstring FullPath(const std::string& file) {
    const std::wstring name = Wide(file);
    const DWORD needed = GetFullPathNameW(name.c_str(), 0, nullptr, nullptr);
    std::wstring path(needed, L'\0');
    path.resize(GetFullPathNameW(name.c_str(), needed, path.data(), nullptr));
    return path.empty() ? name : path;
}

/// Which file the registry names for a class.
std::wstring RegisteredPath(REFCLSID clsid) {
    std::array<wchar_t, 40> text{};
    StringFromGUID2(clsid, text.data(), static_cast<int>(text.size()));
    const std::wstring key = L"CLSID\\" + std::wstring(text.data()) + L"\\InprocServer32";
    std::array<wchar_t, 1024> path{};
    DWORD bytes = sizeof(path);
    const LSTATUS status =
        RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, path.data(), &bytes);
    return status == ERROR_SUCCESS ? std::wstring(path.data()) : std::wstring();
}

template <class Use>
void ForEachClass(ITypeLib& library, Use&& use) {
    for (UINT i = 0; i < library.GetTypeInfoCount(); ++i) {
        TYPEKIND kind{};
        comkit::ComPtr<ITypeInfo> type;
        if (SUCCEEDED(library.GetTypeInfoType(i, &kind)) && kind == TKIND_COCLASS &&
            SUCCEEDED(library.GetTypeInfo(i, type.Put())))
            use(*type.Get());
    }
}

CLSID ClassIdOf(ITypeInfo& type) {
    TYPEATTR* attributes = nullptr;
    comkit::ThrowIfFailed(type.GetTypeAttr(&attributes));
    const CLSID clsid = attributes->guid;
    type.ReleaseTypeAttr(attributes);
    return clsid;
}

/// True when every class of the file's type library is registered for this very file.
bool IsRegistered(const std::wstring& path) {
    comkit::ComPtr<ITypeLib> library;
    if (FAILED(LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.Put()))) return false;
    bool any = false;
    bool all = true;
    ForEachClass(*library, [&](ITypeInfo& type) {
        any = true;
        all = all && lstrcmpiW(RegisteredPath(ClassIdOf(type)).c_str(), path.c_str()) == 0;
    });
    return any && all;
}

}  // namespace

ServerLibrary::ServerLibrary(const std::string& file) {
    const std::wstring path = FullPath(file);
    m_module.Reset(LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH));
    if (!m_module) throw TextError(file + ": cannot be loaded: " + ErrorText(comkit::LastErrorResult()));
    const auto install = FindExport<InstallFunction>(m_module.Get(), "DllInstall");
    if (install) {
        const bool wasRegistered = IsRegistered(path);
        const HRESULT hr = install(TRUE, L"user");
        if (FAILED(hr)) throw TextError(file + ": cannot be registered for this user: " + ErrorText(hr));
        m_bUnregister = !wasRegistered;
        return;
    }
    Telling(file, [&] { AnnounceClasses(path); });
    if (m_classes.empty()) throw TextError(file + ": is no component server with a type library");
}

ServerLibrary::~ServerLibrary() {
    for (const DWORD cookie : m_announced) CoRevokeClassObject(cookie);
    if (!m_bUnregister || !m_module) return;
    if (const auto install = FindExport<InstallFunction>(m_module.Get(), "DllInstall")) install(FALSE, L"user");
}

void ServerLibrary::AnnounceClasses(const std::wstring& path) {
    comkit::ComPtr<ITypeLib> library;
    comkit::ThrowIfFailed(LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.Put()));
    comkit::Bstr name;
    comkit::ThrowIfFailed(library->GetDocumentation(-1, name.Put(), nullptr, nullptr, nullptr));
    const std::string libraryName = Narrow(name.Get());
    ForEachClass(*library, [&](ITypeInfo& type) { Announce(type, libraryName); });
}

void ServerLibrary::Announce(ITypeInfo& type, const std::string& library) {
    const auto getClassObject = FindExport<GetClassObjectFunction>(m_module.Get(), "DllGetClassObject");
    if (!getClassObject) throw TextError("is no component server");
    const CLSID clsid = ClassIdOf(type);
    comkit::Bstr name;
    comkit::ThrowIfFailed(type.GetDocumentation(MEMBERID_NIL, name.Put(), nullptr, nullptr, nullptr));
    comkit::ComPtr<IClassFactory> factory;
    if (FAILED(getClassObject(clsid, __uuidof(IClassFactory), factory.PutVoid()))) return;
    DWORD cookie = 0;
    comkit::ThrowIfFailed(
        CoRegisterClassObject(clsid, factory.Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie));
    m_announced.push_back(cookie);
    m_classes.emplace(library + "." + Narrow(name.Get()), clsid);
}

}  // namespace screenhost
