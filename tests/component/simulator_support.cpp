#include "simulator_support.h"

#include <gtest/gtest.h>

#include "comkit/Registration.h"

namespace simulator_test {

using comkit::ComPtr;
using comkit::Variant;

namespace {

void DumpKey(HKEY key, const std::wstring& path, std::wstring& out) {
    wchar_t name[512];
    for (DWORD i = 0;; ++i) {
        auto length = static_cast<DWORD>(std::size(name));
        BYTE data[1024];
        DWORD size = sizeof(data);
        DWORD type = 0;
        if (RegEnumValueW(key, i, name, &length, nullptr, &type, data, &size) != ERROR_SUCCESS) break;
        out += path + L" : " + name + L" = " + std::to_wstring(type) + L" ";
        for (DWORD b = 0; b + 1 < size; b += 2) out += static_cast<wchar_t>(data[b] | (data[b + 1] << 8));
        out += L'\n';
    }
    for (DWORD i = 0;; ++i) {
        auto length = static_cast<DWORD>(std::size(name));
        if (RegEnumKeyExW(key, i, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
        comkit::UniqueRegKey child;
        if (RegOpenKeyExW(key, name, 0, KEY_READ, child.Put()) != ERROR_SUCCESS) continue;
        out += path + L"\\" + name + L'\n';
        DumpKey(child.Get(), path + L"\\" + name, out);
    }
}

}  // namespace

ScratchUserRegistry::ScratchUserRegistry()
    : m_path(L"Software\\VexaSimulatorTest" + std::to_wstring(GetCurrentProcessId())) {
    RegDeleteTreeW(HKEY_CURRENT_USER, m_path.c_str());
    comkit::detail::ThrowIfRegistryFailed(RegCreateKeyExW(HKEY_CURRENT_USER, m_path.c_str(), 0, nullptr, 0,
                                                          KEY_ALL_ACCESS, nullptr, m_key.Put(), nullptr));
    comkit::detail::ThrowIfRegistryFailed(RegOverridePredefKey(HKEY_CURRENT_USER, m_key.Get()));
}

ScratchUserRegistry::~ScratchUserRegistry() {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    m_key.Reset();
    RegDeleteTreeW(HKEY_CURRENT_USER, m_path.c_str());
}

std::wstring ScratchUserRegistry::Dump() const {
    std::wstring out;
    DumpKey(m_key.Get(), L"", out);
    return out;
}

std::wstring ServerPath() {
    const std::wstring program = comkit::ModulePath(nullptr);
    return program.substr(0, program.rfind(L'\\') + 1) + L"VexaSimulator.dll";
}

SimulatorServer::SimulatorServer() : m_module(LoadLibraryW(ServerPath().c_str())) {
    if (!m_module) throw comkit::ComError(comkit::LastErrorResult());
    const ScratchUserRegistry scratch;
    comkit::ThrowIfFailed(Install(true, L"user"));
    comkit::UniqueRegKey classes;
    RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Classes", 0, KEY_READ, classes.Put());
    wchar_t name[256];
    for (DWORD i = 0;; ++i) {
        auto length = static_cast<DWORD>(std::size(name));
        if (RegEnumKeyExW(classes.Get(), i, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
        wchar_t text[64];
        DWORD size = sizeof(text);
        CLSID clsid;
        if (RegGetValueW(classes.Get(), (std::wstring(name) + L"\\CLSID").c_str(), nullptr, RRF_RT_REG_SZ, nullptr,
                         text, &size) == ERROR_SUCCESS &&
            SUCCEEDED(CLSIDFromString(text, &clsid)))
            m_classes.emplace(name, clsid);
    }
    comkit::ThrowIfFailed(Install(false, L"user"));
}

HRESULT SimulatorServer::GetClassObject(const std::wstring& progId, REFIID iid, void** out) const {
    return Export<HRESULT STDAPICALLTYPE(REFCLSID, REFIID, void**)>("DllGetClassObject")(m_classes.at(progId), iid,
                                                                                         out);
}

ComPtr<IDispatch> SimulatorServer::Make(const std::wstring& progId) const {
    ComPtr<IClassFactory> factory;
    comkit::ThrowIfFailed(GetClassObject(progId, IID_IClassFactory, factory.PutVoid()));
    ComPtr<IDispatch> object;
    comkit::ThrowIfFailed(factory->CreateInstance(nullptr, IID_IDispatch, object.PutVoid()));
    return object;
}

bool SimulatorServer::CanUnload() const {
    return Export<HRESULT STDAPICALLTYPE()>("DllCanUnloadNow")() == S_OK;
}

HRESULT SimulatorServer::Install(bool install, const wchar_t* commandLine) const {
    return Export<HRESULT STDAPICALLTYPE(BOOL, PCWSTR)>("DllInstall")(install, commandLine);
}

HRESULT EventSink::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*, EXCEPINFO*, UINT*) {
    std::vector<Variant> arguments(params->cArgs);
    for (UINT i = 0; i < params->cArgs; ++i) VariantCopyInd(arguments[i].Put(), &params->rgvarg[params->cArgs - 1 - i]);
    const ComPtr<EventSink> alive(this);
    m_handler(id, std::move(arguments));
    return S_OK;
}

ComPtr<IConnectionPoint> FindPoint(IUnknown* source, REFIID events) {
    const auto container = ComPtr<IConnectionPointContainer>::From(source);
    ComPtr<IConnectionPoint> point;
    if (!container) throw comkit::ComError(E_NOINTERFACE);
    comkit::ThrowIfFailed(container->FindConnectionPoint(events, point.Put()));
    return point;
}

DWORD Connect(IUnknown* source, REFIID events, EventSink::Handler handler) {
    const auto sink = comkit::MakeObject<EventSink>(std::move(handler));
    DWORD cookie = 0;
    comkit::ThrowIfFailed(FindPoint(source, events)->Advise(sink.Get(), &cookie));
    return cookie;
}

bool PumpUntil(const std::function<bool()>& done, std::chrono::milliseconds longest) {
    const auto end = std::chrono::steady_clock::now() + longest;
    while (!done()) {
        if (std::chrono::steady_clock::now() >= end) return false;
        MSG message;
        while (!done() && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
        Sleep(5);
    }
    return true;
}

std::size_t CountHeapBlocks() {
    HANDLE heaps[64];
    const DWORD count = GetProcessHeaps(static_cast<DWORD>(std::size(heaps)), heaps);
    std::size_t blocks = 0;
    for (DWORD i = 0; i < count; ++i) {
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heaps[i], &entry))
            if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) ++blocks;
    }
    return blocks;
}

std::string Text(const Variant& value) {
    Variant text;
    // The system only reads the source, though its declaration does not say so.
    auto* const source = const_cast<VARIANT*>(&value.Get());
    if (FAILED(VariantChangeType(&text.Get(), source, 0, VT_BSTR))) return "(no text)";
    const std::u16string_view view = comkit::ViewOf(text.Get().bstrVal);
    return {view.begin(), view.end()};
}

ComPtr<IDispatch> ObjectIn(const Variant& value) {
    if (value.Type() != VT_DISPATCH && value.Type() != VT_UNKNOWN) return nullptr;
    return ComPtr<IDispatch>::From(value.Get().punkVal);
}

}  // namespace simulator_test
