#include "PageFixture.h"

#include <cstddef>

namespace component {

namespace {

constexpr int FirstFieldId = 100;

/// In the order of PageId. They are what containers have saved: none may ever change.
constexpr CLSID PageClasses[] = {
    {0x43140237, 0xDFF4, 0x42A7, {0xB7, 0x4A, 0x13, 0xF6, 0x1E, 0x57, 0x3E, 0xC2}},
    {0xE6AF83F7, 0xE0B1, 0x4E29, {0x9A, 0x56, 0x93, 0x85, 0xF2, 0x4F, 0x08, 0x27}},
    {0xDDA31EC4, 0x1BC8, 0x43D0, {0xA3, 0x74, 0x1F, 0x9E, 0xAC, 0x39, 0x94, 0xE7}},
    {0x9B3D5DDF, 0x6173, 0x4CD7, {0xA4, 0x53, 0x0D, 0xB9, 0x23, 0x5B, 0xC4, 0x74}},
    {0x1AED23F4, 0x32C4, 0x4C87, {0x93, 0x69, 0xC8, 0x03, 0x3E, 0xF5, 0xB5, 0x57}},
    {0x6E0DFF8F, 0x9609, 0x4AC1, {0x8A, 0x2E, 0x36, 0xF0, 0x0C, 0xFB, 0xE1, 0xE8}},
    {0x0EA91F87, 0x6831, 0x49DC, {0x8A, 0x47, 0xAF, 0x56, 0x1F, 0xAE, 0xAB, 0xBD}},
    {0x56A7E2FF, 0xBA73, 0x47AA, {0x87, 0x8F, 0x86, 0xAD, 0x39, 0xF7, 0x1D, 0x6D}},
};

}  // namespace

DesignedControl::DesignedControl(const TestedClass& which)
    : site(comkit::MakeObject<RecordingSite>()),
      object(Server::Get().CreateControl(which.clsid)),
      members(comkit::ComPtr<IDispatch>::From(object.Get())) {
    site->userMode = false;
    site->Attach(object.Get());
    comkit::ComPtr<IOleObject>::From(object.Get())->SetClientSite(site.Get());
    comkit::ComPtr<IPersistStreamInit>::From(object.Get())->InitNew();
}

DesignedControl::~DesignedControl() {
    const auto ole = comkit::ComPtr<IOleObject>::From(object.Get());
    ole->Close(OLECLOSE_NOSAVE);
    ole->SetClientSite(nullptr);
    site->Attach(nullptr);
}

comkit::ComPtr<IPropertyPage2> MakePage(REFCLSID clsid) {
    comkit::ComPtr<IClassFactory> factory;
    comkit::ComPtr<IPropertyPage2> page;
    if (SUCCEEDED(Server::Get().GetClassObject(clsid, IID_IClassFactory, factory.PutVoid())))
        factory->CreateInstance(nullptr, IID_IPropertyPage2, page.PutVoid());
    return page;
}

CLSID ClassOfPage(kiv::PageId page) {
    return PageClasses[static_cast<std::size_t>(page)];
}

PageFixture::PageFixture() : site(comkit::MakeObject<PageSite>()) {
    frame.Reset(CreateWindowExW(WS_EX_CONTROLPARENT, L"STATIC", L"Property pages",
                                WS_POPUP | WS_CAPTION | WS_VISIBLE | WS_CLIPCHILDREN, 20, 20, 1200, 900, nullptr,
                                nullptr, nullptr, nullptr));
}

PageFixture::~PageFixture() {
    Close();
}

void PageFixture::Open(kiv::PageId which, std::initializer_list<IUnknown*> objects) {
    Close();
    id = which;
    page = MakePage(ClassOfPage(which));
    ASSERT_TRUE(page);
    ASSERT_EQ(S_OK, page->SetPageSite(site.Get()));
    PROPPAGEINFO info{};
    info.cb = sizeof(info);
    ASSERT_EQ(S_OK, page->GetPageInfo(&info));
    CoTaskMemFree(info.pszTitle);
    Select(objects);
    const RECT place{10, 10, 10 + info.size.cx, 10 + info.size.cy};
    ASSERT_EQ(S_OK, page->Activate(frame.Get(), &place, FALSE));
    ASSERT_EQ(S_OK, page->Show(SW_SHOW));
}

void PageFixture::Select(std::initializer_list<IUnknown*> objects) {
    std::vector<IUnknown*> list(objects);
    ASSERT_EQ(S_OK, page->SetObjects(static_cast<ULONG>(list.size()), list.data()));
    site->statuses.clear();
}

void PageFixture::Close() {
    if (!page) return;
    page->Deactivate();
    page->SetObjects(0, nullptr);
    page->SetPageSite(nullptr);
    page.Reset();
}

HWND PageFixture::Field(const char16_t* name) const {
    int number = FirstFieldId;
    for (const kiv::FieldDescription& field : kiv::DescriptionOf(id).fields) {
        if (field.name == name) return GetDlgItem(PageWindow(), number);
        ++number;
    }
    ADD_FAILURE() << "no such field";
    return nullptr;
}

std::wstring PageFixture::TextOf(const char16_t* name) const {
    wchar_t text[512] = L"";
    SendMessageW(Field(name), WM_GETTEXT, 512, reinterpret_cast<LPARAM>(text));
    return text;
}

void PageFixture::Type(const char16_t* name, const wchar_t* text) const {
    const HWND box = Field(name);
    SetFocus(box);
    EXPECT_EQ(box, GetFocus());
    // What was there is selected already: the first character takes its place.
    if (!*text) SendMessageW(box, WM_CHAR, VK_BACK, 0);
    for (const wchar_t* letter = text; *letter; ++letter) SendMessageW(box, WM_CHAR, *letter, 0);
}

void PageFixture::Click(const char16_t* name) const {
    const HWND button = Field(name);
    SendMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(4, 4));
    SendMessageW(button, WM_LBUTTONUP, 0, MAKELPARAM(4, 4));
}

void PageFixture::Pick(const char16_t* name, int index) const {
    const HWND list = Field(name);
    SetFocus(list);
    SendMessageW(list, WM_KEYDOWN, VK_HOME, 0);
    for (int i = 0; i < index; ++i) SendMessageW(list, WM_KEYDOWN, VK_DOWN, 0);
    EXPECT_EQ(index, Selected(name));
}

bool PageFixture::Key(WPARAM key, UINT message) const {
    MSG sent{};
    sent.hwnd = GetFocus();
    sent.message = message;
    sent.wParam = key;
    return page->TranslateAccelerator(&sent) == S_OK;
}

}  // namespace component
