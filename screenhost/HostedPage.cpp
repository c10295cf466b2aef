#include "screenhost/HostedPage.h"

#include <memory>
#include <utility>

#include "comkit/Bstr.h"
#include "comkit/Errors.h"

namespace screenhost {

namespace {

struct FreeTaskMemory {
    void operator()(wchar_t* text) const noexcept { CoTaskMemFree(text); }
};
using TaskText = std::unique_ptr<wchar_t, FreeTaskMemory>;

/// The failure of a call with the words that the callee has left behind.
comkit::ComError FailureOf(HRESULT hr) {
    comkit::ComPtr<IErrorInfo> info;
    comkit::Bstr source;
    comkit::Bstr description;
    if (GetErrorInfo(0, info.Put()) == S_OK && info) {
        info->GetSource(source.Put());
        info->GetDescription(description.Put());
    }
    return comkit::ComError(hr, std::u16string(comkit::ViewOf(source.Get())),
                            std::u16string(comkit::ViewOf(description.Get())));
}

/// Calls a page, so that an older failure's words are not taken for this one's.
template <class Call>
void CallPage(Call&& call) {
    SetErrorInfo(0, nullptr);
    const HRESULT hr = call();
    if (FAILED(hr)) throw FailureOf(hr);
}

}  // namespace

HRESULT PageSite::OnStatusChange(DWORD flags) {
    if (!m_owner) return E_UNEXPECTED;
    return comkit::Guarded([&] { m_owner->OnPageStatus(*m_page, flags); });
}

HRESULT PageSite::GetLocaleID(LCID* out) {
    if (!out) return E_POINTER;
    *out = GetUserDefaultLCID();
    return S_OK;
}

HRESULT PageSite::GetPageContainer(IUnknown** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    return E_NOTIMPL;
}

HRESULT PageSite::TranslateAccelerator(MSG* message) {
    if (!message) return E_POINTER;
    if (!m_owner) return E_UNEXPECTED;
    const comkit::ComPtr<IPropertyPageSite> alive(this);  // a key may close the frame
    return comkit::Guarded([&] { return m_owner->OnPageKey(*message) ? S_OK : S_FALSE; });
}

HostedPage::HostedPage(comkit::ComPtr<IPropertyPage> page, PageOwner& owner,
                       const std::vector<comkit::ComPtr<IUnknown>>& objects)
    : m_page(std::move(page)), m_site(comkit::MakeObject<PageSite>(owner, *this)) {
    try {
        Introduce(objects);
    } catch (...) {
        Close();
        throw;
    }
}

void HostedPage::Introduce(const std::vector<comkit::ComPtr<IUnknown>>& objects) {
    CallPage([&] { return m_page->SetPageSite(m_site.Get()); });
    PROPPAGEINFO info{};
    info.cb = sizeof(info);
    CallPage([&] { return m_page->GetPageInfo(&info); });
    const TaskText title(info.pszTitle);
    const TaskText description(info.pszDocString);
    const TaskText helpFile(info.pszHelpFile);
    m_title = title ? title.get() : L"";
    m_size = info.size;
    std::vector<IUnknown*> list;
    list.reserve(objects.size());
    for (const auto& object : objects) list.push_back(object.Get());
    CallPage([&] { return m_page->SetObjects(static_cast<ULONG>(list.size()), list.data()); });
}

void HostedPage::Show(HWND parent, const RECT& place) {
    if (!m_bActive) {
        CallPage([&] { return m_page->Activate(parent, &place, FALSE); });
        m_bActive = true;
    } else {
        m_page->Move(&place);
    }
    CallPage([&] { return m_page->Show(SW_SHOW); });
}

void HostedPage::Hide() noexcept {
    if (m_bActive) m_page->Show(SW_HIDE);
}

void HostedPage::Apply() {
    CallPage([&] { return m_page->Apply(); });
}

bool HostedPage::Help() {
    return SUCCEEDED(m_page->Help(L""));
}

void HostedPage::Close() noexcept {
    m_site->Detach();
    if (std::exchange(m_bActive, false)) m_page->Deactivate();
    m_page->SetObjects(0, nullptr);
    m_page->SetPageSite(nullptr);
}

}  // namespace screenhost
