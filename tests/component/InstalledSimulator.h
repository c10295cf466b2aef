// VexaSimulator.dll, registered for as long as this lives.
#pragma once

#include <string>

#include "comkit/Handle.h"
#include "ControlFixture.h"

namespace component {

class InstalledSimulator {
public:
    InstalledSimulator() {
        const std::wstring& server = Server::Get().File();
        m_module.Reset(LoadLibraryW((server.substr(0, server.find_last_of(L'\\') + 1) + L"VexaSimulator.dll").c_str()));
        EXPECT_TRUE(m_module);
        EXPECT_EQ(S_OK, Call("DllRegisterServer"));
        Sleep(150);  // longer than the component takes it for granted that there is none
    }
    InstalledSimulator(const InstalledSimulator&) = delete;
    InstalledSimulator& operator=(const InstalledSimulator&) = delete;
    ~InstalledSimulator() { EXPECT_EQ(S_OK, Call("DllUnregisterServer")); }

    /// An object of the simulator's own, such as "VexaSimulator.Device".
    static comkit::ComPtr<IDispatch> Make(const wchar_t* progId) {
        CLSID clsid{};
        comkit::ComPtr<IDispatch> object;
        EXPECT_EQ(S_OK, CLSIDFromProgID(progId, &clsid));
        EXPECT_EQ(S_OK, CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.PutVoid()));
        return object;
    }

private:
    HRESULT Call(const char* name) const {
        const auto function =
            reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(reinterpret_cast<void*>(GetProcAddress(m_module.Get(), name)));
        return function ? function() : E_NOTIMPL;
    }

    comkit::UniqueModule m_module;
};

}  // namespace component
