// The server as a server: class objects, unloading, registration, type library, activation by manifest.
#include <algorithm>

#include "ControlFixture.h"
#include "FaultRig.h"

namespace component {
namespace {

using comkit::ComPtr;

// --- class objects ---------------------------------------------------------------------------------------------------

TEST(ClassObject, RefusesWhatItDoesNotOffer) {
    ComPtr<IUnknown> out;
    EXPECT_EQ(CLASS_E_CLASSNOTAVAILABLE, Server::Get().GetClassObject(IID_IOleObject, IID_IUnknown, out.PutVoid()));
    EXPECT_EQ(E_NOINTERFACE, Server::Get().GetClassObject(CLSID_KivSetDateTime, IID_IOleObject, out.PutVoid()));
    EXPECT_EQ(E_POINTER, Server::Get().GetClassObject(CLSID_KivSetDateTime, IID_IClassFactory, nullptr));
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(S_OK, Server::Get().GetClassObject(CLSID_KivSetDateTime, IID_IClassFactory, factory.PutVoid()));
    void* aggregate = &aggregate;
    EXPECT_EQ(CLASS_E_NOAGGREGATION, factory->CreateInstance(factory.Get(), IID_IUnknown, &aggregate));
    EXPECT_EQ(nullptr, aggregate);
    EXPECT_EQ(E_NOINTERFACE, factory->CreateInstance(nullptr, IID_IStream, out.PutVoid()));
    EXPECT_FALSE(factory.As<IClassFactory2>()) << "there is no licence to ask for";
}

TEST(ClassObject, TheServerUnloadsWhenNothingOfItLives) {
    const Server& server = Server::Get();
    ASSERT_EQ(S_OK, server.CanUnload());
    auto control = server.CreateControl();
    EXPECT_EQ(S_FALSE, server.CanUnload());
    auto point = ComPtr<IConnectionPointContainer>::From(control.Get());
    ComPtr<IEnumConnectionPoints> list;
    point->EnumConnectionPoints(list.Put());
    point.Reset();
    control.Reset();
    EXPECT_EQ(S_FALSE, server.CanUnload()) << "an enumerator is held";
    list.Reset();
    EXPECT_EQ(S_OK, server.CanUnload());
    ComPtr<IClassFactory> factory;
    server.GetClassObject(CLSID_KivSetDateTime, IID_IClassFactory, factory.PutVoid());
    factory->LockServer(TRUE);
    factory.Reset();
    EXPECT_EQ(S_FALSE, server.CanUnload());
    server.GetClassObject(CLSID_KivSetDateTime, IID_IClassFactory, factory.PutVoid());
    factory->LockServer(FALSE);
    factory.Reset();
    EXPECT_EQ(S_OK, server.CanUnload());
}

/// The next one of thread-local storage, of which a process has about a thousand.
DWORD NextThreadIndex() {
    const DWORD index = TlsAlloc();
    TlsFree(index);
    return index;
}

TEST(ClassObject, AServerThatWasUsedAndUnloadedLeavesNothingOfItsThreadsBehind) {
    const auto use = [] {
        const FaultServer server(true);
        TriedControl control(SetClass);
        ASSERT_EQ(S_OK, control.Make(server, true));
        EXPECT_EQ(S_OK, control.DoVerb(OLEIVERB_UIACTIVATE));
        EXPECT_TRUE(FAILED(control.Put(L"Mode", 99).hr)) << "by an exception inside";
        control.Drop();
        EXPECT_EQ(S_OK, server.CanUnload());
    };
    use();
    const DWORD before = NextThreadIndex();
    for (int i = 0; i < 3; ++i) use();
    EXPECT_EQ(before, NextThreadIndex());
}

// --- registration ----------------------------------------------------------------------------------------------------

/// Every key and value below a key, in order, as text.
void Export(HKEY root, const std::wstring& path, std::wstring& out) {
    comkit::UniqueRegKey key;
    if (RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, key.Put()) != ERROR_SUCCESS) return;
    out += L"[" + path + L"]\n";
    std::vector<std::wstring> values;
    wchar_t name[512];
    BYTE data[4096];
    for (DWORD i = 0;; ++i) {
        DWORD nameLength = 512;
        DWORD size = sizeof(data);
        DWORD type = 0;
        if (RegEnumValueW(key.Get(), i, name, &nameLength, nullptr, &type, data, &size) != ERROR_SUCCESS) break;
        values.push_back(std::wstring(name, nameLength) + L"=" + std::to_wstring(type) + L":" +
                         std::wstring(reinterpret_cast<wchar_t*>(data), size / sizeof(wchar_t)));
    }
    std::sort(values.begin(), values.end());
    for (const auto& value : values) out += value + L"\n";
    std::vector<std::wstring> keys;
    for (DWORD i = 0;; ++i) {
        DWORD nameLength = 512;
        if (RegEnumKeyExW(key.Get(), i, name, &nameLength, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
        keys.emplace_back(name, nameLength);
    }
    std::sort(keys.begin(), keys.end());
    for (const auto& sub : keys) Export(root, std::wstring(path).append(L"\\").append(sub), out);
}

constexpr const wchar_t* ClassesPath = L"Software\\Classes";
constexpr const wchar_t* ClassKey = L"Software\\Classes\\CLSID\\{07C49BA0-1917-43EB-AC2A-BB47C300C410}";

/// A root with nothing in it counts as none: whoever takes the last class away takes it along, and a user need not have
/// it. Either may be there when a test begins.
std::wstring ExportClasses(HKEY root) {
    std::wstring text;
    Export(root, ClassesPath, text);
    return text == std::wstring(L"[") + ClassesPath + L"]\n" ? std::wstring() : text;
}

std::wstring ValueAt(HKEY root, const std::wstring& path, const wchar_t* name = L"") {
    wchar_t text[512] = L"";
    DWORD size = sizeof(text);
    const LSTATUS status = RegGetValueW(root, path.c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size);
    return status == ERROR_SUCCESS ? std::wstring(text) : L"(none)";
}

bool HasKey(HKEY root, const std::wstring& path) {
    comkit::UniqueRegKey key;
    return RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, key.Put()) == ERROR_SUCCESS;
}

struct Scope {
    const char* name;
    HKEY root;
    HRESULT (*install)(bool);
};

class Registration : public testing::TestWithParam<Scope> {};

struct RegisteredClass {
    const TestedClass& tested;
    const wchar_t* key;
    DWORD status;
};
const RegisteredClass RegisteredClasses[] = {
    {SetClass, ClassKey, 0x20191},
    {ShowClass, L"Software\\Classes\\CLSID\\{66644A8F-EE22-4BCA-AEAF-EA98A6E86AB8}", 0x20191 | OLEMISC_NOUIACTIVATE},
};

INSTANTIATE_TEST_SUITE_P(, Registration,
                         testing::Values(Scope{"PerMachine", HKEY_LOCAL_MACHINE,
                                               [](bool install) {
                                                   return install ? Server::Get().Register()
                                                                  : Server::Get().Unregister();
                                               }},
                                         Scope{"PerUser", HKEY_CURRENT_USER,
                                               [](bool install) { return Server::Get().Install(install, L"user"); }}),
                         [](const auto& instance) { return instance.param.name; });

TEST_P(Registration, LeavesTheRegistryAsItWasAfterUnregistering) {
    const Scope& scope = GetParam();
    const std::wstring before = ExportClasses(scope.root);
    ASSERT_EQ(S_OK, scope.install(true));
    std::wstring registered;
    Export(scope.root, ClassKey, registered);
    EXPECT_NE(L"", registered);
    ASSERT_EQ(S_OK, scope.install(true)) << "once more";
    std::wstring again;
    Export(scope.root, ClassKey, again);
    EXPECT_EQ(registered, again);
    ASSERT_EQ(S_OK, scope.install(false));
    EXPECT_EQ(S_OK, scope.install(false)) << "nothing is left to take away";
    EXPECT_EQ(before, ExportClasses(scope.root));
}

TEST_P(Registration, KeepsWhatOthersPutBesideItsOwn) {
    const Scope& scope = GetParam();
    ASSERT_EQ(S_OK, scope.install(true));
    const std::wstring foreign = std::wstring(ClassKey) + L"\\Foreign";
    comkit::UniqueRegKey key;
    RegCreateKeyExW(scope.root, foreign.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key.Put(), nullptr);
    key.Reset();
    ASSERT_EQ(S_OK, scope.install(false));
    EXPECT_EQ(ERROR_SUCCESS, RegOpenKeyExW(scope.root, foreign.c_str(), 0, KEY_READ, key.Put()));
    key.Reset();
    RegDeleteTreeW(scope.root, ClassKey);
}

/// A class's bitmap, as 32 bits a pixel; of the size that toolboxes want.
std::vector<DWORD> ToolboxPicture(const std::wstring& place) {
    const std::size_t comma = place.find_last_of(L',');
    const HMODULE module = GetModuleHandleW(place.substr(0, comma).c_str());
    const comkit::UniqueBitmap picture(LoadBitmapW(module, MAKEINTRESOURCEW(std::stoi(place.substr(comma + 1)))));
    BITMAP size{};
    EXPECT_TRUE(GetObjectW(picture.Get(), sizeof(size), &size));
    EXPECT_EQ(16, size.bmWidth);
    EXPECT_EQ(15, size.bmHeight);
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), 16, -15, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    std::vector<DWORD> pixels(std::size_t{16} * 15);
    const comkit::WindowDc screen(nullptr);
    EXPECT_EQ(15, GetDIBits(screen.Get(), picture.Get(), 0, 15, pixels.data(), &info, DIB_RGB_COLORS));
    return pixels;
}

TEST_P(Registration, WritesWhatContainersLookFor) {
    const Scope& scope = GetParam();
    ASSERT_EQ(S_OK, scope.install(true));
    const std::wstring& file = Server::Get().File();
    std::vector<std::vector<DWORD>> pictures;
    for (const RegisteredClass& registered : RegisteredClasses) {
        const std::wstring clsid = registered.key;
        const std::wstring progId = std::wstring(L"KivDateTime.") + registered.tested.name;
        EXPECT_EQ(L"Apartment", ValueAt(scope.root, clsid + L"\\InprocServer32", L"ThreadingModel"));
        EXPECT_EQ(0, _wcsicmp(file.c_str(), ValueAt(scope.root, clsid + L"\\InprocServer32").c_str()));
        EXPECT_EQ(progId + L".1", ValueAt(scope.root, clsid + L"\\ProgID"));
        EXPECT_EQ(progId, ValueAt(scope.root, clsid + L"\\VersionIndependentProgID"));
        EXPECT_EQ(std::to_wstring(registered.status), ValueAt(scope.root, clsid + L"\\MiscStatus\\1"));
        EXPECT_EQ(L"1.0", ValueAt(scope.root, clsid + L"\\Version"));
        EXPECT_EQ(L"{B13782F3-EA8F-48F3-BE91-F6C6084B88F8}", ValueAt(scope.root, clsid + L"\\TypeLib"));
        EXPECT_EQ(L"&Edit,0,2", ValueAt(scope.root, clsid + L"\\Verb\\0"));
        EXPECT_EQ(progId + L".1", ValueAt(scope.root, L"Software\\Classes\\" + progId + L"\\CurVer"));
        const std::wstring implemented = L"\\Implemented Categories\\";
        for (const std::wstring& there :
             {std::wstring(L"\\Control"), implemented + L"{40FC6ED4-2438-11CF-A3DB-080036F12502}",
              implemented + L"{0DE86A52-2BAA-11CF-A229-00AA003D7352}",
              implemented + L"{0DE86A53-2BAA-11CF-A229-00AA003D7352}",
              implemented + L"{0DE86A57-2BAA-11CF-A229-00AA003D7352}"})
            EXPECT_TRUE(HasKey(scope.root, clsid + there)) << testing::PrintToString(there);
        EXPECT_FALSE(HasKey(scope.root, clsid + L"\\Required Categories"));
        pictures.push_back(ToolboxPicture(ValueAt(scope.root, clsid + L"\\ToolboxBitmap32")));
        for (const wchar_t* safe :
             {L"{7DD95801-9882-11CF-9FA9-00AA006C42C4}", L"{7DD95802-9882-11CF-9FA9-00AA006C42C4}"})
            EXPECT_FALSE(HasKey(scope.root, clsid + implemented + safe));
    }
    EXPECT_NE(pictures[0], pictures[1]);
    const std::wstring library = L"Software\\Classes\\TypeLib\\{B13782F3-EA8F-48F3-BE91-F6C6084B88F8}\\1.0\\HELPDIR";
    EXPECT_EQ(file.substr(0, file.find_last_of(L'\\')), ValueAt(scope.root, library));
    EXPECT_EQ(S_OK, scope.install(false));
}

/// Not every system that these tests run on looks at a user's own classes.
bool FindsClassesOf(HKEY root) {
    const std::wstring path = L"Software\\Classes\\Kiv.Probe\\CLSID";
    comkit::UniqueRegKey key;
    RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key.Put(), nullptr);
    constexpr wchar_t any[] = L"{07C49BA0-1917-43EB-AC2A-BB47C300C410}";
    RegSetValueExW(key.Get(), nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(any), sizeof(any));
    key.Reset();
    CLSID clsid{};
    const HRESULT hr = CLSIDFromProgID(L"Kiv.Probe", &clsid);
    RegDeleteTreeW(root, L"Software\\Classes\\Kiv.Probe");
    return SUCCEEDED(hr);
}

/// As a container that knows no more than the name.
void CreateBothByName() {
    for (const RegisteredClass& registered : RegisteredClasses) {
        CLSID clsid{};
        EXPECT_EQ(S_OK, CLSIDFromProgID((std::wstring(L"KivDateTime.") + registered.tested.name).c_str(), &clsid));
        ComPtr<IDispatch> control;
        EXPECT_EQ(S_OK, CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, control.PutVoid()));
        if (control) {
            // Not the number that the name stands for: without registration that is one of the system's own.
            CLSID made{};
            EXPECT_EQ(S_OK, ComPtr<IPersistStreamInit>::From(control.Get())->GetClassID(&made));
            EXPECT_TRUE(IsEqualCLSID(registered.tested.clsid, made));
            EXPECT_EQ(L"True", Text(comkit::Call(*control, L"Enabled").Get()));
        }
        DWORD status = 0;
        EXPECT_EQ(S_OK, OleRegGetMiscStatus(clsid, DVASPECT_CONTENT, &status));
        EXPECT_EQ(registered.status, status);
    }
}

TEST_P(Registration, CreatesTheControlsByProgIdAndFindsTheTypeLibrary) {
    const Scope& scope = GetParam();
    if (!FindsClassesOf(scope.root)) GTEST_SKIP() << "this system does not look at the classes of a user";
    ASSERT_EQ(S_OK, scope.install(true));
    CreateBothByName();
    CoFreeUnusedLibraries();
    if (scope.root == HKEY_LOCAL_MACHINE) {
        ComPtr<ITypeLib> library;
        EXPECT_EQ(S_OK, LoadRegTypeLib(LIBID_KivDateTime, 1, 0, 0, library.Put()));
    }
    EXPECT_EQ(S_OK, scope.install(false));
}

TEST(Install, KnowsNoOtherCommand) {
    EXPECT_EQ(E_INVALIDARG, Server::Get().Install(true, L"everybody"));
}

TEST(Install, AFailureInTheMiddlePutsEverythingBack) {
    // Somebody else holds a name that a key of ours needs as a volatile key: no lasting key can be made below it.
    const std::wstring blocked = L"Software\\Classes\\Interface\\{C7E7AF01-E2BE-4F3F-B55E-F40AE53DD1C8}";
    comkit::UniqueRegKey key;
    RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\Classes\\Interface", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                    key.Put(), nullptr);
    ASSERT_EQ(ERROR_SUCCESS, RegCreateKeyExW(HKEY_CURRENT_USER, blocked.c_str(), 0, nullptr, REG_OPTION_VOLATILE,
                                             KEY_ALL_ACCESS, nullptr, key.Put(), nullptr));
    key.Reset();
    const std::wstring before = ExportClasses(HKEY_CURRENT_USER);
    const HRESULT hr = Server::Get().Install(true, L"user");
    const std::wstring after = ExportClasses(HKEY_CURRENT_USER);
    Server::Get().Install(false, L"user");
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Classes\\Interface");
    if (SUCCEEDED(hr)) GTEST_SKIP() << "this system lets lasting keys stand below volatile ones";
    EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_CHILD_MUST_BE_VOLATILE), hr);
    EXPECT_EQ(before, after);
}

// --- without registration --------------------------------------------------------------------------------------------

TEST(Manifest, CreatesTheControlsWithoutRegistration) {
    std::wstring manifest = Server::Get().File();
    manifest.replace(manifest.size() - 3, 3, L"manifest");
    ACTCTXW description{};
    description.cbSize = sizeof(description);
    description.lpSource = manifest.c_str();
    const HANDLE context = CreateActCtxW(&description);
    ASSERT_NE(INVALID_HANDLE_VALUE, context) << GetLastError();
    ULONG_PTR cookie = 0;
    ASSERT_TRUE(ActivateActCtx(context, &cookie));
    {
        CreateBothByName();
        ComPtr<ITypeLib> library;
        EXPECT_EQ(S_OK, LoadRegTypeLib(LIBID_KivDateTime, 1, 0, 0, library.Put()));
    }
    DeactivateActCtx(0, cookie);
    ReleaseActCtx(context);
}

// --- type library ----------------------------------------------------------------------------------------------------

TEST(TypeLibrary, NamesTheClassesWithTheirDefaultInterfacesAndEvents) {
    ComPtr<ITypeLib> library;
    ASSERT_EQ(S_OK, LoadTypeLibEx(Server::Get().File().c_str(), REGKIND_NONE, library.Put()));
    for (const TestedClass* const tested : {&SetClass, &ShowClass}) {
        ComPtr<ITypeInfo> type;
        ASSERT_EQ(S_OK, library->GetTypeInfoOfGuid(tested->clsid, type.Put()));
        const IID* expected[] = {&tested->members, &tested->events};
        for (UINT i = 0; i < 2; ++i) {
            HREFTYPE reference = 0;
            ASSERT_EQ(S_OK, type->GetRefTypeOfImplType(i, &reference));
            ComPtr<ITypeInfo> implemented;
            ASSERT_EQ(S_OK, type->GetRefTypeInfo(reference, implemented.Put()));
            TYPEATTR* attributes = nullptr;
            ASSERT_EQ(S_OK, implemented->GetTypeAttr(&attributes));
            EXPECT_TRUE(IsEqualGUID(*expected[i], attributes->guid));
            implemented->ReleaseTypeAttr(attributes);
        }
    }
}

TEST(TypeLibrary, UsesNoNameThatContainersHaveForTheirOwn) {
    ComPtr<ITypeLib> library;
    ASSERT_EQ(S_OK, LoadTypeLibEx(Server::Get().File().c_str(), REGKIND_NONE, library.Put()));
    for (const IID* const members : {&SetClass.members, &SetClass.events, &ShowClass.members, &ShowClass.events}) {
        ComPtr<ITypeInfo> type;
        ASSERT_EQ(S_OK, library->GetTypeInfoOfGuid(*members, type.Put()));
        for (const wchar_t* name :
             {L"Name", L"Visible", L"Parent", L"Cancel", L"Default", L"Left", L"Top", L"Width", L"Height", L"Tag",
              L"Index", L"TabIndex", L"TabStop", L"Align", L"ToolTipText", L"Move", L"SetFocus"}) {
            std::wstring copy(name);
            LPOLESTR text = copy.data();
            MEMBERID id = 0;
            EXPECT_EQ(DISP_E_UNKNOWNNAME, type->GetIDsOfNames(&text, 1, &id)) << testing::PrintToString(copy);
        }
    }
}

}  // namespace
}  // namespace component
