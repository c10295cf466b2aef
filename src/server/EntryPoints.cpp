// What the system calls by name.
#include <objbase.h>
#include <olectl.h>

#include <string_view>

#include "server/Boundary.h"
#include "server/Classes.h"
#include "server/ClassFactory.h"
#include "server/Module.h"
#include "server/Registration.h"

using namespace kiv::server;

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID processEnds) {
    if (reason == DLL_PROCESS_ATTACH) {
        Module::Attach(instance);
        DisableThreadLibraryCalls(instance);
    } else if (reason == DLL_PROCESS_DETACH && processEnds) {
        Module::AbandonCaches();
    }
    return TRUE;
}

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, LPVOID* out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    for (const ControlClass* controlClass : Classes())
        if (IsEqualCLSID(clsid, controlClass->clsid))
            return AtBoundary(
                [&] { return comkit::MakeObject<ClassFactory>(*controlClass)->QueryInterface(iid, out); });
    return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
    if (comkit::g_liveObjects != 0) return S_FALSE;
    Module::DropCaches();
    return S_OK;
}

STDAPI DllRegisterServer() {
    return AtBoundary([] { RegisterServer(RegistrationScope::Machine); });
}

STDAPI DllUnregisterServer() {
    return AtBoundary([] { UnregisterServer(RegistrationScope::Machine); });
}

/// With "user", registers for the current user alone, which takes no administrator; with nothing, for the machine.
STDAPI DllInstall(BOOL install, LPCWSTR commandLine) {
    const std::wstring_view words(commandLine ? commandLine : L"");
    if (!words.empty() &&
        CompareStringOrdinal(words.data(), static_cast<int>(words.size()), L"user", 4, TRUE) != CSTR_EQUAL)
        return E_INVALIDARG;
    const auto scope = words.empty() ? RegistrationScope::Machine : RegistrationScope::User;
    return AtBoundary([&] { install ? RegisterServer(scope) : UnregisterServer(scope); });
}
