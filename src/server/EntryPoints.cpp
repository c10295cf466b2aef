// What the system calls by name.
#include <objbase.h>
#include <olectl.h>

#include <string_view>

#include "comkit/ComObject.h"
#include "server/Boundary.h"
#include "server/Classes.h"
#include "server/ExceptionState.h"
#include "server/Module.h"
#include "server/RegistryEntries.h"

using namespace kiv::server;

namespace {

HRESULT Register(comkit::RegistrationScope scope) noexcept {
    return AtBoundary([scope] { comkit::RegisterEntries(scope, ServerEntries(Module::FileName())); });
}

HRESULT Unregister(comkit::RegistrationScope scope) noexcept {
    return AtBoundary([scope] { comkit::UnregisterEntries(scope, ServerEntries(Module::FileName()), ServerKeys()); });
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID processEnds) {
    if (reason == DLL_PROCESS_ATTACH) {
        Module::Attach(instance);
    } else if (reason == DLL_THREAD_DETACH) {
        ForgetExceptionsOfThread();
    } else if (reason == DLL_PROCESS_DETACH && processEnds) {
        Module::AbandonCaches();
    }
    return TRUE;
}

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, LPVOID* out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    return AtBoundary([&] {
        const auto factory = FactoryOf(clsid);
        return factory ? factory->QueryInterface(iid, out) : CLASS_E_CLASSNOTAVAILABLE;
    });
}

STDAPI DllCanUnloadNow() {
    if (comkit::g_liveObjects != 0) return S_FALSE;
    Module::DropCaches();
    return S_OK;
}

STDAPI DllRegisterServer() {
    return Register(comkit::RegistrationScope::Machine);
}

STDAPI DllUnregisterServer() {
    return Unregister(comkit::RegistrationScope::Machine);
}

/// With "user", registers for the current user alone, which takes no administrator; with nothing, for the machine.
STDAPI DllInstall(BOOL install, LPCWSTR commandLine) {
    const std::wstring_view words(commandLine ? commandLine : L"");
    if (!words.empty() &&
        CompareStringOrdinal(words.data(), static_cast<int>(words.size()), L"user", 4, TRUE) != CSTR_EQUAL)
        return E_INVALIDARG;
    const auto scope = words.empty() ? comkit::RegistrationScope::Machine : comkit::RegistrationScope::User;
    return install ? Register(scope) : Unregister(scope);
}
