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

/// The library takes memory for the lock of all function-local variables when the first of them is made, and crashes
/// without. Where there is none now, the module is not loaded.
void MakeLockOfLocals() noexcept {
    static const volatile DWORD loaded = GetCurrentThreadId();
    static_cast<void>(loaded);
}

/// The same with what it sets up for the first exception. Where the system itself unwinds the stack, in 64 bits, there
/// is nothing of that kind.
void SetUpUnwinding() noexcept {
    if constexpr (sizeof(void*) == 4) {
        try {
            throw 0;
        } catch (int) {
            return;
        }
    }
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID processEnds) {
    if (reason == DLL_PROCESS_ATTACH) {
        MakeLockOfLocals();
        SetUpUnwinding();
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
