// Entry points of the server: class objects, unloading, self-registration.
#include "simulator/Server.h"

#include <vector>

#include "comkit/ComObject.h"
#include "comkit/Errors.h"
#include "comkit/Registration.h"
#include "simulator/Module.h"
#include "VexaSimulator.h"

// The linker's name for the start of the image.
extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace vexa {

HMODULE ThisModule() noexcept {
    return reinterpret_cast<HMODULE>(&__ImageBase);
}

namespace {

class ClassFactory final : public comkit::ComObject<ClassFactory, IClassFactory> {
public:
    explicit ClassFactory(const ServerClass& made) noexcept : m_class(made) {}

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** out) override {
        if (!out) return E_POINTER;
        *out = nullptr;
        if (outer) return CLASS_E_NOAGGREGATION;
        return comkit::Guarded([&] { return m_class.make()->QueryInterface(iid, out); });
    }

    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
        comkit::g_liveObjects += lock ? 1 : -1;
        return S_OK;
    }

private:
    const ServerClass& m_class;
};

std::wstring ClassKey(const ServerClass& made) {
    return L"CLSID\\" + comkit::GuidText(made.clsid);
}

void AddEntriesOf(const ServerClass& made, const std::wstring& path, std::vector<comkit::RegistryEntry>& entries) {
    const std::wstring clsid = comkit::GuidText(made.clsid);
    const std::wstring key = ClassKey(made);
    const std::wstring name = made.progId;
    entries.insert(entries.end(), {
                                      {name, L"", made.description, true},
                                      {name + L"\\CLSID", L"", clsid, true},
                                      {key, L"", made.description},
                                      {key + L"\\ProgID", L"", name},
                                      {key + L"\\InprocServer32", L"", path},
                                      {key + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
                                  });
}

std::vector<comkit::RegistryEntry> ServerEntries() {
    const std::wstring path = comkit::ModulePath(ThisModule());
    std::vector<comkit::RegistryEntry> entries;
    for (const ServerClass& made : ServerClasses()) AddEntriesOf(made, path, entries);
    return entries;
}

void Register(comkit::RegistrationScope scope) {
    comkit::RegisterEntries(scope, ServerEntries());
}

void Unregister(comkit::RegistrationScope scope) {
    std::vector<std::wstring> marks;
    for (const ServerClass& made : ServerClasses()) marks.push_back(ClassKey(made));
    comkit::UnregisterEntries(scope, ServerEntries(), marks);
}

}  // namespace

}  // namespace vexa

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    for (const vexa::ServerClass& made : vexa::ServerClasses()) {
        if (!IsEqualCLSID(clsid, made.clsid)) continue;
        return comkit::Guarded([&] { return comkit::MakeObject<vexa::ClassFactory>(made)->QueryInterface(iid, out); });
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
    return comkit::g_liveObjects == 0 ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
    return comkit::Guarded([] { vexa::Register(comkit::RegistrationScope::Machine); });
}

STDAPI DllUnregisterServer() {
    return comkit::Guarded([] { vexa::Unregister(comkit::RegistrationScope::Machine); });
}

/// "user" registers for the current user only.
STDAPI DllInstall(BOOL install, PCWSTR commandLine) {
    const bool forUser = commandLine && _wcsicmp(commandLine, L"user") == 0;
    const auto scope = forUser ? comkit::RegistrationScope::User : comkit::RegistrationScope::Machine;
    return comkit::Guarded([&] { install ? vexa::Register(scope) : vexa::Unregister(scope); });
}
