// What the control costs beside the least that could do its work: its bare native child windows, and the system's own
// call through type information. The two sides of each pair run by turns in one program; the medians are compared.
#include <windows.h>

#include <commctrl.h>
#include <KivDateTime.h>
#include <oleauto.h>
#include <olectl.h>

#include <algorithm>
#include <cstdio>
#include <vector>

#include "BenchSite.h"
#include "comkit/ComObject.h"
#include "comkit/ComPtr.h"
#include "comkit/Handle.h"
#include "comkit/Variant.h"

namespace {

using comkit::ComPtr;

double Microseconds() {
    LARGE_INTEGER now{};
    LARGE_INTEGER frequency{};
    QueryPerformanceCounter(&now);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(now.QuadPart) * 1e6 / static_cast<double>(frequency.QuadPart);
}

template <class Step>
double Timed(Step step) {
    const double start = Microseconds();
    step();
    return Microseconds() - start;
}

double Median(std::vector<double> times) {
    std::nth_element(times.begin(), times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2), times.end());
    return times[times.size() / 2];
}

/// Runs both by turns; prints their medians and the median of the ratios of each round.
template <class Ours, class Theirs>
void Compare(const char* what, const char* beside, int rounds, Ours ours, Theirs theirs) {
    std::vector<double> first;
    std::vector<double> second;
    std::vector<double> ratios;
    for (int i = 0; i < rounds; ++i) {
        first.push_back(Timed(ours));
        second.push_back(Timed(theirs));
        if (i > 0) ratios.push_back(first.back() / second.back());
    }
    std::printf("%-28s %9.1f us   %-28s %9.1f us   ratio %.2f\n", what, Median(first), beside, Median(second),
                Median(ratios));
}

// --- opening ---------------------------------------------------------------------------------------------------------

ComPtr<IUnknown> NewControl(IClassFactory& factory) {
    ComPtr<IUnknown> control;
    factory.CreateInstance(nullptr, IID_IUnknown, control.PutVoid());
    return control;
}

/// Created, sited, given its defaults and shown.
void OpenControl(IClassFactory& factory, bench::BenchSite& site, ComPtr<IUnknown>& control) {
    control = NewControl(factory);
    const auto object = ComPtr<IOleObject>::From(control.Get());
    object->SetClientSite(&site);
    ComPtr<IPersistStreamInit>::From(control.Get())->InitNew();
    SIZEL extent{};
    object->GetExtent(DVASPECT_CONTENT, &extent);
    site.position = {0, 0, MulDiv(extent.cx, 96, 2540), MulDiv(extent.cy, 96, 2540)};
    object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, &site, 0, site.Window(), &site.position);
    UpdateWindow(site.Window());
}

void CloseControl(ComPtr<IUnknown>& control) {
    const auto object = ComPtr<IOleObject>::From(control.Get());
    object->Close(OLECLOSE_NOSAVE);
    object->SetClientSite(nullptr);
    control.Reset();
}

struct Child {
    const wchar_t* windowClass;
    DWORD style;
    RECT place;
};

constexpr Child Children[] = {
    {WC_BUTTONW, BS_GROUPBOX, {0, 0, 330, 260}},
    {WC_BUTTONW, BS_AUTOCHECKBOX | WS_TABSTOP, {8, 20, 322, 33}},
    {WC_BUTTONW, BS_GROUPBOX, {8, 41, 322, 252}},
    {WC_BUTTONW, BS_AUTOCHECKBOX | WS_TABSTOP, {16, 62, 306, 75}},
    {MONTHCAL_CLASSW, WS_TABSTOP, {16, 83, 200, 244}},
    {DATETIMEPICK_CLASSW, DTS_UPDOWN | DTS_TIMEFORMAT | WS_TABSTOP, {208, 83, 290, 116}},
};

/// The same windows at the same places, each created once at its final size, with their fonts and nothing else.
HWND OpenBareChildren(HWND parent, HFONT font) {
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    const HWND frame = CreateWindowExW(WS_EX_CONTROLPARENT, L"STATIC", nullptr, WS_CHILD | WS_VISIBLE, 0, 0, 330, 260,
                                       parent, nullptr, instance, nullptr);
    for (const Child& c : Children) {
        const HWND child = CreateWindowExW(
            0, c.windowClass, L"&Use PC System Date/Time?", WS_CHILD | WS_VISIBLE | c.style, c.place.left, c.place.top,
            c.place.right - c.place.left, c.place.bottom - c.place.top, frame, nullptr, instance, nullptr);
        SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    }
    UpdateWindow(parent);
    return frame;
}

void CompareOpening(IClassFactory& factory) {
    const auto site = comkit::MakeObject<bench::BenchSite>();
    const comkit::UniqueFont font(CreateFontW(-11, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, 0, L"MS Sans Serif"));
    std::vector<double> ours;
    std::vector<double> bare;
    std::vector<double> ratios;
    for (int i = 0; i < 101; ++i) {
        ComPtr<IUnknown> control;
        ours.push_back(Timed([&] { OpenControl(factory, *site.Get(), control); }));
        CloseControl(control);
        HWND frame = nullptr;
        bare.push_back(Timed([&] { frame = OpenBareChildren(site->Window(), font.Get()); }));
        DestroyWindow(frame);
        if (i > 0) ratios.push_back(ours.back() / bare.back());
    }
    std::printf("%-28s %9.1f us   %-28s %9.1f us   ratio %.2f\n", "open the control", Median(ours),
                "open its bare children", Median(bare), Median(ratios));
}

// --- a property read -------------------------------------------------------------------------------------------------

VARIANT Read(IDispatch& object, DISPID id) {
    DISPPARAMS none{};
    VARIANT result;
    VariantInit(&result);
    object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &result, nullptr, nullptr);
    return result;
}

VARIANT ReadBare(ITypeInfo& type, void* instance, DISPID id) {
    DISPPARAMS none{};
    VARIANT result;
    VariantInit(&result);
    UINT argument = 0;
    type.Invoke(instance, id, DISPATCH_PROPERTYGET, &none, &result, nullptr, &argument);
    return result;
}

/// The system's call goes to the control's own dual interface: the difference is what Invoke adds.
void CompareReading(IClassFactory& factory) {
    const auto control = NewControl(factory);
    ComPtr<IPersistStreamInit>::From(control.Get())->InitNew();
    const auto dual = ComPtr<_KivSetDateTime>::From(control.Get());
    ComPtr<ITypeInfo> type;
    dual->GetTypeInfo(0, LOCALE_USER_DEFAULT, type.Put());
    struct Property {
        const char* name;
        DISPID id;
    };
    for (const Property& p : {Property{"read TimeFormat", 17}, Property{"read Caption", DISPID_CAPTION}}) {
        constexpr int Calls = 2000;
        Compare(
            p.name, "by the system's own call", 101,
            [&] {
                for (int i = 0; i < Calls; ++i) {
                    VARIANT v = Read(*dual, p.id);
                    VariantClear(&v);
                }
            },
            [&] {
                for (int i = 0; i < Calls; ++i) {
                    VARIANT v = ReadBare(*type.Get(), dual.Get(), p.id);
                    VariantClear(&v);
                }
            });
    }
}

}  // namespace

int main() {
    if (FAILED(OleInitialize(nullptr))) return 1;
    const INITCOMMONCONTROLSEX classes{sizeof(classes), ICC_DATE_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&classes);
    const HMODULE server = LoadLibraryW(L"KivDateTime.ocx");
    const auto getClassObject = reinterpret_cast<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>(
        reinterpret_cast<void*>(server ? GetProcAddress(server, "DllGetClassObject") : nullptr));
    ComPtr<IClassFactory> factory;
    if (!getClassObject || FAILED(getClassObject(CLSID_KivSetDateTime, IID_IClassFactory, factory.PutVoid()))) {
        std::printf("No KivDateTime.ocx beside the program\n");
        return 1;
    }
    CompareOpening(*factory.Get());
    CompareReading(*factory.Get());
    factory.Reset();
    OleUninitialize();
    return 0;
}
