#include "server/VexaSupportPart.h"

#include "comkit/Bstr.h"
#include "server/Boundary.h"
#include "server/Module.h"
#include "win32/FrameworkObjects.h"

namespace kiv::server {

namespace {

HRESULT HandFlag(VARIANT_BOOL* out, bool flag) noexcept {
    if (!out) return E_POINTER;
    *out = flag ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

}  // namespace

VexaSupportPart::VexaSupportPart(ControlHost& host, VexaSupport& control)
    : ComPart(host.Identity()), m_host(host), m_control(control), m_pInfo(Module::Dispatch(__uuidof(IVexaSupport))) {}

template <class Answer>
HRESULT VexaSupportPart::HandObject(IDispatch** out, Answer answer) {
    if (!out) return E_POINTER;
    *out = nullptr;
    return AtBoundaryOf(Owner(), [&] {
        // A container that loads nothing gets a control with its defaults, and what comes with them.
        m_host.EnsureInitialized();
        *out = win32::DispatchOf(answer()).Detach();
    });
}

HRESULT VexaSupportPart::GetTypeInfoCount(UINT* out) {
    if (!out) return E_POINTER;
    *out = 1;
    return S_OK;
}

HRESULT VexaSupportPart::GetTypeInfo(UINT index, LCID, ITypeInfo** out) {
    return m_pInfo->GetTypeInfo(index, out);
}

HRESULT VexaSupportPart::GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (!names || !ids) return E_POINTER;
    if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
    return m_pInfo->GetIDsOfNames(names, count, ids);
}

HRESULT VexaSupportPart::Invoke(DISPID id, REFIID iid, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                                EXCEPINFO* info, UINT* argument) {
    if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
    if (!params) return E_POINTER;
    return AtBoundaryOf(Owner(), [&] {
        return m_pInfo->Invoke(static_cast<IVexaSupport*>(this), id, flags, *params, result, info, argument);
    });
}

HRESULT VexaSupportPart::VexaShowDefault(LONG, BSTR, VARIANT_BOOL* out) {
    return HandFlag(out, VexaSupport::VexaShowDefault());
}

HRESULT VexaSupportPart::VexaShowInvalid(LONG, BSTR, VARIANT_BOOL* out) {
    return HandFlag(out, VexaSupport::VexaShowInvalid());
}

HRESULT VexaSupportPart::VexaShowOffline(LONG, BSTR, VARIANT_BOOL* out) {
    return HandFlag(out, VexaSupport::VexaShowOffline());
}

HRESULT VexaSupportPart::get_SupportsVexaDataDef(VARIANT_BOOL* out) {
    return HandFlag(out, VexaSupport::SupportsVexaDataDef());
}

HRESULT VexaSupportPart::get_SupportsVexaHelpDef(VARIANT_BOOL* out) {
    return HandFlag(out, VexaSupport::SupportsVexaHelpDef());
}

HRESULT VexaSupportPart::get_SupportsVexaUIDef(VARIANT_BOOL* out) {
    return HandFlag(out, VexaSupport::SupportsVexaUIDef());
}

HRESULT VexaSupportPart::get_SupportsVexaLibUIControl(VARIANT_BOOL* out) {
    return HandFlag(out, VexaSupport::SupportsVexaLibUIControl());
}

HRESULT VexaSupportPart::get_VexaDataObject(IDispatch** out) {
    return HandObject(out, [] { return VexaSupport::VexaDataObject(); });
}

HRESULT VexaSupportPart::get_VexaHelpObject(IDispatch** out) {
    return HandObject(out, [this] { return m_control.VexaHelpObject(); });
}

HRESULT VexaSupportPart::get_VexaUIObject(IDispatch** out) {
    return HandObject(out, [] { return VexaSupport::VexaUIObject(); });
}

HRESULT VexaSupportPart::get_VexaLibUIControl(IDispatch** out) {
    return HandObject(out, [] { return VexaSupport::VexaLibUIControl(); });
}

HRESULT VexaSupportPart::get_VexaIsDataElement(VARIANT_BOOL* out) {
    return HandFlag(out, VexaSupport::VexaIsDataElement());
}

HRESULT VexaSupportPart::get_VexaDescription(BSTR* out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    return AtBoundary([&] { *out = comkit::Bstr(m_control.VexaDescription()).Detach(); });
}

HRESULT VexaSupportPart::get_VexaHasSubElements(VARIANT_BOOL* out) {
    return HandFlag(out, VexaSupport::VexaHasSubElements());
}

HRESULT VexaSupportPart::get_VexaSubElements(IDispatch** out) {
    return HandObject(out, [this] { return m_control.VexaSubElements(); });
}

HRESULT VexaSupportPart::VexaValidate(LONG, VARIANT_BOOL* out) {
    return HandFlag(out, VexaSupport::VexaValidate());
}

HRESULT VexaSupportPart::VexaSetControlFocus() {
    return AtBoundaryOf(Owner(), [&] {
        m_host.EnsureInitialized();
        m_control.VexaSetControlFocus();
    });
}

}  // namespace kiv::server
