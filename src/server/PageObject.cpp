#include "server/PageObject.h"

#include <algorithm>
#include <string>
#include <utility>

#include "comkit/Bstr.h"
#include "comkit/Errors.h"
#include "server/Boundary.h"
#include "server/EditedDispatch.h"
#include "server/TaskMemory.h"
#include "win32/LateBoundServices.h"

namespace kiv::server {

namespace {

/// The name of a member of an object's own interface; empty where the object tells none.
std::u16string MemberName(IUnknown* object, DISPID member) {
    const auto dispatch = comkit::ComPtr<IDispatch>::From(object);
    comkit::ComPtr<ITypeInfo> type;
    comkit::Bstr name;
    UINT count = 0;
    if (!dispatch || FAILED(dispatch->GetTypeInfo(0, LOCALE_USER_DEFAULT, type.Put())) ||
        FAILED(type->GetNames(member, name.Put(), 1, &count)))
        return {};
    return std::u16string(name.View());
}

}  // namespace

PageObject::PageObject(const PageClass& pageClass)
    : m_services(&win32::FindLateBoundServices), m_pPage(MakePage(pageClass.page, {*this, m_services})) {}

PageObject::~PageObject() = default;

void* PageObject::FindInterface(REFIID iid) noexcept {
    return IsEqualIID(iid, IID_IPropertyPage) ? static_cast<IPropertyPage2*>(this) : nullptr;
}

HRESULT PageObject::SetPageSite(IPropertyPageSite* site) {
    m_pSite = comkit::ComPtr<IPropertyPageSite>(site);
    return S_OK;
}

HRESULT PageObject::Activate(HWND parent, LPCRECT place, BOOL) {
    if (!place) return E_POINTER;
    if (!IsWindow(parent)) return E_INVALIDARG;
    if (m_pWindow) return E_UNEXPECTED;
    return AtBoundaryOf(*Identity(), [&] {
        m_pWindow = std::make_unique<PageWindow>(*m_pPage, *Identity(), parent);
        m_pWindow->Move(*place);
        if (const PageField* field = std::exchange(m_pFocusLater, nullptr)) m_pWindow->FocusField(*field);
    });
}

HRESULT PageObject::Deactivate() {
    if (!m_pWindow) return E_UNEXPECTED;
    // Out of reach first: what the window tells when it goes may come back here.
    const auto window = std::move(m_pWindow);
    return S_OK;
}

HRESULT PageObject::GetPageInfo(PROPPAGEINFO* info) {
    if (!info) return E_POINTER;
    *info = {};
    info->cb = sizeof(*info);
    return AtBoundary([&] {
        info->size = PageWindow::NormalSize();
        info->pszTitle = TaskString(comkit::ToWide(m_pPage->Description().caption));
    });
}

HRESULT PageObject::SetObjects(ULONG count, LPUNKNOWN* objects) {
    if (count > 0 && !objects) return E_POINTER;
    return AtBoundaryOf(*Identity(), [&] {
        if (count == 0) {
            m_pFirst.Reset();
            m_pPage->ForgetObjects();
            return;
        }
        m_pFirst = comkit::ComPtr<IUnknown>(objects[0]);
        EditedObjects edited;
        for (ULONG i = 0; i < count; ++i) edited.push_back(std::make_shared<EditedDispatch>(objects[i]));
        m_pPage->SetObjects(std::move(edited));
    });
}

HRESULT PageObject::Show(UINT command) {
    if (!m_pWindow) return E_UNEXPECTED;
    if (command != SW_SHOW && command != SW_SHOWNORMAL && command != SW_HIDE) return E_INVALIDARG;
    ShowWindow(m_pWindow->Handle(), static_cast<int>(command));
    return S_OK;
}

HRESULT PageObject::Move(LPCRECT place) {
    if (!place) return E_POINTER;
    if (!m_pWindow) return E_UNEXPECTED;
    m_pWindow->Move(*place);
    return S_OK;
}

HRESULT PageObject::IsPageDirty() {
    return m_pPage->IsDirty() ? S_OK : S_FALSE;
}

HRESULT PageObject::Apply() {
    return AtBoundaryOf(*Identity(), [&] { m_pPage->Apply(); });
}

HRESULT PageObject::Help(LPCOLESTR) {
    return E_NOTIMPL;
}

HRESULT PageObject::TranslateAccelerator(MSG* message) {
    if (!message) return E_POINTER;
    if (!m_pWindow) return E_UNEXPECTED;
    return AtBoundaryOf(*Identity(), [&]() -> HRESULT {
        if (m_pWindow->TranslateKey(*message)) return S_OK;
        const auto site = m_pSite;
        return site ? site->TranslateAccelerator(message) : S_FALSE;
    });
}

const PageField* PageObject::FieldOf(DISPID property) const {
    const std::u16string name = MemberName(m_pFirst.Get(), property);
    if (name.empty()) return nullptr;
    const auto& fields = std::as_const(*m_pPage).Fields();
    const auto found =
        std::ranges::find_if(fields, [&](const PageField& field) { return field.Description().property == name; });
    return found == fields.end() ? nullptr : &*found;
}

HRESULT PageObject::EditProperty(DISPID property) {
    return AtBoundaryOf(*Identity(), [&]() -> HRESULT {
        const PageField* const field = FieldOf(property);
        if (!field) return E_INVALIDARG;
        FocusField(*field);
        return S_OK;
    });
}

HRESULT PageObject::InterfaceSupportsErrorInfo(REFIID iid) {
    return IsEqualIID(iid, IID_IPropertyPage) || IsEqualIID(iid, IID_IPropertyPage2) ? S_OK : S_FALSE;
}

void PageObject::ShowField(const PageField& field) {
    if (m_pWindow) m_pWindow->ShowField(field);
}

void PageObject::FocusField(const PageField& field) {
    if (m_pWindow) {
        m_pWindow->FocusField(field);
    } else {
        m_pFocusLater = &field;
    }
}

void PageObject::ShowWarning(std::u16string_view message, std::u16string_view title) {
    const HWND owner = m_pWindow ? GetAncestor(m_pWindow->Handle(), GA_ROOT) : nullptr;
    MessageBoxW(owner, std::wstring(comkit::ToWide(message)).c_str(), std::wstring(comkit::ToWide(title)).c_str(),
                MB_OK | MB_ICONEXCLAMATION);
}

void PageObject::OnChangedFlag(bool changed) {
    if (const auto site = m_pSite) site->OnStatusChange(changed ? PROPPAGESTATUS_DIRTY : PROPPAGESTATUS_CLEAN);
}

}  // namespace kiv::server
