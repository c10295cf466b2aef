// A property page as a property frame knows it. One class for all of them: what a page is made of, it takes from the
// page's description.
//
// Fields keep their state while the page has no window: what was edited is still there when a frame activates the page
// again.
#pragma once

#include <ocidl.h>

#include <memory>
#include <optional>

#include "comkit/ComObject.h"
#include "comkit/ComPtr.h"
#include "pages/Pages.h"
#include "pages/SharedServices.h"
#include "server/PageClasses.h"
#include "server/PageWindow.h"

namespace kiv::server {

class PageObject final : public comkit::ComObject<PageObject, IPropertyPage2, ISupportErrorInfo>, private PageView {
public:
    explicit PageObject(const PageClass& pageClass);
    ~PageObject() override;

    void* FindInterface(REFIID iid) noexcept;

    // IPropertyPage2
    HRESULT STDMETHODCALLTYPE SetPageSite(IPropertyPageSite* site) override;
    HRESULT STDMETHODCALLTYPE Activate(HWND parent, LPCRECT place, BOOL modal) override;
    HRESULT STDMETHODCALLTYPE Deactivate() override;
    HRESULT STDMETHODCALLTYPE GetPageInfo(PROPPAGEINFO* info) override;
    HRESULT STDMETHODCALLTYPE SetObjects(ULONG count, LPUNKNOWN* objects) override;
    HRESULT STDMETHODCALLTYPE Show(UINT command) override;
    HRESULT STDMETHODCALLTYPE Move(LPCRECT place) override;
    HRESULT STDMETHODCALLTYPE IsPageDirty() override;
    /// The error of a value that the page does not put up with; the page then stays dirty.
    HRESULT STDMETHODCALLTYPE Apply() override;
    /// There is none.
    HRESULT STDMETHODCALLTYPE Help(LPCOLESTR folder) override;
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message) override;
    /// The field of a property of the first selected control gets the focus, at once or with the next activation.
    HRESULT STDMETHODCALLTYPE EditProperty(DISPID property) override;
    // ISupportErrorInfo
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override;

private:
    // PageView
    void ShowField(const PageField& field) override;
    void FocusField(const PageField& field) override;
    void ShowWarning(std::u16string_view message, std::u16string_view title) override;
    void OnChangedFlag(bool changed) override;

    const PageField* FieldOf(DISPID property) const;

    SharedServices m_services;
    std::unique_ptr<PropertyPage> m_pPage;
    std::unique_ptr<PageWindow> m_pWindow;
    comkit::ComPtr<IPropertyPageSite> m_pSite;
    comkit::ComPtr<IUnknown> m_pFirst;         ///< the first selected control
    const PageField* m_pFocusLater = nullptr;  ///< for when there is a window
};

}  // namespace kiv::server
