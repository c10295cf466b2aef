// IVexaSupport, for both controls: the control's answers as a dual interface. Its dispatch methods speak of its own
// members; whoever queries for IDispatch gets the control's.
#pragma once

#include <Vexa.h>

#include "common/VexaSupport.h"
#include "server/DualPart.h"

namespace kiv::server {

class VexaSupportPart final : public DualPart<IVexaSupport> {
public:
    VexaSupportPart(ControlHost& host, VexaSupport& control) : DualPart(host), m_control(control) {}

    // IVexaSupport
    HRESULT STDMETHODCALLTYPE VexaShowDefault(LONG, BSTR, VARIANT_BOOL* out) override;
    HRESULT STDMETHODCALLTYPE VexaShowInvalid(LONG, BSTR, VARIANT_BOOL* out) override;
    HRESULT STDMETHODCALLTYPE VexaShowOffline(LONG, BSTR, VARIANT_BOOL* out) override;
    HRESULT STDMETHODCALLTYPE get_SupportsVexaDataDef(VARIANT_BOOL* out) override;
    HRESULT STDMETHODCALLTYPE get_SupportsVexaHelpDef(VARIANT_BOOL* out) override;
    HRESULT STDMETHODCALLTYPE get_SupportsVexaUIDef(VARIANT_BOOL* out) override;
    HRESULT STDMETHODCALLTYPE get_SupportsVexaLibUIControl(VARIANT_BOOL* out) override;
    HRESULT STDMETHODCALLTYPE get_VexaDataObject(IDispatch** out) override;
    HRESULT STDMETHODCALLTYPE get_VexaHelpObject(IDispatch** out) override;
    HRESULT STDMETHODCALLTYPE get_VexaUIObject(IDispatch** out) override;
    HRESULT STDMETHODCALLTYPE get_VexaLibUIControl(IDispatch** out) override;
    HRESULT STDMETHODCALLTYPE get_VexaIsDataElement(VARIANT_BOOL* out) override;
    HRESULT STDMETHODCALLTYPE get_VexaDescription(BSTR* out) override;
    HRESULT STDMETHODCALLTYPE get_VexaHasSubElements(VARIANT_BOOL* out) override;
    HRESULT STDMETHODCALLTYPE get_VexaSubElements(IDispatch** out) override;
    HRESULT STDMETHODCALLTYPE VexaValidate(LONG, VARIANT_BOOL* out) override;
    HRESULT STDMETHODCALLTYPE VexaSetControlFocus() override;

private:
    /// answer tells an object of the framework, or null.
    template <class Answer>
    HRESULT HandObject(IDispatch** out, Answer answer);

    VexaSupport& m_control;
};

}  // namespace kiv::server
