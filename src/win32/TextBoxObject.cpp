#include "win32/TextBoxObject.h"

#include <algorithm>
#include <cwchar>

#include "comkit/Errors.h"
#include "comkit/Variant.h"
#include "win32/VariantConversion.h"

namespace kiv::win32 {

namespace {

constexpr const wchar_t* Names[] = {L"Text", L"SelStart", L"SelLength"};
enum : DISPID { IdText = 1, IdSelStart, IdSelLength };

comkit::Variant Count(std::size_t count) {
    return {static_cast<std::int32_t>(count)};
}

std::size_t CountOf(const VARIANT& value) {
    return static_cast<std::size_t>(std::max<std::int32_t>(NumberOf(value), 0));
}

}  // namespace

HRESULT TextBoxObject::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT TextBoxObject::GetTypeInfo(UINT, LCID, ITypeInfo** out) {
    if (out) *out = nullptr;
    return E_NOTIMPL;
}

HRESULT TextBoxObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (!names || !ids) return E_POINTER;
    std::fill_n(ids, count, DISPID_UNKNOWN);
    for (DISPID id = IdText; count > 0 && id <= IdSelLength; ++id)
        if (_wcsicmp(names[0], Names[id - IdText]) == 0) ids[0] = id;
    return count == 1 && ids[0] != DISPID_UNKNOWN ? S_OK : DISP_E_UNKNOWNNAME;
}

HRESULT TextBoxObject::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO*,
                              UINT*) {
    if (!parameters) return E_POINTER;
    if (!m_pBox) return E_UNEXPECTED;
    return comkit::Guarded([&] {
        if (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF))
            return parameters->cArgs == 1 ? Put(id, parameters->rgvarg[0]) : DISP_E_BADPARAMCOUNT;
        if (parameters->cArgs != 0) return DISP_E_BADPARAMCOUNT;
        comkit::Variant unused;
        return Get(id, result ? *result : unused.Get());
    });
}

HRESULT TextBoxObject::Get(DISPID id, VARIANT& result) const {
    switch (id) {
        case IdText:
            result = comkit::Variant(m_pBox->Text()).Detach();
            return S_OK;
        case IdSelStart:
            result = Count(m_pBox->SelStart()).Detach();
            return S_OK;
        case IdSelLength:
            result = Count(m_pBox->SelLength()).Detach();
            return S_OK;
        default:
            return DISP_E_MEMBERNOTFOUND;
    }
}

HRESULT TextBoxObject::Put(DISPID id, const VARIANT& value) {
    switch (id) {
        case IdSelStart:
            m_pBox->SetSelStart(CountOf(value));
            return S_OK;
        case IdSelLength:
            m_pBox->SetSelLength(CountOf(value));
            return S_OK;
        default:
            return DISP_E_MEMBERNOTFOUND;  // nobody but the user changes the text
    }
}

}  // namespace kiv::win32
