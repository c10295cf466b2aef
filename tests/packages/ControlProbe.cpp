// A program that knows the controls by name only: creates both, uses each, and tells which file the server came from.
// The check of the packages runs it with a registered server, beside an assembly, and with neither.
//
// usage: control_probe.exe      status 0 when both controls work
#include <windows.h>

#include <ocidl.h>
#include <ole2.h>

#include <cstdio>

#include "comkit/ComPtr.h"
#include "comkit/Dispatch.h"

namespace {

using comkit::ComPtr;
using comkit::ThrowIfFailed;

void UseControl(const wchar_t* progId) {
    CLSID clsid{};
    ThrowIfFailed(CLSIDFromProgID(progId, &clsid));
    ComPtr<IDispatch> control;
    ThrowIfFailed(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, control.PutVoid()));
    ThrowIfFailed(ComPtr<IPersistStreamInit>::From(control.Get())->InitNew());
    comkit::Put(*control, L"Caption", L"Set by the probe");
    const comkit::Variant caption = comkit::Call(*control, L"Caption");
    if (caption.Type() != VT_BSTR || comkit::ViewOf(caption.Get().bstrVal) != u"Set by the probe")
        throw comkit::ComError(E_UNEXPECTED);
    DWORD status = 0;
    ThrowIfFailed(OleRegGetMiscStatus(clsid, DVASPECT_CONTENT, &status));
    std::wprintf(L"%ls works, misc status 0x%lx\n", progId, status);
}

void FindTypeLibrary() {
    const GUID id{0xB13782F3, 0xEA8F, 0x48F3, {0xBE, 0x91, 0xF6, 0xC6, 0x08, 0x4B, 0x88, 0xF8}};
    ComPtr<ITypeLib> library;
    ThrowIfFailed(LoadRegTypeLib(id, 1, 0, 0, library.Put()));
    std::wprintf(L"the type library is found\n");
}

template <class Step>
bool Succeeds(const wchar_t* what, const Step& step) {
    try {
        step();
        return true;
    } catch (const comkit::ComError& error) {
        std::wprintf(L"%ls failed with 0x%08lx\n", what, static_cast<unsigned long>(error.Result()));
        return false;
    }
}

}  // namespace

int wmain() {
    if (FAILED(OleInitialize(nullptr))) return 2;
    bool all = true;
    for (const wchar_t* progId : {L"KivDateTime.KivSetDateTime", L"KivDateTime.KivShowDateTime"})
        all = Succeeds(progId, [progId] { UseControl(progId); }) && all;
    all = Succeeds(L"the type library", FindTypeLibrary) && all;
    wchar_t file[MAX_PATH] = L"none";
    if (const HMODULE server = GetModuleHandleW(L"KivDateTime.ocx")) GetModuleFileNameW(server, file, MAX_PATH);
    std::wprintf(L"server: %ls\n", file);
    OleUninitialize();
    return all ? 0 : 1;
}
