// The stock pages for colours and the font. A system need not have them (Wine has not), so that the tests put pages of
// their own in their place: registered under the same numbers, and doing what those do. They know of a control what its
// type information tells, and nothing else.
#include <windows.h>

#include <olectl.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "PageFixture.h"
#include "screenhost/PropertyFrame.h"

namespace component {
namespace {

using comkit::ComPtr;

/// What a stock page edits, and what the tests have it write.
struct StockKind {
    const CLSID& clsid;
    const wchar_t* title;
    bool (*edits)(ITypeInfo& type, const TYPEDESC& property);
    comkit::Variant (*value)();
};

/// Whether a description refers to a type of this number, directly or by another name for it.
bool RefersTo(ITypeInfo& type, const TYPEDESC& description, REFGUID wanted) {
    ComPtr<ITypeInfo> referred;
    TYPEATTR* attributes = nullptr;
    if (description.vt != VT_USERDEFINED || FAILED(type.GetRefTypeInfo(description.hreftype, referred.Put())) ||
        FAILED(referred->GetTypeAttr(&attributes)))
        return false;
    const bool found = IsEqualGUID(attributes->guid, wanted) ||
                       (attributes->typekind == TKIND_ALIAS && RefersTo(*referred, attributes->tdescAlias, wanted));
    referred->ReleaseTypeAttr(attributes);
    return found;
}

bool IsColor(ITypeInfo& type, const TYPEDESC& property) {
    constexpr GUID color{0x66504301, 0xBE0F, 0x101A, {0x8B, 0xBB, 0x00, 0xAA, 0x00, 0x30, 0x0C, 0xAB}};
    return RefersTo(type, property, color);
}

bool IsFont(ITypeInfo& type, const TYPEDESC& property) {
    return property.vt == VT_PTR && RefersTo(type, *property.lptdesc, IID_IFontDisp);
}

comkit::Variant AnyFont() {
    std::wstring name(L"Liberation Mono");
    FONTDESC description{};
    description.cbSizeofstruct = sizeof(description);
    description.lpstrName = name.data();
    description.cySize.int64 = 110000;
    description.sWeight = FW_NORMAL;
    ComPtr<IDispatch> font;
    EXPECT_EQ(S_OK, OleCreateFontIndirect(&description, IID_IDispatch, font.PutVoid()));
    return comkit::Variant(font.Get());
}

const StockKind Kinds[] = {
    {CLSID_CFontPropPage, L"Fonts", &IsFont, &AnyFont},
    {CLSID_CColorPropPage, L"Colors", &IsColor, [] { return comkit::Variant(std::int32_t{0x00332211}); }},
};

/// What an object's type information says that can be put and is of this kind.
std::vector<DISPID> PropertiesOf(IUnknown& object, const StockKind& kind) {
    std::vector<DISPID> result;
    const auto members = ComPtr<IDispatch>::From(&object);
    ComPtr<ITypeInfo> type;
    TYPEATTR* attributes = nullptr;
    if (!members || FAILED(members->GetTypeInfo(0, LOCALE_USER_DEFAULT, type.Put())) ||
        FAILED(type->GetTypeAttr(&attributes)))
        return result;
    const WORD count = attributes->cFuncs;
    type->ReleaseTypeAttr(attributes);
    for (WORD i = 0; i < count; ++i) {
        FUNCDESC* function = nullptr;
        if (FAILED(type->GetFuncDesc(i, &function))) continue;
        if (function->invkind == INVOKE_PROPERTYPUT && function->cParams == 1 &&
            kind.edits(*type, function->lprgelemdescParam[0].tdesc))
            result.push_back(function->memid);
        type->ReleaseFuncDesc(function);
    }
    return result;
}

class StockPage final : public comkit::ComObject<StockPage, IPropertyPage, IClassFactory> {
public:
    explicit StockPage(const StockKind& what) noexcept : kind(what) {}

    const StockKind& kind;
    std::vector<ComPtr<IUnknown>> objects;
    ComPtr<IPropertyPageSite> site;
    int made = 0;
    int shown = 0;
    bool dirty = false;

    void Edit() {
        dirty = true;
        site->OnStatusChange(PROPPAGESTATUS_DIRTY);
    }

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID iid, void** out) override {
        ++made;
        return QueryInterface(iid, out);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

    HRESULT STDMETHODCALLTYPE SetPageSite(IPropertyPageSite* given) override {
        site = ComPtr<IPropertyPageSite>(given);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Activate(HWND, LPCRECT, BOOL) override {
        ++shown;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Deactivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetPageInfo(PROPPAGEINFO* info) override {
        *info = {};
        info->cb = sizeof(*info);
        const std::size_t bytes = (wcslen(kind.title) + 1) * sizeof(wchar_t);
        info->pszTitle = static_cast<LPOLESTR>(CoTaskMemAlloc(bytes));
        if (!info->pszTitle) return E_OUTOFMEMORY;
        memcpy(info->pszTitle, kind.title, bytes);
        info->size = {200, 100};
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetObjects(ULONG count, IUnknown** given) override {
        objects.clear();
        for (ULONG i = 0; i < count; ++i) objects.emplace_back(given[i]);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Show(UINT) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Move(LPCRECT) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE IsPageDirty() override { return dirty ? S_OK : S_FALSE; }
    HRESULT STDMETHODCALLTYPE Apply() override {
        dirty = false;
        for (const auto& object : objects) {
            const auto members = ComPtr<IDispatch>::From(object.Get());
            for (const DISPID id : PropertiesOf(*object, kind))
                comkit::InvokeWith(*members, id, DISPATCH_PROPERTYPUT, std::array{kind.value().Get()});
        }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Help(LPCOLESTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG*) override { return S_FALSE; }
};

/// The page under its number, for as long as this lives.
struct Installed {
    explicit Installed(const StockKind& kind) : page(comkit::MakeObject<StockPage>(kind)) {
        EXPECT_EQ(S_OK, CoRegisterClassObject(kind.clsid, static_cast<IClassFactory*>(page.Get()), CLSCTX_INPROC_SERVER,
                                              REGCLS_MULTIPLEUSE, &cookie));
    }
    Installed(const Installed&) = delete;
    Installed& operator=(const Installed&) = delete;
    ~Installed() { CoRevokeClassObject(cookie); }

    ComPtr<StockPage> page;
    DWORD cookie = 0;
};

class StockPages : public BothControls {
protected:
    bool IsSet() const { return &tested == &SetClass; }
    Installed font{Kinds[0]}, color{Kinds[1]};
};

TEST_P(StockPages, AScreenDesignersFrameMakesThemBesideTheControlsOwnAndTheyEditEachColourAndTheFont) {
    Place(false);
    const auto notified = AdviseNotifications();
    screenhost::PropertyFrameRequest request;
    request.objects = {control};
    request.pages = screenhost::CommonPages({control});
    request.create = [](REFCLSID clsid) {
        ComPtr<IPropertyPage> page;
        CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IPropertyPage, page.PutVoid());
        return page ? page : MakePage(clsid).As<IPropertyPage>();
    };
    std::vector<std::string> reports;
    request.report = [&](HWND, const std::string& text) { reports.push_back(text); };
    screenhost::PropertyFrame frame(std::move(request));
    frame.Open();
    EXPECT_EQ(std::vector<std::string>{}, reports);
    const auto titles = frame.Titles();
    ASSERT_EQ(IsSet() ? 6u : 7u, titles.size());
    for (const Installed* each : {&font, &color}) {
        EXPECT_EQ(1, each->page->made);
        ASSERT_EQ(1u, each->page->objects.size());
        EXPECT_EQ(control.Get(), each->page->objects[0].Get());
        const auto place = std::ranges::find(titles, each->page->kind.title);
        ASSERT_NE(titles.end(), place);
        frame.ShowPage(static_cast<std::size_t>(place - titles.begin()));
        EXPECT_EQ(1, each->page->shown);
        notified->changed.clear();
        each->page->Edit();
        SendMessageW(frame.Handle(), WM_COMMAND, screenhost::PropertyFrame::ApplyButton, 0);
        EXPECT_FALSE(each->page->dirty);
        // Each property that a list sends to this page, and no other.
        EXPECT_FALSE(notified->changed.empty());
        EXPECT_EQ(PropertiesOf(*control, each->page->kind), notified->changed);
        for (const DISPID id : notified->changed) {
            CLSID page{};
            EXPECT_EQ(S_OK, As<IPerPropertyBrowsing>()->MapPropertyToPage(id, &page));
            EXPECT_TRUE(IsEqualCLSID(each->page->kind.clsid, page)) << id;
        }
    }
    EXPECT_EQ(L"Liberation Mono", Text(comkit::Call(*Get(L"Font").Get().pdispVal, L"Name").Get()));
    for (const wchar_t* name : {L"BackColor", L"ForeColor"}) EXPECT_EQ(std::to_wstring(0x332211), TextOf(name));
    if (IsSet()) {
        EXPECT_EQ(std::to_wstring(0x332211), TextOf(L"CalTrailingForeColor"));
    }
}

INSTANTIATE_TEST_SUITE_P(OfEitherControl, StockPages, EitherControl(), NameOfControl);

}  // namespace
}  // namespace component
