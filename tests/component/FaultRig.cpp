#include "FaultRig.h"

#include <cstdio>

#include "Sheet.h"

namespace component {

using comkit::ComPtr;

namespace {

template <class Function>
void Find(HMODULE module, const char* name, Function& out) {
    out = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

BOOL CALLBACK CountWindow(HWND, LPARAM count) {
    ++*reinterpret_cast<long*>(count);
    return TRUE;
}

}  // namespace

FaultServer::FaultServer(bool isFresh) : m_file(Server::Get().File()) {
    if (isFresh) {
        const std::wstring copy = m_file.substr(0, m_file.find_last_of(L'\\') + 1) + L"KivDateTimeFresh.ocx";
        EXPECT_TRUE(CopyFileW(m_file.c_str(), copy.c_str(), FALSE)) << "no copy of the server";
        m_file = copy;
        m_copy.Reset(LoadLibraryW(m_file.c_str()));
    }
    m_module = GetModuleHandleW(m_file.c_str());
    Find(m_module, "DllGetClassObject", m_getClassObject);
    Find(m_module, "DllCanUnloadNow", m_canUnload);
}

FaultServer::~FaultServer() {
    if (!m_copy) return;
    m_copy.Reset();
    EXPECT_EQ(nullptr, GetModuleHandleW(m_file.c_str())) << "the copy stays, and the next one is none in which nothing "
                                                            "has happened";
    DeleteFileW(m_file.c_str());
}

HRESULT FaultServer::Create(REFCLSID clsid, REFIID iid, void** out) const {
    *out = nullptr;
    ComPtr<IClassFactory> factory;
    const HRESULT hr = m_getClassObject(clsid, IID_IClassFactory, factory.PutVoid());
    if (FAILED(hr)) return hr;
    return factory ? factory->CreateInstance(nullptr, iid, out) : E_UNEXPECTED;
}

HRESULT TriedControl::Make(const FaultServer& server, bool userMode) {
    Drop();
    site = comkit::MakeObject<RecordingSite>();
    site->extenderName = std::wstring(m_tested.name) + L"1";
    site->userMode = userMode;
    HRESULT hr = server.Create(m_tested.clsid, IID_IUnknown, object.PutVoid());
    if (FAILED(hr)) return hr;
    if (!object) return E_UNEXPECTED;
    site->Attach(object.Get());
    hr = As<IOleObject>()->SetClientSite(site.Get());
    if (SUCCEEDED(hr)) hr = As<IPersistStreamInit>()->InitNew();
    if (FAILED(hr)) Drop();
    return hr;
}

void TriedControl::Drop() {
    if (!object) return;
    const auto ole = As<IOleObject>();
    ole->Close(OLECLOSE_NOSAVE);
    ole->SetClientSite(nullptr);
    site->Attach(nullptr);
    object.Reset();
}

HRESULT TriedControl::DoVerb(LONG verb) const {
    return As<IOleObject>()->DoVerb(verb, nullptr, site.Get(), 0, site->Window(), &site->position);
}

HWND TriedControl::Window() const {
    HWND window = nullptr;
    As<IOleInPlaceObject>()->GetWindow(&window);
    return window;
}

long TriedControl::Children() const {
    long count = 0;
    if (const HWND window = Window()) EnumChildWindows(window, &CountWindow, reinterpret_cast<LPARAM>(&count));
    return count;
}

std::wstring TriedControl::TextOf(const wchar_t* name) const {
    return object ? Text(Invoke(*As<IDispatch>(), name, DISPATCH_PROPERTYGET).value.Get()) : L"(no control)";
}

HRESULT TriedControl::Draw(HDC dc) const {
    const RECTL bounds{0, 0, Sheet::Width, Sheet::Height};
    return As<IViewObject2>()->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc, &bounds, nullptr, nullptr, 0);
}

bool FaultRig::Note(const char* what, HRESULT hr) {
    if (SUCCEEDED(hr)) return true;
    failed = true;
    if (IsDocumentedFailure(hr)) return false;
    char text[128];
    std::snprintf(text, sizeof(text), "%s answered %08lX", what, static_cast<unsigned long>(hr));
    complaints.emplace_back(text);
    return false;
}

bool FaultRig::Note(const char* what, const CallResult& result) {
    return Note(what, result.hr == DISP_E_EXCEPTION ? result.scode : result.hr);
}

void FaultRig::Expect(bool holds, const char* what) {
    if (!holds) complaints.emplace_back(what);
}

void FaultRig::MakeBoth(bool userMode) {
    for (TriedControl* const control : Controls()) Note("making a control", control->Make(server, userMode));
}

bool IsDocumentedFailure(HRESULT hr) noexcept {
    if (HRESULT_FACILITY(hr) == FACILITY_WIN32 || HRESULT_FACILITY(hr) == FACILITY_CONTROL)
        return hr != E_INVALIDARG && hr != E_HANDLE;
    return hr == E_FAIL || hr == TYPE_E_CANTLOADLIBRARY;
}

}  // namespace component
