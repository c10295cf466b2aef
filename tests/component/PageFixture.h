// Property pages in a window, with a recording site, driven by window messages as a user drives them.
#pragma once

#include <gtest/gtest.h>
#include <ocidl.h>

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "comkit/ComObject.h"
#include "comkit/Handle.h"
#include "ControlFixture.h"
#include "pages/Pages.h"

namespace component {

/// The frame's end of a page.
class PageSite final : public comkit::ComObject<PageSite, IPropertyPageSite> {
public:
    std::vector<DWORD> statuses;
    std::vector<UINT> keys;  ///< that the page had no use for
    std::function<void()> onStatus;

    HRESULT STDMETHODCALLTYPE OnStatusChange(DWORD status) override {
        statuses.push_back(status);
        if (onStatus) onStatus();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetLocaleID(LCID* out) override {
        *out = LOCALE_USER_DEFAULT;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetPageContainer(IUnknown** out) override {
        *out = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message) override {
        keys.push_back(static_cast<UINT>(message->wParam));
        return S_FALSE;
    }
};

/// A control in a designer.
struct DesignedControl {
    explicit DesignedControl(const TestedClass& which);
    ~DesignedControl();
    DesignedControl(const DesignedControl&) = delete;
    DesignedControl& operator=(const DesignedControl&) = delete;

    std::wstring Text(const wchar_t* name) const { return component::Text(comkit::Call(*members, name).Get()); }
    std::wstring Text(const wchar_t* name, std::int32_t index) const {
        return component::Text(comkit::Call(*members, name, index).Get());
    }
    template <class... Args>
    void Put(const wchar_t* name, const Args&... args) const {
        comkit::Put(*members, name, args...);
    }

    comkit::ComPtr<RecordingSite> site;
    comkit::ComPtr<IUnknown> object;
    comkit::ComPtr<IDispatch> members;
};

/// Made by the server; null where there is no such page.
comkit::ComPtr<IPropertyPage2> MakePage(REFCLSID clsid);
CLSID ClassOfPage(kiv::PageId page);

class PageFixture : public testing::Test {
protected:
    PageFixture();
    ~PageFixture() override;

    /// A new page over these objects, active and visible, where a frame would have it.
    void Open(kiv::PageId which, std::initializer_list<IUnknown*> objects);
    void Select(std::initializer_list<IUnknown*> objects);
    void Close();

    HWND PageWindow() const { return GetWindow(frame.Get(), GW_CHILD); }
    /// By the name that the page's description gives the field.
    HWND Field(const char16_t* name) const;
    std::wstring TextOf(const char16_t* name) const;
    bool IsChecked(const char16_t* name) const { return SendMessageW(Field(name), BM_GETCHECK, 0, 0) == BST_CHECKED; }
    int Selected(const char16_t* name) const { return static_cast<int>(SendMessageW(Field(name), CB_GETCURSEL, 0, 0)); }
    bool IsEnabled(const char16_t* name) const { return IsWindowEnabled(Field(name)) != FALSE; }

    // What a user does.
    void Type(const char16_t* name, const wchar_t* text) const;
    void Click(const char16_t* name) const;
    void Pick(const char16_t* name, int index) const;
    /// As a frame's message loop sends a key; true where the page took it.
    bool Key(WPARAM key, UINT message = WM_KEYDOWN) const;

    bool IsDirty() const { return page->IsPageDirty() == S_OK; }

    kiv::PageId id{};
    comkit::ComPtr<PageSite> site;
    comkit::ComPtr<IPropertyPage2> page;
    comkit::UniqueWindow frame;
    DesignedControl set{SetClass}, otherSet{SetClass};
    DesignedControl show{ShowClass}, otherShow{ShowClass};
};

}  // namespace component
