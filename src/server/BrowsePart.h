// IPerPropertyBrowsing and ISpecifyPropertyPages: what a designer's property list shows and which pages it opens.
//
// Enumerations are shown as the type library names their values ("1 - sdtSetDateOnly"). The control's own pages come
// first; colours and the font have the system's stock pages.
#pragma once

#include <ocidl.h>

#include "comkit/ComObject.h"
#include "server/ControlCore.h"

namespace kiv::server {

class BrowsePart final : public comkit::ComPart<IPerPropertyBrowsing, ISpecifyPropertyPages> {
public:
    BrowsePart(IUnknown& owner, const ControlClass& controlClass) noexcept : ComPart(owner), m_class(controlClass) {}

    // IPerPropertyBrowsing
    /// S_FALSE, and no text, where the value is its own text.
    HRESULT STDMETHODCALLTYPE GetDisplayString(DISPID property, BSTR* out) override;
    HRESULT STDMETHODCALLTYPE MapPropertyToPage(DISPID property, CLSID* out) override;
    /// S_FALSE, and empty lists, where a property takes more than a few values.
    HRESULT STDMETHODCALLTYPE GetPredefinedStrings(DISPID property, CALPOLESTR* texts, CADWORD* cookies) override;
    HRESULT STDMETHODCALLTYPE GetPredefinedValue(DISPID property, DWORD cookie, VARIANT* out) override;
    // ISpecifyPropertyPages
    HRESULT STDMETHODCALLTYPE GetPages(CAUUID* out) override;

private:
    const ControlClass& m_class;
};

}  // namespace kiv::server
