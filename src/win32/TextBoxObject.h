// A text box as the framework's services are given it: an automation object with Text, SelStart and SelLength.
//
// The box behind it belongs to a call; once that is over, Detach leaves an object whose every member fails.
#pragma once

#include <oaidl.h>

#include "comkit/ComObject.h"
#include "platform/UserServices.h"

namespace kiv::win32 {

class TextBoxObject final : public comkit::ComObject<TextBoxObject, IDispatch> {
public:
    explicit TextBoxObject(TextSelection& box) noexcept : m_pBox(&box) {}
    void Detach() noexcept { m_pBox = nullptr; }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** out) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* argument) override;

private:
    HRESULT Get(DISPID id, VARIANT& result) const;
    HRESULT Put(DISPID id, const VARIANT& value);

    TextSelection* m_pBox;
};

}  // namespace kiv::win32
