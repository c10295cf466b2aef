// Without the framework, and with one that fails at every call, the control is a plain date and time control.
#include <Vexa.h>

#include <algorithm>
#include <string>
#include <vector>

#include "ControlFixture.h"
#include "tests/Effort.h"

namespace component {
namespace {

using comkit::ComPtr;
using comkit::Variant;

/// What a call answers that fails.
struct Way {
    HRESULT answer;
    const wchar_t* description = nullptr;  ///< of an exception
    bool nonsense = false;                 ///< the result is a text that nobody asked for
};
constexpr Way Ways[] = {{DISP_E_EXCEPTION, L"the framework is broken"},
                        {DISP_E_EXCEPTION},
                        {E_FAIL},
                        {E_OUTOFMEMORY},
                        {RPC_E_DISCONNECTED},
                        {DISP_E_MEMBERNOTFOUND},
                        {S_OK},
                        {S_OK, nullptr, true}};

/// Answers the first calls with itself; everything after them fails.
struct Patience {
    int left = 0;
    int calls = 0;
    Way way = Ways[0];
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
        return Fail(result, info);
    }

private:
    HRESULT Fail(VARIANT* result, EXCEPINFO* info) const {
        const Way& way = m_patience.way;
        if (way.answer == DISP_E_EXCEPTION && info) {
            *info = {};
            if (way.description) {
                info->scode = static_cast<SCODE>(0x800A01A8);
                info->bstrDescription = SysAllocString(way.description);
            }
        }
        if (way.nonsense && result) *result = Variant(u"nonsense").Detach();
        return way.answer;
    }

    Patience& m_patience;
};

/// What was made of a framework's classes, by ProgID, in order.
using Creations = std::vector<std::wstring>;

class FailingFactory final : public comkit::ComObject<FailingFactory, IClassFactory> {
public:
    FailingFactory(Patience& patience, Creations& creations, std::wstring progId)
        : m_patience(patience), m_creations(creations), m_progId(std::move(progId)) {}
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID iid, void** out) override {
        m_creations.push_back(m_progId);
        return comkit::MakeObject<FailingObject>(m_patience)->QueryInterface(iid, out);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

private:
    Patience& m_patience;
    Creations& m_creations;
    std::wstring m_progId;
};

constexpr const wchar_t* ProgIds[] = {L"VexaBaseControls.VexaHidden", L"KivUserServicesObjs.Collection",
                                      L"KivUserServicesObjs.HelpDefinition", L"KivUserServicesObjs.Registry",
                                      L"KivUserServicesObjs.Services"};

/// A framework that is installed for as long as this lives, makes what it is asked for and fails at most calls.
class FrameworkDouble {
public:
    FrameworkDouble() {
        CLSID clsid = {0x5f0e2a11, 0x27c4, 0x4ac6, {0x9b, 0x0d, 0x3a, 0x55, 0x10, 0xc2, 0x7e, 0x01}};
        for (const wchar_t* progId : ProgIds) {
            ++clsid.Data1;
            const auto factory = comkit::MakeObject<FailingFactory>(patience, creations, progId);
            DWORD cookie = 0;
            EXPECT_EQ(S_OK,
                      CoRegisterClassObject(clsid, factory.Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie));
            m_cookies.push_back(cookie);
            Write(progId, clsid);
            CLSID found{};
            EXPECT_EQ(S_OK, CLSIDFromProgID(progId, &found));
            EXPECT_TRUE(IsEqualCLSID(clsid, found));
        }
    }
    FrameworkDouble(const FrameworkDouble&) = delete;
    FrameworkDouble& operator=(const FrameworkDouble&) = delete;
    ~FrameworkDouble() {
        for (const wchar_t* progId : ProgIds) RegDeleteTreeW(HKEY_LOCAL_MACHINE, (Classes + progId).c_str());
        for (const DWORD cookie : m_cookies) CoRevokeClassObject(cookie);
    }

    auto Count(const wchar_t* progId) const { return std::ranges::count(creations, progId); }

    Patience patience;
    Creations creations;

private:
    static void Write(const wchar_t* progId, REFCLSID clsid) {
        wchar_t text[40];
        StringFromGUID2(clsid, text, 40);
        comkit::UniqueRegKey key;
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, (Classes + progId + L"\\CLSID").c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                        nullptr, key.Put(), nullptr);
        RegSetValueExW(key.Get(), nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(text),
                       static_cast<DWORD>((wcslen(text) + 1) * sizeof(wchar_t)));
    }
    static inline const std::wstring Classes = L"Software\\Classes\\";

    std::vector<DWORD> m_cookies;
};

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

    /// All that a designer and its user do with a control, and a while of waiting.
    void WorkInDesigner() {
        const auto bag = comkit::MakeObject<TestBag>();
        for (int slot = 0; slot <= 13; ++slot) bag->Put(L"DataVarName" + std::to_wstring(slot), u"name");
        ASSERT_EQ(S_OK, As<IPersistPropertyBag>()->Load(bag.Get(), nullptr));
        ASSERT_EQ(S_OK, DoVerb(OLEIVERB_INPLACEACTIVATE));
        for (int slot = 0; slot <= 13; ++slot) {
            comkit::Put(Members(), L"DataVariableName", slot, u"other");
            comkit::Put(Members(), L"DataLMObject", slot, 1234);
        }
        for (const long mode : {1L, 2L, 0L}) Put(L"Mode", mode);
        Put(L"UsePCDateTime", false);
        for (const bool upload : {false, true}) {
            std::vector<Variant> direction;
            direction.emplace_back(upload);
            EXPECT_TRUE(FAILED(Invoke(Members(), L"DataInUpload", DISPATCH_PROPERTYPUT, direction).hr));
        }
        SendMessageW(Child(L"Button", L"&Use PC System Date/Time?"), BM_CLICK, 0, 0);
        AskForSupport();
        As<IOleControl>()->OnAmbientPropertyChange(DISPID_UNKNOWN);
        ASSERT_EQ(S_OK, As<IPersistPropertyBag>()->Save(bag.Get(), TRUE, TRUE));
        WaitFor(1200);
        As<IOleInPlaceObject>()->InPlaceDeactivate();
        ASSERT_EQ(S_OK, As<IPersistStreamInit>()->InitNew());
    }
    void ChangeMode(bool userMode) {
        site->userMode = userMode;
        EXPECT_EQ(S_OK, As<IOleControl>()->OnAmbientPropertyChange(DISPID_AMBIENT_USERMODE));
    }

private:
    static void WaitFor(DWORD milliseconds) {
        const ULONGLONG end = GetTickCount64() + milliseconds;
        while (GetTickCount64() < end) {
            MSG message;
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
            Sleep(20);
        }
    }
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
    FrameworkDouble framework;
    Sleep(150);  // longer than the component takes it for granted that there is none
    const kiv::Share share = kiv::OurShare();
    long cell = 0;
    for (const Way& way : Ways) {
        for (const int answered : {0, 1, 2, 3, 4, 5, 6, 7, 9, 12, 20}) {
            if (!share.Has(cell++)) continue;
            SCOPED_TRACE(testing::Message() << "in way " << &way - Ways << " after " << answered);
            framework.patience = {answered, 0, way};
            VisitDevice();
            EXPECT_GT(framework.patience.calls, answered);
        }
    }
}

TEST_F(Framework, ADesignerNeverCausesAWordToItAndRunModeDoesWheneverItComes) {
    FrameworkDouble framework;
    framework.patience.left = 1000;
    Place(false);
    WorkInDesigner();
    EXPECT_EQ(Creations{}, framework.creations);
    EXPECT_EQ(0, framework.patience.calls);
    for (int round = 0; round < 2; ++round) {
        SCOPED_TRACE(round);
        framework.creations.clear();
        ChangeMode(true);
        EXPECT_EQ(1, framework.Count(L"VexaBaseControls.VexaHidden"));
        EXPECT_EQ(1, framework.Count(L"KivUserServicesObjs.Collection"));
        EXPECT_EQ(1, framework.Count(L"KivUserServicesObjs.HelpDefinition"));
        EXPECT_GE(framework.Count(L"KivUserServicesObjs.Registry"), 1) << "the choice is read";
        framework.creations.clear();
        ChangeMode(false);
        const Creations leaving = framework.creations;
        EXPECT_EQ(leaving, Creations(leaving.size(), L"KivUserServicesObjs.Registry")) << "the choice is stored";
        framework.creations.clear();
        framework.patience = {1000};
        WorkInDesigner();
        EXPECT_EQ(Creations{}, framework.creations);
        EXPECT_EQ(0, framework.patience.calls);
    }
    Remove();
    EXPECT_EQ(Creations{}, framework.creations) << "it ended in design mode";
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
