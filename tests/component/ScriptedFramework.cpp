#include "ScriptedFramework.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "comkit/Bstr.h"
#include "comkit/Handle.h"

namespace component {

namespace {

constexpr CLSID HiddenClass = {0x5f0e2a12, 0x27c4, 0x4ac6, {0x9b, 0x0d, 0x3a, 0x55, 0x10, 0xc2, 0x7e, 0x01}};
constexpr const wchar_t* ProgIdKey = L"Software\\Classes\\VexaBaseControls.VexaHidden";

constexpr DISPID ElementCount = 1;
constexpr DISPID Element = 2;
constexpr DISPID ElementValue = 3;

DISPID IdOf(const wchar_t* name) {
    if (_wcsicmp(name, L"ElementCount") == 0) return ElementCount;
    if (_wcsicmp(name, L"Element") == 0) return Element;
    if (_wcsicmp(name, L"Value") == 0) return ElementValue;
    return DISPID_UNKNOWN;
}

/// What Element answers.
class Holder final : public comkit::ComObject<Holder, IDispatch> {
public:
    explicit Holder(const VARIANT& value) { EXPECT_EQ(S_OK, m_value.CopyFrom(value)); }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        ids[0] = IdOf(names[0]);
        return ids[0] == ElementValue ? S_OK : DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                     UINT*) override {
        return VariantCopy(result, const_cast<VARIANT*>(&m_value.Get()));
    }

private:
    comkit::Variant m_value;
};

}  // namespace

class ScriptedFramework::Hidden final : public comkit::ComObject<Hidden, IDispatch, IConnectionPointContainer> {
public:
    explicit Hidden(ScriptedFramework& framework)
        : m_framework(framework), m_events(*Identity(), DIID_HiddenControlEvents) {
        m_framework.m_living.push_back(this);
    }
    ~Hidden() { std::erase(m_framework.m_living, this); }

    void Deliver(short index, const wchar_t* value) {
        const comkit::Bstr text(value);
        for (const auto& sink : m_events.Sinks()) {
            std::array<VARIANT, 2> arguments{};
            arguments[0].vt = VT_BSTR;
            arguments[0].bstrVal = text.Get();
            arguments[1].vt = VT_I2;
            arguments[1].iVal = index;
            DISPPARAMS params{arguments.data(), nullptr, 2, 0};
            EXPECT_EQ(S_OK, sink->Invoke(1, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, nullptr, nullptr,
                                         nullptr));
        }
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        ids[0] = IdOf(names[0]);
        return ids[0] == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        if (id != ElementCount || params->cArgs != 1) return E_FAIL;  // there are no elements to be had
        comkit::Variant count;
        EXPECT_EQ(S_OK, count.ConvertFrom(params->rgvarg[0], VT_I4));
        m_framework.m_elementCounts.push_back(count.Get().lVal);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** out) override {
        *out = nullptr;
        if (!IsEqualIID(iid, m_events.Iid())) return CONNECT_E_NOCONNECTION;
        *out = &m_events;
        m_events.AddRef();
        return S_OK;
    }

private:
    ScriptedFramework& m_framework;
    comkit::ConnectionPoint<IDispatch> m_events;
};

class ScriptedFramework::Factory final : public comkit::ComObject<Factory, IClassFactory> {
public:
    explicit Factory(ScriptedFramework& framework) : m_framework(framework) {}
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID iid, void** out) override {
        return comkit::MakeObject<Hidden>(m_framework)->QueryInterface(iid, out);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

private:
    ScriptedFramework& m_framework;
};

ScriptedFramework::ScriptedFramework() {
    const auto factory = comkit::MakeObject<Factory>(*this);
    EXPECT_EQ(S_OK,
              CoRegisterClassObject(HiddenClass, factory.Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &m_cookie));
    wchar_t text[40];
    StringFromGUID2(HiddenClass, text, 40);
    EXPECT_EQ(ERROR_SUCCESS,
              RegSetKeyValueW(HKEY_LOCAL_MACHINE, (std::wstring(ProgIdKey) + L"\\CLSID").c_str(), nullptr, REG_SZ, text,
                              static_cast<DWORD>((wcslen(text) + 1) * sizeof(wchar_t))));
    Sleep(150);  // longer than the component takes it for granted that there is none
}

ScriptedFramework::~ScriptedFramework() {
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, ProgIdKey);
    CoRevokeClassObject(m_cookie);
    EXPECT_TRUE(m_living.empty()) << "hidden controls outlived what they belong to";
}

void ScriptedFramework::Deliver(short index, const wchar_t* value) {
    const auto living = m_living;
    for (Hidden* const hidden : living) hidden->Deliver(index, value);
}

HRESULT TestVariable::GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) {
    ids[0] = IdOf(names[0]);
    return ids[0] == Element ? S_OK : DISP_E_UNKNOWNNAME;
}

HRESULT TestVariable::Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT* result, EXCEPINFO*, UINT*) {
    if (params->cArgs != 1 || params->rgvarg[0].vt != VT_BSTR) return DISP_E_TYPEMISMATCH;
    asked.emplace_back(comkit::ToWide(comkit::ViewOf(params->rgvarg[0].bstrVal)));
    const auto found = elements.find(asked.back());
    if (found == elements.end()) return E_INVALIDARG;
    *result = comkit::Variant(static_cast<IDispatch*>(comkit::MakeObject<Holder>(found->second.Get()).Get())).Detach();
    return S_OK;
}

}  // namespace component
