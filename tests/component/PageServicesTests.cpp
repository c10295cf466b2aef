// The framework's services for user interfaces: used where they are installed, replaced where they are not or fail.
#include <array>

#include "PageFixture.h"

namespace component {
namespace {

constexpr CLSID ServicesClass{0x5f0e2a31, 0x27c4, 0x4ac6, {0x9b, 0x0d, 0x3a, 0x55, 0x10, 0xc2, 0x7e, 0x01}};
constexpr const wchar_t* ServicesKey = L"Software\\Classes\\KivUserServicesObjs.Services";

/// Does everything otherwise than the built-in services do.
class ServicesDouble final : public comkit::ComObject<ServicesDouble, IDispatch, IClassFactory> {
public:
    bool fails = false;
    int made = 0;
    std::vector<std::wstring> calls;
    comkit::ComPtr<IDispatch> lastBox;

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID iid, void** out) override {
        ++made;
        return QueryInterface(iid, out);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        constexpr const wchar_t* known[] = {L"SelectAllText", L"FilterNumericKey", L"FormatVersion"};
        for (DISPID id = 0; id < 3; ++id) {
            if (std::wstring_view(names[0]) != known[id]) continue;
            ids[0] = id;
            return S_OK;
        }
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT* result, EXCEPINFO*,
                                     UINT*) override {
        if (fails) return E_FAIL;
        const auto argument = [&](UINT place) -> VARIANT& { return given->rgvarg[given->cArgs - 1 - place]; };
        if (id == 0) {
            lastBox = comkit::ComPtr<IDispatch>(argument(0).pdispVal);
            calls.push_back(L"select " + Text(comkit::Call(*lastBox, L"Text").Get()));
            comkit::Put(*lastBox, L"SelStart", 1);
            comkit::Put(*lastBox, L"SelLength", 2);
        } else if (id == 1) {
            EXPECT_EQ(3u, given->cArgs);
            EXPECT_EQ(VT_ERROR, argument(1).vt);
            EXPECT_EQ(VARIANT_FALSE, argument(2).boolVal);
            calls.push_back(L"filter " + std::to_wstring(*argument(0).piVal));
            if (*argument(0).piVal == L'x') *argument(0).piVal = L'5';
        } else {
            *result = comkit::Variant((Text(argument(0)) + L"/" + Text(argument(1)) + L"/" + Text(argument(2))).c_str())
                          .Detach();
        }
        return S_OK;
    }
};

class PageServices : public PageFixture {
protected:
    PageServices() : services(comkit::MakeObject<ServicesDouble>()) {
        EXPECT_EQ(S_OK, CoRegisterClassObject(ServicesClass, static_cast<IClassFactory*>(services.Get()),
                                              CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &m_cookie));
        std::array<wchar_t, 40> text{};
        StringFromGUID2(ServicesClass, text.data(), static_cast<int>(text.size()));
        comkit::UniqueRegKey key;
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, (std::wstring(ServicesKey) + L"\\CLSID").c_str(), 0, nullptr, 0,
                        KEY_ALL_ACCESS, nullptr, key.Put(), nullptr);
        RegSetValueExW(key.Get(), nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.data()),
                       static_cast<DWORD>((wcslen(text.data()) + 1) * sizeof(wchar_t)));
    }
    ~PageServices() override {
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, ServicesKey);
        CoRevokeClassObject(m_cookie);
    }

    DWORD Selection(const char16_t* name) const {
        return static_cast<DWORD>(SendMessageW(Field(name), EM_GETSEL, 0, 0));
    }

    comkit::ComPtr<ServicesDouble> services;

private:
    DWORD m_cookie = 0;
};

TEST_F(PageServices, AreMadeOncePerPageAndDecideSelectionAndKeys) {
    Open(kiv::PageId::SetDT_General, {set.object.Get()});
    EXPECT_EQ(0, services->made);
    SetFocus(Field(u"txtNumeric(1)"));
    EXPECT_EQ(static_cast<DWORD>(MAKELONG(1, 3)), Selection(u"txtNumeric(1)"));
    SendMessageW(Field(u"txtNumeric(1)"), WM_CHAR, L'x', 0);
    EXPECT_EQ(L"155", TextOf(u"txtNumeric(1)"));  // 1[09]5
    SetFocus(Field(u"txtCaption"));
    SendMessageW(Field(u"txtCaption"), WM_CHAR, L'x', 0);
    EXPECT_EQ(1, services->made);
    EXPECT_EQ((std::vector<std::wstring>{L"select 1095", L"filter 120", L"select Set Date/Time"}), services->calls);
    // The box that the services were given is good for the call only.
    EXPECT_THROW(comkit::Call(*services->lastBox, L"Text"), comkit::ComError);
}

TEST_F(PageServices, ThatFailAreReplaced) {
    services->fails = true;
    Open(kiv::PageId::SetDT_General, {set.object.Get()});
    SetFocus(Field(u"txtNumeric(0)"));
    EXPECT_EQ(static_cast<DWORD>(MAKELONG(0, 3)), Selection(u"txtNumeric(0)"));
    SendMessageW(Field(u"txtNumeric(0)"), WM_CHAR, L'x', 0);
    EXPECT_EQ(L"495", TextOf(u"txtNumeric(0)"));
    SendMessageW(Field(u"txtNumeric(0)"), WM_CHAR, L'7', 0);
    EXPECT_EQ(L"7", TextOf(u"txtNumeric(0)"));
}

}  // namespace
}  // namespace component
