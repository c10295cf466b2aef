#include "server/VexaSupportPart.h"

#include "comkit/Bstr.h"
#include "win32/FrameworkObjects.h"

namespace kiv::server {

namespace {

HRESULT HandFlag(VARIANT_BOOL* out, bool flag) noexcept {
    if (!out) return E_POINTER;
    *out = flag ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

}  // namespace

template <class Answer>
HRESULT VexaSupportPart::HandObject(IDispatch** out, Answer answer) {
    if (!out) return E_POINTER;
    *out = nullptr;
    return AtBoundaryOf(Owner(), [&] {
        // A container that loads nothing gets a control with its defaults, and what comes with them.
        Host().EnsureInitialized();
        *out = win32::DispatchOf(answer()).Detach();
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
        Host().EnsureInitialized();
        m_control.VexaSetControlFocus();
    });
}

}  // namespace kiv::server
