// The screen host's property frame, with pages made for the test: what reaches the pages, when, and what does not.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>
#include <ole2.h>

#include "comkit/Errors.h"
#include "comkit/Handle.h"
#include "screenhost/PropertyFrame.h"
#include "screenhost/TextCursor.h"

namespace screenhost {
namespace {

using Lines = std::vector<std::string>;

constexpr CLSID ClassOfPage(unsigned long number) {
    return {number, 0x1234, 0x4321, {1, 2, 3, 4, 5, 6, 7, 8}};
}

/// What the pages of one frame have in common.
struct Script {
    Lines calls;
    bool refuses[3]{};  ///< that page's Apply
    bool leavesNoWords = false;
    bool swallowsKeys = false;
    bool rejectsObjects = false;
    bool hasHelp = false;
};

/// A page with two fields. It calls itself dirty when Touch says so.
class TestPage final : public comkit::ComObject<TestPage, IPropertyPage> {
public:
    TestPage(Script& script, unsigned number) : m_script(script), m_number(number) {}

    void Touch(DWORD status = PROPPAGESTATUS_DIRTY) {
        m_dirty = true;
        m_site->OnStatusChange(status);
    }
    HWND Field(int index) const { return GetDlgItem(m_window, 100 + index); }
    HWND Window() const { return m_window; }
    IPropertyPageSite* Site() const { return m_site.Get(); }

    HRESULT STDMETHODCALLTYPE SetPageSite(IPropertyPageSite* site) override {
        m_site = comkit::ComPtr<IPropertyPageSite>(site);
        Note(site ? "site" : "no site");
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Activate(HWND parent, LPCRECT place, BOOL) override {
        Note("activate");
        m_window = CreateWindowW(WC_STATICW, L"", WS_CHILD, place->left, place->top, place->right - place->left,
                                 place->bottom - place->top, parent, nullptr, nullptr, nullptr);
        for (int i = 0; i < 2; ++i) {
            CreateWindowW(WC_EDITW, L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 10, 10 + 30 * i, 80, 22, m_window,
                          reinterpret_cast<HMENU>(static_cast<INT_PTR>(100 + i)), nullptr, nullptr);
        }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Deactivate() override {
        Note("deactivate");
        DestroyWindow(m_window);
        m_window = nullptr;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetPageInfo(PROPPAGEINFO* info) override {
        *info = {};
        info->cb = sizeof(*info);
        const std::wstring title = L"Page " + std::to_wstring(m_number);
        info->pszTitle = static_cast<LPOLESTR>(CoTaskMemAlloc((title.size() + 1) * sizeof(wchar_t)));
        wcscpy(info->pszTitle, title.c_str());
        info->size = {100 + 300 * static_cast<LONG>(m_number), 400};
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetObjects(ULONG count, IUnknown**) override {
        Note("objects " + std::to_string(count));
        return m_script.rejectsObjects && count > 0 ? E_INVALIDARG : S_OK;
    }
    HRESULT STDMETHODCALLTYPE Show(UINT command) override {
        Note(command == SW_HIDE ? "hide" : "show");
        ShowWindow(m_window, static_cast<int>(command));
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Move(LPCRECT) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE IsPageDirty() override { return m_dirty ? S_OK : S_FALSE; }
    HRESULT STDMETHODCALLTYPE Apply() override {
        Note("apply");
        if (m_script.refuses[m_number]) {
            if (!m_script.leavesNoWords) comkit::LeaveErrorInfo(u"Page", u"That will not do");
            return static_cast<HRESULT>(0x800A017C);
        }
        m_dirty = false;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Help(LPCOLESTR) override {
        Note("help");
        return m_script.hasHelp ? S_OK : E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message) override {
        if (m_script.swallowsKeys) {
            Note("key " + std::to_string(message->wParam));
            return S_OK;
        }
        return m_site->TranslateAccelerator(message);
    }

private:
    void Note(const std::string& what) { m_script.calls.push_back(std::to_string(m_number) + " " + what); }

    Script& m_script;
    unsigned m_number;
    comkit::ComPtr<IPropertyPageSite> m_site;
    HWND m_window = nullptr;
    bool m_dirty = false;
};

/// An object that names its pages, or has none.
class Specimen final : public comkit::ComObject<Specimen, ISpecifyPropertyPages> {
public:
    explicit Specimen(std::vector<CLSID> pages) : m_pages(std::move(pages)) {}
    HRESULT STDMETHODCALLTYPE GetPages(CAUUID* out) override {
        out->cElems = static_cast<ULONG>(m_pages.size());
        out->pElems = static_cast<GUID*>(CoTaskMemAlloc(sizeof(GUID) * (m_pages.size() + 1)));
        std::ranges::copy(m_pages, out->pElems);
        return S_OK;
    }

private:
    std::vector<CLSID> m_pages;
};

comkit::ComPtr<IUnknown> MakeSpecimen(std::vector<CLSID> pages) {
    return comkit::ComPtr<IUnknown>::From(comkit::MakeObject<Specimen>(std::move(pages))->Identity());
}

class PropertyFrameTest : public testing::Test {
protected:
    void SetUp() override {
        OleInitialize(nullptr);
        m_owner.Reset(CreateWindowW(WC_STATICW, L"owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 400, 300, nullptr,
                                    nullptr, nullptr, nullptr));
    }
    void TearDown() override {
        m_frame.reset();
        m_pages.clear();
        OleUninitialize();
    }

    void Open(std::size_t pages = 2) {
        PropertyFrameRequest request;
        request.owner = m_owner.Get();
        request.title = L"Test";
        request.objects = {MakeSpecimen({})};
        for (unsigned i = 0; i < pages; ++i) request.pages.push_back(ClassOfPage(i));
        request.create = [this](REFCLSID clsid) {
            if (clsid.Data1 == m_missing) throw comkit::ComError(REGDB_E_CLASSNOTREG);
            m_pages.push_back(comkit::MakeObject<TestPage>(m_script, static_cast<unsigned>(clsid.Data1)));
            return comkit::ComPtr<IPropertyPage>(m_pages.back().Get());
        };
        request.report = [this](HWND, const std::string& text) { m_reports.push_back(text); };
        request.applied = [this] { ++m_applied; };
        request.closed = [this] { ++m_closed; };
        m_frame = std::make_unique<PropertyFrame>(std::move(request));
        m_frame->Open();
        Pump();
        m_script.calls.clear();
    }
    void Pump() {
        MSG message{};
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (m_frame && m_frame->Filter(message)) continue;
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    void Press(WPARAM key, bool control = false, bool shift = false) {
        BYTE keys[256]{};
        GetKeyboardState(keys);
        keys[VK_CONTROL] = control ? 0x80 : 0;
        keys[VK_SHIFT] = shift ? 0x80 : 0;
        SetKeyboardState(keys);
        PostMessageW(GetFocus(), WM_KEYDOWN, key, 1);
        Pump();
        keys[VK_CONTROL] = keys[VK_SHIFT] = 0;
        SetKeyboardState(keys);
    }
    void Click(int button) {
        SendMessageW(GetDlgItem(m_frame->Handle(), button), BM_CLICK, 0, 0);
        Pump();
    }
    bool IsEnabled(int button) const { return IsWindowEnabled(GetDlgItem(m_frame->Handle(), button)) != FALSE; }

    Script m_script;
    unsigned long m_missing = 99;
    comkit::UniqueWindow m_owner;
    std::vector<comkit::ComPtr<TestPage>> m_pages;
    std::unique_ptr<PropertyFrame> m_frame;
    Lines m_reports;
    int m_applied = 0;
    int m_closed = 0;
};

TEST(CommonPages, AreThoseOfAllObjectsInTheOrderOfTheFirst) {
    const CLSID a = ClassOfPage(1);
    const CLSID b = ClassOfPage(2);
    const CLSID c = ClassOfPage(3);
    EXPECT_TRUE(CommonPages({}).empty());
    EXPECT_EQ(CommonPages({MakeSpecimen({a, b, c})}).size(), 3u);
    const auto common = CommonPages({MakeSpecimen({a, b, c}), MakeSpecimen({c, a})});
    ASSERT_EQ(common.size(), 2u);
    EXPECT_TRUE(IsEqualCLSID(common[0], a));
    EXPECT_TRUE(IsEqualCLSID(common[1], c));
    EXPECT_TRUE(CommonPages({MakeSpecimen({a}), MakeSpecimen({b})}).empty());
    Script script;
    const auto plain = comkit::ComPtr<IUnknown>::From(comkit::MakeObject<TestPage>(script, 0u)->Identity());
    EXPECT_TRUE(CommonPages({plain, MakeSpecimen({a})}).empty()) << "an object without pages has none in common";
}

TEST_F(PropertyFrameTest, PagesAreIntroducedBeforeTheyAreShownAndLetGoInTheOppositeOrder) {
    Open();
    EXPECT_EQ(m_frame->Titles(), (std::vector<std::wstring>{L"Page 0", L"Page 1"}));
    EXPECT_FALSE(IsWindowEnabled(m_owner.Get())) << "modal";
    RECT page{};
    GetClientRect(m_pages[0]->Window(), &page);
    EXPECT_EQ(page.right, 400) << "the largest page has room";
    EXPECT_EQ(page.bottom, 400);
    m_frame->ShowPage(1);
    m_frame->ShowPage(0);
    EXPECT_EQ(m_script.calls, (Lines{"0 hide", "1 activate", "1 show", "1 hide", "0 show"}));
    m_script.calls.clear();
    m_frame->Close();
    EXPECT_TRUE(IsWindowEnabled(m_owner.Get()));
    m_frame.reset();
    EXPECT_EQ(m_script.calls,
              (Lines{"0 deactivate", "0 objects 0", "0 no site", "1 deactivate", "1 objects 0", "1 no site"}));
    EXPECT_EQ(m_closed, 1);
}

TEST_F(PropertyFrameTest, OnlyEditedPagesAreAppliedAndTheButtonFollows) {
    Open();
    EXPECT_FALSE(IsEnabled(PropertyFrame::ApplyButton));
    m_pages[1]->Touch();
    EXPECT_FALSE(IsEnabled(PropertyFrame::ApplyButton)) << "not from inside of the page";
    Pump();
    EXPECT_TRUE(IsEnabled(PropertyFrame::ApplyButton));
    Click(PropertyFrame::ApplyButton);
    EXPECT_EQ(m_script.calls, Lines{"1 apply"});
    EXPECT_EQ(m_applied, 1);
    EXPECT_FALSE(IsEnabled(PropertyFrame::ApplyButton));
    EXPECT_TRUE(m_frame->IsOpen());
    m_pages[0]->Touch(PROPPAGESTATUS_DIRTY | PROPPAGESTATUS_VALIDATE);
    Pump();
    EXPECT_EQ(m_script.calls.back(), "0 apply") << "a page may ask to be applied";
    m_pages[0]->Touch();
    Click(IDCANCEL);
    EXPECT_EQ(m_script.calls.size(), 2u) << "Cancel applies nothing";
    EXPECT_FALSE(m_frame->IsOpen());
}

TEST_F(PropertyFrameTest, ARefusalComesToTheFrontInThePagesWordsAndTheFrameStays) {
    Open(3);
    for (const auto& page : m_pages) page->Touch();
    m_script.refuses[1] = true;
    Click(IDOK);
    EXPECT_TRUE(m_frame->IsOpen());
    EXPECT_EQ(m_frame->Current(), 1u);
    ASSERT_EQ(m_reports.size(), 1u);
    EXPECT_EQ(m_reports[0], "page \"Page 1\" cannot be applied: Page: That will not do (0x800A017C)");
    EXPECT_TRUE(IsEnabled(PropertyFrame::ApplyButton));
    EXPECT_EQ(m_script.calls, (Lines{"0 apply", "1 apply", "0 hide", "1 activate", "1 show"}));

    m_script.leavesNoWords = true;
    comkit::LeaveErrorInfo(u"Somebody", u"Something older");
    Click(PropertyFrame::ApplyButton);
    EXPECT_EQ(m_reports.back().find("Something older"), std::string::npos) << "older words are not this page's";

    m_script.refuses[1] = false;
    m_script.calls.clear();
    Click(IDOK);
    EXPECT_EQ(m_script.calls, (Lines{"1 apply", "2 apply"})) << "what was applied is not applied again";
    EXPECT_EQ(m_applied, 3) << "once for each button, not for each page";
    EXPECT_FALSE(m_frame->IsOpen());
}

TEST_F(PropertyFrameTest, TheTabKeyGoesThroughPageAndFrame) {
    Open();
    EXPECT_EQ(GetFocus(), m_pages[0]->Field(0));
    const auto frameItem = [this](int id) { return GetDlgItem(m_frame->Handle(), id); };
    const HWND expected[] = {m_pages[0]->Field(1), frameItem(IDOK), frameItem(IDCANCEL),
                             frameItem(IDHELP),    m_frame->Tabs(), m_pages[0]->Field(0)};
    for (HWND window : expected) {
        Press(VK_TAB);
        EXPECT_EQ(GetFocus(), window);
    }
    Press(VK_TAB, false, true);
    EXPECT_EQ(GetFocus(), m_frame->Tabs());
}

TEST_F(PropertyFrameTest, KeysTurnPagesCloseAndAskForHelp) {
    Open(3);
    Press(VK_TAB, true);
    EXPECT_EQ(m_frame->Current(), 1u);
    EXPECT_EQ(GetFocus(), m_pages[1]->Field(0));
    Press(VK_TAB, true, true);
    Press(VK_PRIOR, true);
    EXPECT_EQ(m_frame->Current(), 2u) << "from the first to the last";
    EXPECT_EQ(SendMessageW(m_frame->Tabs(), TCM_GETCURSEL, 0, 0), 2);
    Press(VK_NEXT, true);
    EXPECT_EQ(m_frame->Current(), 0u);
    Press(VK_F1);
    EXPECT_EQ(m_script.calls.back(), "0 help");
    EXPECT_EQ(m_reports, Lines{"page \"Page 0\" has no help"});
    m_script.hasHelp = true;
    Press(VK_F1);
    EXPECT_EQ(m_reports.size(), 1u);

    m_pages[0]->Touch();
    Press(VK_ESCAPE);
    EXPECT_FALSE(m_frame->IsOpen());
    EXPECT_EQ(m_applied, 0);
}

TEST_F(PropertyFrameTest, EnterIsOkAndAKeyThatAPageTakesGoesNoFurther) {
    Open();
    m_pages[0]->Touch();
    m_script.swallowsKeys = true;
    Press(VK_RETURN);
    EXPECT_TRUE(m_frame->IsOpen());
    EXPECT_EQ(m_script.calls.back(), "0 key 13");
    m_script.swallowsKeys = false;
    Press(VK_RETURN);
    EXPECT_FALSE(m_frame->IsOpen());
    EXPECT_EQ(m_script.calls.back(), "0 apply");
}

TEST_F(PropertyFrameTest, PagesThatCannotBeHadAreReportedAndTheOthersShown) {
    m_missing = 0;
    Open();
    EXPECT_EQ(m_frame->Titles(), std::vector<std::wstring>{L"Page 1"});
    ASSERT_EQ(m_reports.size(), 1u);
    EXPECT_NE(m_reports[0].find("left out"), std::string::npos);
    m_frame.reset();
    m_pages.clear();
    m_missing = 99;
    m_script.rejectsObjects = true;
    EXPECT_THROW(Open(), TextError) << "without a page there is no frame";
    EXPECT_TRUE(IsWindowEnabled(m_owner.Get()));
    EXPECT_EQ(m_script.calls.back(), "1 no site") << "a page that was refused is let go all the same";
}

TEST_F(PropertyFrameTest, APageThatKeepsItsSiteFindsItClosed) {
    Open();
    const comkit::ComPtr<IPropertyPageSite> site(m_pages[0]->Site());
    comkit::ComPtr<IUnknown> container;
    EXPECT_EQ(site->GetPageContainer(container.Put()), E_NOTIMPL);
    m_frame.reset();
    MSG message{};
    EXPECT_EQ(site->OnStatusChange(PROPPAGESTATUS_DIRTY), E_UNEXPECTED);
    EXPECT_EQ(site->TranslateAccelerator(&message), E_UNEXPECTED);
    EXPECT_EQ(site->TranslateAccelerator(nullptr), E_POINTER);
}

}  // namespace
}  // namespace screenhost
