#include "server/AccessPart.h"

#include "server/AccessibleWindowlessSite.h"
#include "server/Boundary.h"

namespace kiv::server {

template <class... Parameters, class... Arguments>
HRESULT AccessPart::PassOn(HRESULT (STDMETHODCALLTYPE IAccessible::*method)(Parameters...),
                           Arguments... arguments) const {
    return AtBoundaryOf(Owner(), [&] { return (m_surface.Access().Get()->*method)(arguments...); });
}

HRESULT AccessPart::get_accParent(IDispatch** out) {
    if (!out) return E_INVALIDARG;
    *out = nullptr;
    return AtBoundaryOf(Owner(), [&] {
        const auto site = m_host.ContainerSite().As<IAccessibleWindowlessSite>();
        comkit::ComPtr<IAccessible> parent;
        if (site && m_surface.WindowlessPlace() && SUCCEEDED(site->GetParentAccessible(parent.Put())) && parent)
            return parent->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(out));
        return m_surface.Access()->get_accParent(out);
    });
}
HRESULT AccessPart::get_accChildCount(long* out) {
    return PassOn(&IAccessible::get_accChildCount, out);
}
HRESULT AccessPart::get_accChild(VARIANT child, IDispatch** out) {
    return PassOn(&IAccessible::get_accChild, child, out);
}
HRESULT AccessPart::get_accName(VARIANT child, BSTR* out) {
    return PassOn(&IAccessible::get_accName, child, out);
}
HRESULT AccessPart::get_accValue(VARIANT child, BSTR* out) {
    return PassOn(&IAccessible::get_accValue, child, out);
}
HRESULT AccessPart::get_accDescription(VARIANT child, BSTR* out) {
    return PassOn(&IAccessible::get_accDescription, child, out);
}
HRESULT AccessPart::get_accRole(VARIANT child, VARIANT* out) {
    return PassOn(&IAccessible::get_accRole, child, out);
}
HRESULT AccessPart::get_accState(VARIANT child, VARIANT* out) {
    return PassOn(&IAccessible::get_accState, child, out);
}
HRESULT AccessPart::get_accHelp(VARIANT child, BSTR* out) {
    return PassOn(&IAccessible::get_accHelp, child, out);
}
HRESULT AccessPart::get_accHelpTopic(BSTR* file, VARIANT child, long* topic) {
    return PassOn(&IAccessible::get_accHelpTopic, file, child, topic);
}
HRESULT AccessPart::get_accKeyboardShortcut(VARIANT child, BSTR* out) {
    return PassOn(&IAccessible::get_accKeyboardShortcut, child, out);
}
HRESULT AccessPart::get_accFocus(VARIANT* out) {
    return PassOn(&IAccessible::get_accFocus, out);
}
HRESULT AccessPart::get_accSelection(VARIANT* out) {
    return PassOn(&IAccessible::get_accSelection, out);
}
HRESULT AccessPart::get_accDefaultAction(VARIANT child, BSTR* out) {
    return PassOn(&IAccessible::get_accDefaultAction, child, out);
}
HRESULT AccessPart::accSelect(long flags, VARIANT child) {
    return PassOn(&IAccessible::accSelect, flags, child);
}
HRESULT AccessPart::accLocation(long* left, long* top, long* width, long* height, VARIANT child) {
    return PassOn(&IAccessible::accLocation, left, top, width, height, child);
}
HRESULT AccessPart::accNavigate(long direction, VARIANT start, VARIANT* out) {
    return PassOn(&IAccessible::accNavigate, direction, start, out);
}
HRESULT AccessPart::accHitTest(long x, long y, VARIANT* out) {
    return PassOn(&IAccessible::accHitTest, x, y, out);
}
HRESULT AccessPart::accDoDefaultAction(VARIANT child) {
    return PassOn(&IAccessible::accDoDefaultAction, child);
}
HRESULT AccessPart::put_accName(VARIANT child, BSTR name) {
    return PassOn(&IAccessible::put_accName, child, name);
}
HRESULT AccessPart::put_accValue(VARIANT child, BSTR value) {
    return PassOn(&IAccessible::put_accValue, child, value);
}

HRESULT AccessPart::GetTypeInfoCount(UINT* out) {
    return AtBoundaryOf(Owner(), [&] { return m_surface.Access()->GetTypeInfoCount(out); });
}
HRESULT AccessPart::GetTypeInfo(UINT index, LCID locale, ITypeInfo** out) {
    return AtBoundaryOf(Owner(), [&] { return m_surface.Access()->GetTypeInfo(index, locale, out); });
}
HRESULT AccessPart::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) {
    return AtBoundaryOf(Owner(),
                        [&] { return m_surface.Access()->GetIDsOfNames(IID_NULL, names, count, locale, ids); });
}
HRESULT AccessPart::Invoke(DISPID member, REFIID, LCID locale, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                           EXCEPINFO* exception, UINT* argument) {
    return AtBoundaryOf(Owner(), [&] {
        return m_surface.Access()->Invoke(member, IID_NULL, locale, flags, arguments, result, exception, argument);
    });
}

HRESULT AccessPart::QueryService(REFGUID service, REFIID iid, void** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (!IsEqualGUID(service, IID_IAccessible)) return E_NOINTERFACE;
    return Owner().QueryInterface(iid, out);
}

}  // namespace kiv::server
