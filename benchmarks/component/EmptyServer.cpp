// A component server that does nothing, but has what every one has: the entry points, and exceptions that become
// results. The size of ours is compared with it.
#include <windows.h>

#include <stdexcept>
#include <string>

extern "C" HRESULT WINAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** out);
extern "C" HRESULT WINAPI DllCanUnloadNow();

extern "C" HRESULT WINAPI DllGetClassObject(REFCLSID /*clsid*/, REFIID iid, void** out) {
    *out = nullptr;
    try {
        if (iid.Data1 == 0) throw std::runtime_error("nothing is asked for");
        return CLASS_E_CLASSNOTAVAILABLE;
    } catch (const std::exception& error) {
        return error.what()[0] == 'n' ? E_NOINTERFACE : E_FAIL;
    }
}

extern "C" HRESULT WINAPI DllCanUnloadNow() {
    return S_OK;
}
