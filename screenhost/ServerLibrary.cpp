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
using RegisterFunction = HRESULT(STDAPICALLTYPE*)();

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

/// True when the registry names this very file for any class at all.
bool IsRegistered(const std::wstring& path) {
    comkit::UniqueRegKey classes;
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, L"CLSID", 0, KEY_READ, classes.Put()) != ERROR_SUCCESS) return false;
    std::array<wchar_t, 64> clsid{};
    for (DWORD index = 0;; ++index) {
        DWORD length = clsid.size();
        const LSTATUS status =
            RegEnumKeyExW(classes.Get(), index, clsid.data(), &length, nullptr, nullptr, nullptr, nullptr);
        if (status == ERROR_MORE_DATA) continue;  // no class identifier
        if (status != ERROR_SUCCESS) return false;
        const std::wstring key = std::wstring(clsid.data(), length) + L"\\InprocServer32";
        std::array<wchar_t, 1024> server{};
        DWORD bytes = sizeof(server);
        if (RegGetValueW(classes.Get(), key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, server.data(), &bytes) ==
                ERROR_SUCCESS &&
            lstrcmpiW(server.data(), path.c_str()) == 0)
            return true;
    }
}

/// Whether classes that are registered for one user are found at all: Wine up to version 8 looks at the machine's only.
bool UserClassesCount() {
    constexpr const wchar_t* Parent = L"Software\\Classes";
    constexpr const wchar_t* Probe = L"ScreenHost.Probe";
    comkit::UniqueRegKey parent;
    comkit::UniqueRegKey made;
    comkit::UniqueRegKey seen;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, Parent, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, parent.Put(), nullptr) ||
        RegCreateKeyExW(parent.Get(), Probe, 0, nullptr, REG_OPTION_VOLATILE, KEY_READ, nullptr, made.Put(), nullptr))
        return false;
    const bool counts = RegOpenKeyExW(HKEY_CLASSES_ROOT, Probe, 0, KEY_READ, seen.Put()) == ERROR_SUCCESS;
    made.Reset();
    RegDeleteKeyW(parent.Get(), Probe);
    return counts;
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

}  // namespace

ServerLibrary::ServerLibrary(const std::string& file) : m_file(FullPath(file)) {
    const std::wstring& path = m_file;
    m_module.Reset(LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH));
    if (!m_module) throw TextError(file + ": cannot be loaded: " + ErrorText(comkit::LastErrorResult()));
    if (FindExport<InstallFunction>(m_module.Get(), "DllInstall")) {
        if (IsRegistered(path)) return;
        m_bForUser = UserClassesCount();
        const HRESULT hr = Register(true);
        if (FAILED(hr)) throw TextError(file + ": cannot be registered: " + ErrorText(hr));
        m_bUnregister = true;
        return;
    }
    Telling(file, [&] { AnnounceClasses(path); });
    if (m_classes.empty()) throw TextError(file + ": is no component server with a type library");
}

ServerLibrary::~ServerLibrary() {
    for (const DWORD cookie : m_announced) CoRevokeClassObject(cookie);
    if (m_bUnregister && m_module) Register(false);
}

comkit::ComPtr<IUnknown> ServerLibrary::Create(REFCLSID clsid) const {
    comkit::ComPtr<IUnknown> object;
    comkit::ComPtr<IClassFactory> factory;
    const auto getClassObject = FindExport<GetClassObjectFunction>(m_module.Get(), "DllGetClassObject");
    if (!getClassObject || FAILED(getClassObject(clsid, __uuidof(IClassFactory), factory.PutVoid()))) return object;
    comkit::ThrowIfFailed(factory->CreateInstance(nullptr, __uuidof(IUnknown), object.PutVoid()));
    return object;
}

HRESULT ServerLibrary::Register(bool add) const noexcept {
    if (m_bForUser) {
        const auto install = FindExport<InstallFunction>(m_module.Get(), "DllInstall");
        return install ? install(add, L"user") : E_NOTIMPL;
    }
    const char* const name = add ? "DllRegisterServer" : "DllUnregisterServer";
    const auto change = FindExport<RegisterFunction>(m_module.Get(), name);
    return change ? change() : E_NOTIMPL;
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
