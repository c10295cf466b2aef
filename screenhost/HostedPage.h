// One property page: the page object, its site, and its way from being made to being let go.
//
// A page is told its site and its objects before it is shown for the first time, keeps its window until it is closed,
// and is let go in the opposite order. It may keep the site longer, and finds it closed then.
#pragma once

#include <ocidl.h>
#include <olectl.h>

#include <string>
#include <vector>

#include "comkit/ComObject.h"

namespace screenhost {

class HostedPage;

/// The frame as a page sees it.
class PageOwner {
public:
    /// flags: PROPPAGESTATUS_...; called from inside of the page.
    virtual void OnPageStatus(HostedPage& page, DWORD flags) = 0;
    /// A key that the page has no use for. True: dealt with.
    virtual bool OnPageKey(MSG& message) = 0;

protected:
    ~PageOwner() = default;
};

class PageSite final : public comkit::ComObject<PageSite, IPropertyPageSite> {
public:
    PageSite(PageOwner& owner, HostedPage& page) noexcept : m_owner(&owner), m_page(&page) {}
    void Detach() noexcept { m_owner = nullptr; }

    HRESULT STDMETHODCALLTYPE OnStatusChange(DWORD flags) override;
    HRESULT STDMETHODCALLTYPE GetLocaleID(LCID* out) override;
    HRESULT STDMETHODCALLTYPE GetPageContainer(IUnknown** out) override;
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message) override;

private:
    PageOwner* m_owner;
    HostedPage* m_page;
};

class HostedPage {
public:
    /// Throws comkit::ComError when the page refuses site or objects.
    HostedPage(comkit::ComPtr<IPropertyPage> page, PageOwner& owner,
               const std::vector<comkit::ComPtr<IUnknown>>& objects);
    HostedPage(const HostedPage&) = delete;
    HostedPage& operator=(const HostedPage&) = delete;
    ~HostedPage() { Close(); }

    const std::wstring& Title() const noexcept { return m_title; }
    /// What the page wants, in pixels.
    SIZE Size() const noexcept { return m_size; }

    /// Makes the page's window at first. Throws comkit::ComError.
    void Show(HWND parent, const RECT& place);
    void Hide() noexcept;
    bool IsDirty() const noexcept { return m_page->IsPageDirty() == S_OK; }
    /// Throws comkit::ComError with what the page says.
    void Apply();
    /// False when the page has no help.
    bool Help();
    /// The page's keys. True: dealt with.
    bool TranslateKey(MSG& message) noexcept { return m_page->TranslateAccelerator(&message) == S_OK; }

private:
    void Introduce(const std::vector<comkit::ComPtr<IUnknown>>& objects);
    void Close() noexcept;

    comkit::ComPtr<IPropertyPage> m_page;
    comkit::ComPtr<PageSite> m_site;
    std::wstring m_title;
    SIZE m_size{};
    bool m_bActive = false;
};

}  // namespace screenhost
