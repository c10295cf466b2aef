#include "FaultUsers.h"

#include <oleacc.h>

#include "ModalEnder.h"

namespace component {

using comkit::ComPtr;
using comkit::Variant;

/// Every property is read, and written where it is no object, with what was read.
void UseEveryProperty(FaultRig& rig) {
    rig.seen = 0;
    for (TriedControl* const control : rig.Controls()) {
        const auto members = control->As<IDispatch>();
        for (DISPID id = 1; id < 48; ++id) {
            Variant slot(0);
            Variant value;
            VARIANT arguments[2] = {slot.Get(), slot.Get()};
            DISPPARAMS none{arguments, nullptr, 0, 0};
            HRESULT hr = members->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, value.Put(),
                                         nullptr, nullptr);
            const bool isIndexed = hr == DISP_E_BADPARAMCOUNT || hr == DISP_E_PARAMNOTOPTIONAL;
            none.cArgs = 1;
            if (isIndexed)
                hr = members->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, value.Put(),
                                     nullptr, nullptr);
            if (hr == DISP_E_MEMBERNOTFOUND || hr == DISP_E_EXCEPTION) continue;
            if (!rig.Note("a property that is read", hr)) continue;
            ++rig.seen;
            arguments[0] = value.Get();
            DISPID named = DISPID_PROPERTYPUT;
            DISPPARAMS put{arguments, &named, isIndexed ? 2U : 1U, 1};
            const WORD how = value.Type() == VT_DISPATCH ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT;
            hr = members->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, how, &put, nullptr, nullptr, nullptr);
            const bool isReadOnly = hr == DISP_E_BADPARAMCOUNT;
            if (!isReadOnly && hr != DISP_E_EXCEPTION) rig.Note("a property that is put", hr);
        }
        rig.Note("Caption", control->Put(L"Caption", L"a longer caption, which is measured"));
        const CallResult refused = control->Put(L"Mode", 99);
        rig.Expect(FAILED(refused.hr), "a mode that there is not was taken");
        rig.Expect(IsDocumentedFailure(refused.hr == DISP_E_EXCEPTION ? refused.scode : refused.hr),
                   "a mode that there is not was refused in another way");
    }
}

/// What a designer asks a control: verbs, names, values to choose from, pages, accessibility.
void AskAll(FaultRig& rig) {
    rig.seen = 0;
    for (TriedControl* const control : rig.Controls()) {
        LPOLESTR name = nullptr;
        rig.seen += rig.Note("GetUserType", control->As<IOleObject>()->GetUserType(USERCLASSTYPE_FULL, &name));
        CoTaskMemFree(name);
        ComPtr<IEnumOLEVERB> verbs;
        if (rig.Note("EnumVerbs", control->As<IOleObject>()->EnumVerbs(verbs.Put()))) {
            OLEVERB verb{};
            rig.seen += rig.Note("Next", verbs->Next(1, &verb, nullptr));
            CoTaskMemFree(verb.lpszVerbName);
        }
        CALPOLESTR texts{};
        CADWORD cookies{};
        const auto browsing = control->As<IPerPropertyBrowsing>();
        if (rig.Note("GetPredefinedStrings", browsing->GetPredefinedStrings(12, &texts, &cookies))) ++rig.seen;
        for (ULONG i = 0; i < texts.cElems; ++i) CoTaskMemFree(texts.pElems[i]);
        CoTaskMemFree(texts.pElems);
        CoTaskMemFree(cookies.pElems);
        CAUUID pages{};
        rig.seen += rig.Note("GetPages", control->As<ISpecifyPropertyPages>()->GetPages(&pages));
        CoTaskMemFree(pages.pElems);
        ComPtr<ITypeInfo> type;
        rig.seen += rig.Note("GetClassInfo", control->As<IProvideClassInfo>()->GetClassInfo(type.Put()));
        if (const auto access = control->As<IAccessible>()) {
            comkit::Bstr text;
            VARIANT self = Variant(1L).Detach();
            rig.seen += rig.Note("get_accName", access->get_accName(self, text.Put()));
        }
    }
}

void Negotiate(FaultRig& rig) {
    rig.seen = 0;
    for (TriedControl* const control : rig.Controls()) {
        SIZEL extent{15000, 12000};
        rig.Note("SetExtent", control->As<IOleObject>()->SetExtent(DVASPECT_CONTENT, &extent));
        const RECT place{5, 5, 505, 405};
        rig.Note("SetObjectRects", control->As<IOleInPlaceObject>()->SetObjectRects(&place, &place));
        const RECT clip{10, 10, 300, 300};
        rig.Note("SetObjectRects", control->As<IOleInPlaceObject>()->SetObjectRects(&place, &clip));
        rig.Note("SetObjectRects", control->As<IOleInPlaceObject>()->SetObjectRects(&place, &place));
        rig.Note("GetExtent", control->As<IOleObject>()->GetExtent(DVASPECT_CONTENT, &extent));
        rig.seen += extent.cx > 10000;
        CONTROLINFO info{};
        info.cb = sizeof(info);
        rig.Note("GetControlInfo", control->As<IOleControl>()->GetControlInfo(&info));
        rig.Note("OnAmbientPropertyChange", control->As<IOleControl>()->OnAmbientPropertyChange(DISPID_UNKNOWN));
    }
}

void RaiseEvents(FaultRig& rig) {
    rig.seen = 0;
    for (TriedControl* const control : rig.Controls()) {
        const auto sink = comkit::MakeObject<EventSink>();
        const IID& events = control == &rig.set ? SetClass.events : ShowClass.events;
        const DWORD cookie = Advise(control->object.Get(), events, sink.Get());
        const HWND window = control->Window();
        for (const UINT id : {UINT{WM_MOUSEMOVE}, UINT{WM_LBUTTONDOWN}, UINT{WM_LBUTTONUP}, UINT{WM_KEYDOWN}})
            SendMessageW(window, id, id == WM_KEYDOWN ? VK_LEFT : 0, MAKELPARAM(3, 3));
        if (const HWND box =
                control == &rig.set ? FindWindowExW(GetWindow(window, GW_CHILD), nullptr, L"Button", nullptr) : nullptr)
            SendMessageW(box, BM_CLICK, 0, 0);
        rig.seen += static_cast<long>(sink->events.size());
        rig.Expect(cookie == 0 || Unadvise(control->object.Get(), events, cookie) == S_OK, "a sink is not let go");
    }
}

void MakeDesignedWithFrame(FaultRig& rig) {
    rig.MakeBoth(false);
    rig.frame.Reset(CreateWindowExW(WS_EX_CONTROLPARENT, L"STATIC", L"Pages", WS_POPUP | WS_VISIBLE, 20, 20, 900, 700,
                                    nullptr, nullptr, nullptr, nullptr));
}

namespace {

BOOL CALLBACK FindBox(HWND window, LPARAM found) {
    wchar_t name[16] = L"";
    GetClassNameW(window, name, 16);
    if (_wcsicmp(name, L"Edit") != 0 || !IsWindowEnabled(window)) return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

HWND FirstBox(FaultRig& rig) {
    HWND box = nullptr;
    EnumChildWindows(rig.frame.Get(), &FindBox, reinterpret_cast<LPARAM>(&box));
    return box;
}

/// An empty window over a page that has a text for it: with memory again, another window shows it.
void CheckShown(FaultRig& rig, IPropertyPage& page) {
    if (GetWindowTextLengthW(FirstBox(rig)) > 0) return;
    rig.faults.End();
    rig.memoryIsBack = true;
    const RECT place{0, 0, 600, 500};
    page.Deactivate();
    page.Activate(rig.frame.Get(), &place, FALSE);
    rig.Expect(GetWindowTextLengthW(FirstBox(rig)) == 0, "a page was shown without the text that it has");
    page.Deactivate();
}

/// isCaption: the first field has a text in any case.
void EditOn(FaultRig& rig, IPropertyPage& page, bool isCaption) {
    PROPPAGEINFO info{};
    info.cb = sizeof(info);
    rig.Note("GetPageInfo", page.GetPageInfo(&info));
    CoTaskMemFree(info.pszTitle);
    const RECT place{0, 0, 600, 500};
    if (!rig.Note("Activate", page.Activate(rig.frame.Get(), &place, FALSE))) return;
    rig.Note("Show", page.Show(SW_SHOW));
    if (isCaption && rig.lacksMemory) CheckShown(rig, page);
    if (rig.memoryIsBack) return;
    for (const wchar_t letter : {L'4', L'2'}) SendMessageW(FirstBox(rig), WM_CHAR, static_cast<WPARAM>(letter), 0);
    const bool dirty = page.IsPageDirty() == S_OK;
    const bool applied = rig.Note("Apply", page.Apply());
    rig.seen += dirty && applied && page.IsPageDirty() == S_FALSE;
    rig.Note("Deactivate", page.Deactivate());
}

}  // namespace

void UsePages(FaultRig& rig) {
    rig.seen = 0;
    for (const kiv::PageId id : {kiv::PageId::SetDT_General, kiv::PageId::DT_VexaValues, kiv::PageId::ShowDT_General,
                                 kiv::PageId::SetDT_VexaData}) {
        ComPtr<IPropertyPage> page;
        if (!rig.Note("making a page", rig.server.Create(ClassOfPage(id), IID_IPropertyPage, page.PutVoid()))) continue;
        IUnknown* edited = (id == kiv::PageId::ShowDT_General ? rig.show : rig.set).object.Get();
        const auto site = comkit::MakeObject<PageSite>();
        page->SetPageSite(site.Get());
        if (rig.Note("SetObjects", page->SetObjects(1, &edited)))
            EditOn(rig, *page.Get(), id == kiv::PageId::SetDT_General);
        rig.Note("SetObjects", page->SetObjects(0, nullptr));
        page->SetPageSite(nullptr);
    }
}

void ShowAboutBoxes(FaultRig& rig) {
    const long before = ModalEnder::Ended();
    for (TriedControl* const control : rig.Controls())
        rig.Note("ShowAboutBox", Invoke(*control->As<IDispatch>(), L"ShowAboutBox", DISPATCH_METHOD));
    rig.seen = ModalEnder::Ended() - before;
}

namespace {

bool IsRegistered() {
    comkit::UniqueRegKey key;
    return RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Classes\\CLSID\\{07C49BA0-1917-43EB-AC2A-BB47C300C410}", 0,
                         KEY_READ, key.Put()) == ERROR_SUCCESS;
}

}  // namespace

void RegisterForUser(FaultRig& rig) {
    const bool installed = rig.Note("DllInstall", Server::Get().Install(true, L"user"));
    rig.Expect(!installed || IsRegistered(), "registered, and yet not");
    rig.seen = IsRegistered();
    const bool removed = rig.Note("DllInstall", Server::Get().Install(false, L"user"));
    rig.Expect(!removed || !IsRegistered(), "taken away, and yet there");
}

}  // namespace component
