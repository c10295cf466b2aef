// What the tests of VexaSimulator.dll share: the server loaded from beside the test program, its objects made by ProgID
// without touching what the machine has registered, sinks, and the message loop.
#pragma once

#include <windows.h>

#include <ocidl.h>
#include <oleauto.h>
#include <olectl.h>

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "comkit/ComObject.h"
#include "comkit/Dispatch.h"
#include "comkit/Handle.h"

namespace simulator_test {

/// While it lives, HKEY_CURRENT_USER is an empty key of its own.
class ScratchUserRegistry {
public:
    ScratchUserRegistry();
    ScratchUserRegistry(const ScratchUserRegistry&) = delete;
    ScratchUserRegistry& operator=(const ScratchUserRegistry&) = delete;
    ~ScratchUserRegistry();

    /// All keys and values below, a line each, sorted by the registry.
    std::wstring Dump() const;

private:
    std::wstring m_path;
    comkit::UniqueRegKey m_key;
};

std::wstring ServerPath();

/// The server and its classes, as its own registration names them.
class SimulatorServer {
public:
    SimulatorServer();

    /// The object's IDispatch. Throws comkit::ComError.
    comkit::ComPtr<IDispatch> Make(const std::wstring& progId) const;
    HRESULT GetClassObject(const std::wstring& progId, REFIID iid, void** out) const;
    bool CanUnload() const;
    HRESULT Install(bool install, const wchar_t* commandLine) const;
    const std::map<std::wstring, CLSID>& Classes() const noexcept { return m_classes; }

    template <class Function>
    Function* Export(const char* name) const {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(m_module.Get(), name)));
    }

private:
    comkit::UniqueModule m_module;
    std::map<std::wstring, CLSID> m_classes;
};

/// Answers to IDispatch alone and hands each event to a function, arguments in the order in which they are written.
class EventSink final : public comkit::ComObject<EventSink, IDispatch> {
public:
    using Handler = std::function<void(DISPID event, std::vector<comkit::Variant> arguments)>;
    explicit EventSink(Handler handler) : m_handler(std::move(handler)) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*, EXCEPINFO*,
                                     UINT*) override;

private:
    Handler m_handler;
};

comkit::ComPtr<IConnectionPoint> FindPoint(IUnknown* source, REFIID events);
DWORD Connect(IUnknown* source, REFIID events, EventSink::Handler handler);

inline constexpr IID ValueEvents = {0x34795669, 0x92DE, 0x4B01, {0x88, 0x7B, 0xF6, 0xA4, 0x71, 0xCA, 0x62, 0x41}};
inline constexpr IID HelpEvents = {0xFE9BE7ED, 0x29D7, 0x4317, {0xAF, 0x7E, 0x15, 0x26, 0x11, 0x34, 0x6E, 0xB5}};

/// Runs the message loop until done says so, or the time is over; whether it was done.
bool PumpUntil(const std::function<bool()>& done, std::chrono::milliseconds longest = std::chrono::seconds(5));

/// Blocks in use in all heaps of the process.
std::size_t CountHeapBlocks();

std::string Text(const comkit::Variant& value);

/// The object inside a result.
comkit::ComPtr<IDispatch> ObjectIn(const comkit::Variant& value);

}  // namespace simulator_test
