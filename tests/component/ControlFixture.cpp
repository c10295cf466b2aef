#include "ControlFixture.h"

#include <algorithm>
#include <iterator>

namespace component {

namespace {

struct WindowSearch {
    const wchar_t* windowClass;
    const wchar_t* caption;
    HWND found;
};

BOOL CALLBACK LookAtWindow(HWND window, LPARAM param) {
    auto& wanted = *reinterpret_cast<WindowSearch*>(param);
    wchar_t text[256] = L"";
    GetClassNameW(window, text, 256);
    if (_wcsicmp(text, wanted.windowClass) != 0) return TRUE;
    GetWindowTextW(window, text, 256);
    if (wanted.caption[0] && std::wstring(text) != wanted.caption) return TRUE;
    wanted.found = window;
    return FALSE;
}

}  // namespace

CallResult Invoke(IDispatch& object, const wchar_t* name, WORD flags, const std::vector<comkit::Variant>& args) {
    CallResult result;
    DISPID id = DISPID_UNKNOWN;
    std::wstring copy(name);
    LPOLESTR text = copy.data();
    result.hr = object.GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(result.hr)) return result;
    std::vector<VARIANT> list;
    list.reserve(args.size());
    std::transform(args.rbegin(), args.rend(), std::back_inserter(list),
                   [](const comkit::Variant& arg) -> VARIANT { return arg.Get(); });
    DISPPARAMS params{list.data(), nullptr, static_cast<UINT>(list.size()), 0};
    DISPID put = DISPID_PROPERTYPUT;
    const bool isPut = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    if (isPut) {
        params.rgdispidNamedArgs = &put;
        params.cNamedArgs = 1;
    }
    EXCEPINFO info{};
    UINT argument = 0;
    result.hr = object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params, isPut ? nullptr : result.value.Put(),
                              &info, &argument);
    const comkit::Bstr source = [&] {
        comkit::Bstr owner;
        *owner.Put() = info.bstrSource;
        return owner;
    }();
    comkit::Bstr description;
    *description.Put() = info.bstrDescription;
    comkit::Bstr helpFile;
    *helpFile.Put() = info.bstrHelpFile;
    result.scode = info.scode;
    result.source = std::u16string(source.View());
    result.description = std::u16string(description.View());
    return result;
}

std::wstring Text(const VARIANT& value) {
    comkit::Variant text;
    if (FAILED(VariantChangeType(text.Put(), const_cast<VARIANT*>(&value), VARIANT_ALPHABOOL, VT_BSTR)))
        return L"(no text)";
    return std::wstring(comkit::ToWide(comkit::ViewOf(text.Get().bstrVal)));
}

comkit::ComPtr<IFontDisp> MakeFont(const wchar_t* face, int points) {
    std::wstring name(face);
    FONTDESC description{};
    description.cbSizeofstruct = sizeof(description);
    description.lpstrName = name.data();
    description.cySize.int64 = LONGLONG{points} * 10000;
    description.sWeight = FW_NORMAL;
    comkit::ComPtr<IFontDisp> font;
    EXPECT_EQ(S_OK, OleCreateFontIndirect(&description, IID_IFontDisp, font.PutVoid()));
    return font;
}

void ForgetRememberedChoice() {
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\The Corvale Company");
}

DWORD Advise(IUnknown* object, REFIID iid, IUnknown* sink) {
    const auto container = comkit::ComPtr<IConnectionPointContainer>::From(object);
    comkit::ComPtr<IConnectionPoint> point;
    DWORD cookie = 0;
    if (container && SUCCEEDED(container->FindConnectionPoint(iid, point.Put()))) point->Advise(sink, &cookie);
    return cookie;
}

HRESULT Unadvise(IUnknown* object, REFIID iid, DWORD cookie) {
    const auto container = comkit::ComPtr<IConnectionPointContainer>::From(object);
    comkit::ComPtr<IConnectionPoint> point;
    const HRESULT hr = container->FindConnectionPoint(iid, point.Put());
    return FAILED(hr) ? hr : point->Unadvise(cookie);
}

const TestedClass SetClass{CLSID_KivSetDateTime, IID__KivSetDateTime, DIID___KivSetDateTime, L"KivSetDateTime"};
const TestedClass ShowClass{CLSID_KivShowDateTime, IID__KivShowDateTime, DIID___KivShowDateTime, L"KivShowDateTime"};

void PrintTo(const TestedClass* tested, std::ostream* out) {
    for (const wchar_t* letter = tested->name; *letter; ++letter) *out << static_cast<char>(*letter);
}

ControlFixture::ControlFixture(const TestedClass& what) : tested(what), site(comkit::MakeObject<RecordingSite>()) {
    site->extenderName = std::wstring(what.name) + L"1";
    ForgetRememberedChoice();
}

ControlFixture::~ControlFixture() {
    Remove();
    ForgetRememberedChoice();
}

void ControlFixture::Place(bool userMode) {
    site->userMode = userMode;
    control = Server::Get().CreateControl(tested.clsid);
    site->Attach(control.Get());
    dispatch = As<IDispatch>();
    ASSERT_TRUE(dispatch);
    ASSERT_EQ(S_OK, As<IOleObject>()->SetClientSite(site.Get()));
    ASSERT_EQ(S_OK, As<IPersistStreamInit>()->InitNew());
}

void ControlFixture::Remove() {
    if (!control) return;
    const auto object = As<IOleObject>();
    object->Close(OLECLOSE_NOSAVE);
    object->SetClientSite(nullptr);
    site->Attach(nullptr);
    dispatch.Reset();
    control.Reset();
}

HRESULT ControlFixture::DoVerb(LONG verb) {
    return As<IOleObject>()->DoVerb(verb, nullptr, site.Get(), 0, site->Window(), &site->position);
}

HWND ControlFixture::Window() const {
    HWND window = nullptr;
    As<IOleInPlaceObject>()->GetWindow(&window);
    return window;
}

HWND ControlFixture::Child(const wchar_t* windowClass, const wchar_t* caption) const {
    WindowSearch search{windowClass, caption, nullptr};
    EnumChildWindows(Window(), &LookAtWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

comkit::ComPtr<EventSink> ControlFixture::AdviseEvents() {
    auto sink = comkit::MakeObject<EventSink>();
    eventCookie = Advise(control.Get(), tested.events, sink.Get());
    EXPECT_NE(0u, eventCookie);
    return sink;
}

comkit::ComPtr<NotifySink> ControlFixture::AdviseNotifications() {
    auto sink = comkit::MakeObject<NotifySink>();
    notifyCookie = Advise(control.Get(), IID_IPropertyNotifySink, sink.Get());
    EXPECT_NE(0u, notifyCookie);
    return sink;
}

}  // namespace component
