// The server under test: the KivDateTime.ocx beside the test program, loaded without registration.
#pragma once

#include <KivDateTime.h>
#include <windows.h>

#include <string>

#include "comkit/ComPtr.h"

namespace component {

class Server {
public:
    /// Loads the server; fails the program when it is not there.
    static Server& Get();

    const std::wstring& File() const noexcept { return m_file; }
    HRESULT GetClassObject(REFCLSID clsid, REFIID iid, void** out) const { return m_getClassObject(clsid, iid, out); }
    HRESULT CanUnload() const { return m_canUnload(); }
    HRESULT Register() const { return m_register(); }
    HRESULT Unregister() const { return m_unregister(); }
    HRESULT Install(bool install, const wchar_t* commandLine) const { return m_install(install, commandLine); }

    /// A new control; never null.
    comkit::ComPtr<IUnknown> CreateControl(REFCLSID clsid = CLSID_KivSetDateTime) const;

private:
    Server();

    std::wstring m_file;
    HRESULT(STDAPICALLTYPE* m_getClassObject)(REFCLSID, REFIID, void**) = nullptr;
    HRESULT(STDAPICALLTYPE* m_canUnload)() = nullptr;
    HRESULT(STDAPICALLTYPE* m_register)() = nullptr;
    HRESULT(STDAPICALLTYPE* m_unregister)() = nullptr;
    HRESULT(STDAPICALLTYPE* m_install)(BOOL, LPCWSTR) = nullptr;
};

}  // namespace component
