// What the set control costs beside the least that could do its work: its bare native child windows, and the system's
// own call through type information.
#include <windows.h>

#include <commctrl.h>
#include <KivDateTime.h>
#include <oleauto.h>
#include <olectl.h>

#include "Benchmarks.h"
#include "BenchSite.h"
#include "comkit/ComPtr.h"
#include "comkit/Variant.h"
#include "Timing.h"

namespace bench {

namespace {

using comkit::ComPtr;

// --- opening ---------------------------------------------------------------------------------------------------------

ComPtr<IUnknown> NewControl(IClassFactory& factory) {
    ComPtr<IUnknown> control;
    factory.CreateInstance(nullptr, IID_IUnknown, control.PutVoid());
    return control;
}

/// Created, sited, given its defaults and shown.
void OpenControl(IClassFactory& factory, BenchSite& site, ComPtr<IUnknown>& control) {
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
    const auto site = comkit::MakeObject<BenchSite>();
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
    Print("open the set control", Median(ours), "open its bare children", Median(bare), Median(ratios));
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

void RunSetControl(IClassFactory& factory) {
    CompareOpening(factory);
    CompareReading(factory);
}

}  // namespace bench
