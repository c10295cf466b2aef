// What the set control costs beside the least that could do its work: its bare native child windows, and the system's
// own call through type information.
#include <windows.h>

#include <commctrl.h>
#include <KivDateTime.h>
#include <oleauto.h>
#include <olectl.h>

#include <cstddef>
#include <vector>

#include "Benchmarks.h"
#include "benchmarks/Comparison.h"
#include "BenchSite.h"
#include "comkit/ComPtr.h"
#include "comkit/Variant.h"
#include "HeapBytes.h"

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
    Comparison opening;
    Comparison life;
    for (int i = 0; i < 51; ++i) {
        ComPtr<IUnknown> control;
        const double opened = Timed([&] { OpenControl(factory, *site.Get(), control); });
        const double closed = Timed([&] { CloseControl(control); });
        HWND frame = nullptr;
        const double bareOpened = Timed([&] { frame = OpenBareChildren(site->Window(), font.Get()); });
        const double bareClosed = Timed([&] { DestroyWindow(frame); });
        if (i == 0) continue;
        opening.Add(opened, bareOpened);
        life.Add(opened + closed, bareOpened + bareClosed);
    }
    opening.Print({"a set control created, loaded, activated", "its bare native children created", 1.15});
    life.Print({"the same and closed", "the same and destroyed", 1.15});
}

/// Open ones, so that the children of both are there.
void CompareMemory(IClassFactory& factory) {
    constexpr std::size_t Count = 20;
    const comkit::UniqueFont font(CreateFontW(-11, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, 0, L"MS Sans Serif"));
    std::vector<ComPtr<BenchSite>> sites(Count);
    for (auto& site : sites) site = comkit::MakeObject<BenchSite>();
    Comparison comparison;
    for (int round = 0; round < 6; ++round) {
        std::vector<ComPtr<IUnknown>> controls(Count);
        const double start = HeapBytes();
        for (std::size_t i = 0; i < Count; ++i) OpenControl(factory, *sites[i].Get(), controls[i]);
        const double ours = HeapBytes() - start;
        for (auto& control : controls) CloseControl(control);
        std::vector<comkit::UniqueWindow> frames(Count);
        const double bareStart = HeapBytes();
        for (std::size_t i = 0; i < Count; ++i) frames[i].Reset(OpenBareChildren(sites[i]->Window(), font.Get()));
        const double bare = HeapBytes() - bareStart;
        // What all of them share comes with the first ones.
        if (round > 0) comparison.Add(ours / Count, bare / Count);
    }
    comparison.Print({"memory of one more set control, open", "its bare native children", 1.2}, "bytes");
}

// --- properties and names --------------------------------------------------------------------------------------------

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

/// The one argument of a property that is put.
struct Put {
    explicit Put(VARIANT& value) noexcept : params{&value, &name, 1, 1} {}
    Put(const Put&) = delete;
    Put& operator=(const Put&) = delete;
    ~Put() = default;
    DISPID name = DISPID_PROPERTYPUT;
    DISPPARAMS params;
};

template <class Ours, class Reference>
void CompareCalls(const char* what, double reach, Ours ours, Reference reference) {
    constexpr int Calls = 1000;
    const auto many = [](auto step) {
        return [step] {
            for (int i = 0; i < Calls; ++i) step();
        };
    };
    Compare({what, "the system's type library call", reach}, 101, Calls, many(ours), many(reference));
}

/// The system's call goes to the control's own dual interface: the difference is what Invoke adds.
void CompareDispatch(IClassFactory& factory) {
    const auto control = NewControl(factory);
    ComPtr<IPersistStreamInit>::From(control.Get())->InitNew();
    const auto dual = ComPtr<_KivSetDateTime>::From(control.Get());
    ComPtr<ITypeInfo> type;
    dual->GetTypeInfo(0, LOCALE_USER_DEFAULT, type.Put());
    constexpr DISPID TimeFormat = 17;
    const auto get = [&](const char* what, DISPID id) {
        CompareCalls(
            what, 1.3,
            [&, id] {
                VARIANT v = Read(*dual, id);
                VariantClear(&v);
            },
            [&, id] {
                VARIANT v = ReadBare(*type.Get(), dual.Get(), id);
                VariantClear(&v);
            });
    };
    get("a number got through Invoke", TimeFormat);
    get("a text got through Invoke", DISPID_CAPTION);

    VARIANT number = Read(*dual, TimeFormat);
    Put put(number);
    CompareCalls(
        "a number put through Invoke", 1.3,
        [&] {
            dual->Invoke(TimeFormat, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &put.params, nullptr, nullptr,
                         nullptr);
        },
        [&] {
            UINT argument = 0;
            type->Invoke(dual.Get(), TimeFormat, DISPATCH_PROPERTYPUT, &put.params, nullptr, nullptr, &argument);
        });

    // Near the beginning, in the middle and at the end of the type library's list.
    wchar_t first[] = L"dataelementpath";
    wchar_t middle[] = L"ShowDST";
    wchar_t last[] = L"GetDateTimeInfo";
    wchar_t* const names[] = {first, middle, last};
    const auto lookUp = [&names](auto& object) {
        for (wchar_t* name : names) {
            DISPID id = DISPID_UNKNOWN;
            if constexpr (requires { object.GetIDsOfNames(&name, 1, &id); }) {
                object.GetIDsOfNames(&name, 1, &id);
            } else {
                object.GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
            }
        }
    };
    CompareCalls(
        "three names looked up", 0.25, [&] { lookUp(*dual.Get()); }, [&] { lookUp(*type.Get()); });
}

}  // namespace

void RunSetControl(IClassFactory& factory) {
    CompareOpening(factory);
    CompareMemory(factory);
    CompareDispatch(factory);
}

}  // namespace bench
