// Without the framework, and with one that fails at every call, the control is a plain date and time control.
#include <Vexa.h>

#include "ControlFixture.h"

namespace component {
namespace {

using comkit::ComPtr;
using comkit::Variant;

/// Answers the first calls with itself; everything after them fails with the host's own noise.
struct Patience {
    int left = 0;
    int calls = 0;
};

class FailingObject final : public comkit::ComObject<FailingObject, IDispatch> {
public:
    explicit FailingObject(Patience& patience) noexcept : m_patience(patience) {}
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT count, LCID, DISPID* ids) override {
        for (UINT i = 0; i < count; ++i) ids[i] = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO* info,
                                     UINT*) override {
        ++m_patience.calls;
        if (m_patience.left > 0) {
            --m_patience.left;
            if (result) *result = Variant(static_cast<IDispatch*>(this)).Detach();
            return S_OK;
        }
        if (info) {
            *info = {};
            info->scode = static_cast<SCODE>(0x800A01A8);
            info->bstrDescription = SysAllocString(L"the framework is broken");
        }
        return DISP_E_EXCEPTION;
    }

private:
    Patience& m_patience;
};

class FailingFactory final : public comkit::ComObject<FailingFactory, IClassFactory> {
public:
    explicit FailingFactory(Patience& patience) noexcept : m_patience(patience) {}
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID iid, void** out) override {
        return comkit::MakeObject<FailingObject>(m_patience)->QueryInterface(iid, out);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

private:
    Patience& m_patience;
};

constexpr const wchar_t* ProgIds[] = {L"VexaBaseControls.VexaHidden", L"KivUserServicesObjs.Collection",
                                      L"KivUserServicesObjs.HelpDefinition", L"KivUserServicesObjs.Registry"};

class Framework : public ControlFixture {
protected:
    /// All that a host does with a control; nothing may fail.
    void VisitDevice() {
        Place(true);
        comkit::Put(Members(), L"DataVariableName", 0, u"nciClockFormat");
        for (int slot = 0; slot <= 13; ++slot) {
            comkit::Put(Members(), L"DataVariableName", slot, u"name");
            EXPECT_EQ(L"name", Text(comkit::Call(Members(), L"DataVariableName", slot).Get()));
        }
        ASSERT_EQ(S_OK, DoVerb(OLEIVERB_UIACTIVATE));
        Put(L"UsePCDateTime", false);
        Put(L"DataInUpload", false);
        EXPECT_EQ(L"False", TextOf(L"DataInUpload"));
        Put(L"DataInUpload", true);
        Put(L"UsePCDateTime", true);
        AskForSupport();
        Remove();
    }

private:
    void AskForSupport() {
        const auto support = As<IVexaSupport>();
        ComPtr<IDispatch> object;
        EXPECT_EQ(S_OK, support->get_VexaHelpObject(object.Put()));
        EXPECT_EQ(S_OK, support->get_VexaSubElements(object.Put()));
        EXPECT_EQ(S_OK, support->VexaSetControlFocus());
    }
};

TEST_F(Framework, AbsentTheControlDoesItsPlainJob) {
    for (const wchar_t* progId : ProgIds) {
        CLSID clsid{};
        if (SUCCEEDED(CLSIDFromProgID(progId, &clsid))) GTEST_SKIP() << "a framework is installed";
    }
    VisitDevice();
}

TEST_F(Framework, FailingFromTheFirstOrALaterCallOnItHarmsNothing) {
    const CLSID clsid = {0x5f0e2a11, 0x27c4, 0x4ac6, {0x9b, 0x0d, 0x3a, 0x55, 0x10, 0xc2, 0x7e, 0x01}};
    Patience patience;
    const auto factory = comkit::MakeObject<FailingFactory>(patience);
    DWORD cookie = 0;
    ASSERT_EQ(S_OK, CoRegisterClassObject(clsid, factory.Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie));
    wchar_t text[40];
    StringFromGUID2(clsid, text, 40);
    for (const wchar_t* progId : ProgIds) {
        const std::wstring key = std::wstring(L"Software\\Classes\\") + progId + L"\\CLSID";
        comkit::UniqueRegKey created;
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, key.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, created.Put(),
                        nullptr);
        RegSetValueExW(created.Get(), nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(text),
                       static_cast<DWORD>((wcslen(text) + 1) * sizeof(wchar_t)));
        CLSID found{};
        ASSERT_EQ(S_OK, CLSIDFromProgID(progId, &found));
        ComPtr<IDispatch> made;
        ASSERT_EQ(S_OK, CoCreateInstance(found, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, made.PutVoid()));
    }
    for (const int answered : {0, 1, 2, 3, 4, 5, 6, 7, 9, 12, 20}) {
        SCOPED_TRACE(answered);
        patience = {answered, 0};
        VisitDevice();
        EXPECT_GT(patience.calls, answered);
    }
    for (const wchar_t* progId : ProgIds)
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, (std::wstring(L"Software\\Classes\\") + progId).c_str());
    CoRevokeClassObject(cookie);
}

TEST_F(Framework, TheChoiceOfTheLastSessionIsRememberedOnTheMachine) {
    Place(true);
    Put(L"UsePCDateTime", false);
    Remove();
    DWORD stored = 99;
    DWORD size = sizeof(stored);
    ASSERT_EQ(ERROR_SUCCESS,
              RegGetValueW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\The Corvale Company\\Controls\\KivSetDateTime",
                           L"UsePCDateTime", RRF_RT_REG_DWORD, nullptr, &stored, &size));
    EXPECT_EQ(0u, stored);
    Place(true);
    EXPECT_EQ(L"False", TextOf(L"UsePCDateTime"));
    Put(L"UsePCDateTime", true);
    Remove();
    RegGetValueW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\The Corvale Company\\Controls\\KivSetDateTime", L"UsePCDateTime",
                 RRF_RT_REG_DWORD, nullptr, &stored, &size);
    EXPECT_EQ(0xFFFFFFFFu, stored);
    ForgetRememberedChoice();
    Place(false);  // a designer neither reads nor writes it
    Put(L"UsePCDateTime", false);
    Remove();
    comkit::UniqueRegKey key;
    EXPECT_EQ(ERROR_FILE_NOT_FOUND,
              RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\The Corvale Company", 0, KEY_READ, key.Put()));
}

}  // namespace
}  // namespace component
