#include "Server.h"

#include <cstdio>
#include <cstdlib>

namespace component {

namespace {

std::wstring ProgramFolder() {
    wchar_t name[MAX_PATH];
    const DWORD length = GetModuleFileNameW(nullptr, name, MAX_PATH);
    std::wstring path(name, length);
    return path.substr(0, path.find_last_of(L'\\') + 1);
}

template <class Function>
void Find(HMODULE module, const char* name, Function& out) {
    out = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
    if (out) return;
    std::printf("The server does not export %s\n", name);
    std::exit(1);
}

}  // namespace

Server& Server::Get() {
    static Server server;
    return server;
}

Server::Server() : m_file(ProgramFolder() + L"KivDateTime.ocx") {
    const HMODULE module = LoadLibraryW(m_file.c_str());
    if (!module) {
        std::printf("Cannot load %ls: error %lu\n", m_file.c_str(), GetLastError());
        std::exit(1);
    }
    Find(module, "DllGetClassObject", m_getClassObject);
    Find(module, "DllCanUnloadNow", m_canUnload);
    Find(module, "DllRegisterServer", m_register);
    Find(module, "DllUnregisterServer", m_unregister);
    Find(module, "DllInstall", m_install);
}

comkit::ComPtr<IUnknown> Server::CreateControl(REFCLSID clsid) const {
    comkit::ComPtr<IClassFactory> factory;
    comkit::ComPtr<IUnknown> control;
    HRESULT hr = GetClassObject(clsid, IID_IClassFactory, factory.PutVoid());
    if (factory) hr = factory->CreateInstance(nullptr, IID_IUnknown, control.PutVoid());
    if (!control) {
        std::printf("The server makes no control: %08lX\n", hr);
        std::exit(1);
    }
    return control;
}

}  // namespace component
