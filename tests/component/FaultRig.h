// Controls and a page in a container, driven while the system or memory fails: nothing is taken for granted of any
// call, and what a call answers is noted.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "comkit/Handle.h"
#include "ControlFixture.h"
#include "ImportFaults.h"
#include "PageFixture.h"
#include "TestBag.h"

namespace component {

/// The server that all tests use, or a copy of it in which nothing has happened yet, loaded for as long as this lives.
class FaultServer {
public:
    explicit FaultServer(bool isFresh);
    FaultServer(const FaultServer&) = delete;
    FaultServer& operator=(const FaultServer&) = delete;
    ~FaultServer();

    HMODULE Module() const noexcept { return m_module; }
    HRESULT Create(REFCLSID clsid, REFIID iid, void** out) const;
    HRESULT CanUnload() const { return m_canUnload(); }

private:
    std::wstring m_file;
    comkit::UniqueModule m_copy;
    HMODULE m_module;
    HRESULT(STDAPICALLTYPE* m_getClassObject)(REFCLSID, REFIID, void**);
    HRESULT(STDAPICALLTYPE* m_canUnload)();
};

class TriedControl {
public:
    explicit TriedControl(const TestedClass& tested) : m_tested(tested) {}
    TriedControl(const TriedControl&) = delete;
    TriedControl& operator=(const TriedControl&) = delete;
    ~TriedControl() { Drop(); }

    /// A new one, sited and initialised; the first failure, after which there is none.
    HRESULT Make(const FaultServer& server, bool userMode);
    void Drop();

    template <class T>
    comkit::ComPtr<T> As() const {
        return comkit::ComPtr<T>::From(object.Get());
    }
    HRESULT DoVerb(LONG verb) const;
    HWND Window() const;
    /// Windows in its window.
    long Children() const;
    template <class... Args>
    CallResult Put(const wchar_t* name, const Args&... args) const {
        std::vector<comkit::Variant> list;
        (list.emplace_back(args), ...);
        return Invoke(*As<IDispatch>(), name, DISPATCH_PROPERTYPUT, list);
    }
    std::wstring TextOf(const wchar_t* name) const;
    /// Picture of the given device context's upper left corner.
    HRESULT Draw(HDC dc) const;

    comkit::ComPtr<RecordingSite> site;
    comkit::ComPtr<IUnknown> object;

private:
    const TestedClass& m_tested;
};

class FaultRig {
public:
    FaultRig(ImportFaults& importFaults, const FaultServer& usedServer) : faults(importFaults), server(usedServer) {}

    /// What a call answered: anything but a success or a documented failure is a complaint.
    bool Note(const char* what, HRESULT hr);
    bool Note(const char* what, const CallResult& result);
    void Expect(bool holds, const char* what);
    /// Both, in this order.
    std::vector<TriedControl*> Controls() { return {&set, &show}; }
    void MakeBoth(bool userMode);

    ImportFaults& faults;
    const FaultServer& server;
    TriedControl set{SetClass};
    TriedControl show{ShowClass};
    comkit::UniqueWindow frame;  ///< of property pages
    comkit::ComPtr<TestBag> setBag = comkit::MakeObject<TestBag>();
    comkit::ComPtr<TestBag> showBag = comkit::MakeObject<TestBag>();
    comkit::ComPtr<IStream> setStream;
    comkit::ComPtr<IStream> showStream;
    comkit::ComPtr<IDispatch> device;
    long seen = 0;              ///< of what a scenario counts
    bool lacksMemory = false;   ///< it is memory that fails
    bool memoryIsBack = false;  ///< before the scenario had come to its end
    bool failed = false;
    std::vector<std::string> complaints;
};

/// Answers that the documents name for a call that the system or memory made fail.
bool IsDocumentedFailure(HRESULT hr) noexcept;

}  // namespace component
