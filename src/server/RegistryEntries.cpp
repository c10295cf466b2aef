#include "server/RegistryEntries.h"

#include <KivDateTime.h>
#include <windows.h>

#include <oleauto.h>

#include "comkit/DecimalText.h"
#include "server/Classes.h"
#include "server/PageClasses.h"

namespace kiv::server {

namespace {

#ifdef _WIN64
constexpr const wchar_t* TypeLibraryPlatform = L"win64";
#else
constexpr const wchar_t* TypeLibraryPlatform = L"win32";
#endif

constexpr const wchar_t* Version = L"1.0";
constexpr const wchar_t* LibraryName = L"Kiv Date/Time Controls";
constexpr const wchar_t* AutomationProxy = L"{00020424-0000-0000-C000-000000000046}";
constexpr const wchar_t* DispatchProxy = L"{00020420-0000-0000-C000-000000000046}";

/// Control, persists to: storage, stream with initialisation, stream, property bag.
constexpr const wchar_t* Categories[] = {
    L"{40FC6ED4-2438-11CF-A3DB-080036F12502}", L"{0DE86A52-2BAA-11CF-A229-00AA003D7352}",
    L"{0DE86A53-2BAA-11CF-A229-00AA003D7352}", L"{0DE86A54-2BAA-11CF-A229-00AA003D7352}",
    L"{0DE86A57-2BAA-11CF-A229-00AA003D7352}",
};

class EntryList {
public:
    void Add(std::wstring key, std::wstring text) { m_entries.push_back({std::move(key), {}, std::move(text), false}); }
    void AddShared(std::wstring key, std::wstring text) {
        m_entries.push_back({std::move(key), {}, std::move(text), true});
    }
    void AddValue(std::wstring key, std::wstring name, std::wstring text) {
        m_entries.push_back({std::move(key), std::move(name), std::move(text), false});
    }
    void AddKey(std::wstring key) { m_entries.push_back({std::move(key), {}, std::nullopt, false}); }
    std::vector<comkit::RegistryEntry> Take() { return std::move(m_entries); }

private:
    std::vector<comkit::RegistryEntry> m_entries;
};

std::wstring ClassKey(REFCLSID clsid) {
    return L"CLSID\\" + comkit::GuidText(clsid);
}

void AddServer(EntryList& list, const std::wstring& classKey, const std::wstring& file) {
    list.Add(classKey + L"\\InprocServer32", file);
    list.AddValue(classKey + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
}

void AddClass(EntryList& list, const ControlClass& c, const std::wstring& file) {
    const std::wstring key = ClassKey(c.clsid);
    const std::wstring progId = std::wstring(L"KivDateTime.") + c.name;
    list.Add(key, c.userType);
    AddServer(list, key, file);
    list.Add(key + L"\\ProgID", progId + L".1");
    list.Add(key + L"\\VersionIndependentProgID", progId);
    list.Add(key + L"\\TypeLib", comkit::GuidText(LIBID_KivDateTime));
    list.Add(key + L"\\Version", Version);
    list.Add(key + L"\\MiscStatus", L"0");
    list.Add(key + L"\\MiscStatus\\1", comkit::DecimalText(c.miscStatus));
    list.Add(key + L"\\Verb\\0", L"&Edit,0,2");
    list.Add(key + L"\\ToolboxBitmap32", file + L", " + comkit::DecimalText(c.toolboxBitmap));
    list.AddKey(key + L"\\Control");
    for (const wchar_t* category : Categories) list.AddKey(key + L"\\Implemented Categories\\" + category);

    list.AddShared(progId + L".1", c.userType);
    list.AddShared(progId + L".1\\CLSID", comkit::GuidText(c.clsid));
    list.AddShared(progId, c.userType);
    list.AddShared(progId + L"\\CLSID", comkit::GuidText(c.clsid));
    list.AddShared(progId + L"\\CurVer", progId + L".1");
}

void AddPage(EntryList& list, const PageClass& c, const std::wstring& file) {
    const std::wstring key = ClassKey(c.clsid);
    list.Add(key, c.name);
    AddServer(list, key, file);
}

void AddInterface(EntryList& list, REFIID iid, const std::wstring& name, const wchar_t* proxy) {
    const std::wstring key = L"Interface\\" + comkit::GuidText(iid);
    list.Add(key, name);
    list.Add(key + L"\\ProxyStubClsid32", proxy);
    list.Add(key + L"\\TypeLib", comkit::GuidText(LIBID_KivDateTime));
    list.AddValue(key + L"\\TypeLib", L"Version", Version);
}

void AddTypeLibrary(EntryList& list, const std::wstring& file) {
    const std::wstring key = L"TypeLib\\" + comkit::GuidText(LIBID_KivDateTime) + L"\\" + Version;
    list.AddShared(key, LibraryName);
    list.AddShared(key + L"\\FLAGS", L"0");
    list.AddShared(key + L"\\HELPDIR", file.substr(0, file.find_last_of(L'\\')));
    list.Add(key + L"\\0\\" + TypeLibraryPlatform, file);
}

}  // namespace

std::vector<comkit::RegistryEntry> ServerEntries(const std::wstring& serverFile) {
    EntryList list;
    for (const ControlClass* c : Classes()) {
        AddClass(list, *c, serverFile);
        AddInterface(list, c->dualInterface, std::wstring(L"_") + c->name, AutomationProxy);
        AddInterface(list, c->eventInterface, std::wstring(L"__") + c->name, DispatchProxy);
    }
    for (const PageClass& c : PageClasses()) AddPage(list, c, serverFile);
    AddTypeLibrary(list, serverFile);
    return list.Take();
}

std::vector<std::wstring> ServerKeys() {
    std::vector<std::wstring> keys;
    for (const ControlClass* c : Classes()) keys.push_back(ClassKey(c->clsid) + L"\\InprocServer32");
    return keys;
}

}  // namespace kiv::server
