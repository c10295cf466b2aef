// IAccessible of a control that is drawn: a container in whose window the control lives asks the control itself what it
// is to an accessibility client, directly or as a service. Calls go on to what the control's surface answers for its
// labels; what it lies in, the container is asked where it can tell.
#pragma once

#include <windows.h>

#include <oleacc.h>
#include <servprov.h>

#include "comkit/ComObject.h"
#include "server/ControlCore.h"
#include "win32/LabelSurface.h"

namespace kiv::server {

class AccessPart final : public comkit::ComPart<IAccessible, IServiceProvider> {
public:
    AccessPart(ControlHost& host, const win32::LabelSurface& surface) noexcept
        : ComPart(host.Identity()), m_host(host), m_surface(surface) {}

    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** out) override;
    HRESULT STDMETHODCALLTYPE get_accChildCount(long* out) override;
    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** out) override;
    HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* out) override;
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* out) override;
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* out) override;
    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* out) override;
    HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* out) override;
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT child, BSTR* out) override;
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT child, long* topic) override;
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR* out) override;
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* out) override;
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* out) override;
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* out) override;
    HRESULT STDMETHODCALLTYPE accSelect(long flags, VARIANT child) override;
    HRESULT STDMETHODCALLTYPE accLocation(long* left, long* top, long* width, long* height, VARIANT child) override;
    HRESULT STDMETHODCALLTYPE accNavigate(long direction, VARIANT start, VARIANT* out) override;
    HRESULT STDMETHODCALLTYPE accHitTest(long x, long y, VARIANT* out) override;
    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override;
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT child, BSTR name) override;
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT child, BSTR value) override;

    // IDispatch
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* out) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** out) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID iid, LCID locale, WORD flags, DISPPARAMS* arguments,
                                     VARIANT* result, EXCEPINFO* exception, UINT* argument) override;

    // IServiceProvider
    HRESULT STDMETHODCALLTYPE QueryService(REFGUID service, REFIID iid, void** out) override;

private:
    template <class... Parameters, class... Arguments>
    HRESULT PassOn(HRESULT (STDMETHODCALLTYPE IAccessible::*method)(Parameters...), Arguments... arguments) const;

    ControlHost& m_host;
    const win32::LabelSurface& m_surface;
};

}  // namespace kiv::server
