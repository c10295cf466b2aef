// What the controls cost beside the least that could do their work. The two sides of each pair run by turns in one
// program; the medians are compared.
#include <windows.h>

#include <commctrl.h>
#include <KivDateTime.h>
#include <ole2.h>

#include <cstdio>

#include "Benchmarks.h"
#include "comkit/ComPtr.h"

int main() {
    // Each line is shown when it is known.
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    if (FAILED(OleInitialize(nullptr))) return 1;
    const INITCOMMONCONTROLSEX classes{sizeof(classes), ICC_DATE_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&classes);
    const HMODULE server = LoadLibraryW(L"KivDateTime.ocx");
    const auto getClassObject = reinterpret_cast<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>(
        reinterpret_cast<void*>(server ? GetProcAddress(server, "DllGetClassObject") : nullptr));
    comkit::ComPtr<IClassFactory> setControl;
    comkit::ComPtr<IClassFactory> showControl;
    if (!getClassObject || FAILED(getClassObject(CLSID_KivSetDateTime, IID_IClassFactory, setControl.PutVoid())) ||
        FAILED(getClassObject(CLSID_KivShowDateTime, IID_IClassFactory, showControl.PutVoid()))) {
        std::printf("No KivDateTime.ocx beside the program\n");
        return 1;
    }
    bench::RunShowControl(*showControl.Get());
    bench::RunArriving();
    bench::RunMemory(*showControl.Get());
    bench::RunSetControl(*setControl.Get());
    showControl.Reset();
    setControl.Reset();
    OleUninitialize();
    return 0;
}
