#include "screenhost/Extender.h"

#include <algorithm>
#include <string_view>

#include "comkit/Errors.h"
#include "screenhost/WideText.h"

namespace screenhost {

namespace {

// The range that is set aside for extended controls, so that no member of a control is hidden by accident.
constexpr DISPID FirstId = static_cast<DISPID>(0x80010000);

enum Member : DISPID { Name, Left, Top, Width, Height, Visible, Object };

constexpr std::wstring_view MemberNames[] = {L"Name", L"Left", L"Top", L"Width", L"Height", L"Visible", L"Object"};

bool IsMember(DISPID id) noexcept {
    return id >= FirstId && id <= FirstId + Object;
}

}  // namespace

HRESULT Extender::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT Extender::GetTypeInfo(UINT, LCID, ITypeInfo** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    return DISP_E_BADINDEX;
}

HRESULT Extender::GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID lcid, DISPID* ids) {
    if (!names || !ids || count == 0) return E_INVALIDARG;
    if (!m_owner) return E_UNEXPECTED;
    for (DISPID member = 0; member <= Object && count == 1; ++member) {
        const std::wstring_view name = MemberNames[member];
        if (CompareStringOrdinal(name.data(), static_cast<int>(name.size()), names[0], -1, TRUE) != CSTR_EQUAL)
            continue;
        ids[0] = FirstId + member;
        return S_OK;
    }
    IDispatch* const control = m_owner->ControlDispatch();
    return control ? control->GetIDsOfNames(iid, names, count, lcid, ids) : DISP_E_UNKNOWNNAME;
}

HRESULT Extender::Invoke(DISPID id, REFIID iid, LCID lcid, WORD flags, DISPPARAMS* params, VARIANT* result,
                         EXCEPINFO* exception, UINT* argument) {
    if (!m_owner) return E_UNEXPECTED;
    if (!IsMember(id)) {
        const comkit::ComPtr<IDispatch> control(m_owner->ControlDispatch());
        return control ? control->Invoke(id, iid, lcid, flags, params, result, exception, argument)
                       : DISP_E_MEMBERNOTFOUND;
    }
    return comkit::Guarded([&] {
        if (flags & DISPATCH_PROPERTYGET) {
            comkit::Variant value = Get(id - FirstId);
            if (result) *result = value.Detach();
            return S_OK;
        }
        if (!(flags & DISPATCH_PROPERTYPUT)) return DISP_E_MEMBERNOTFOUND;
        if (!params || params->cArgs != 1) return DISP_E_BADPARAMCOUNT;
        Put(id - FirstId, params->rgvarg[0]);
        return S_OK;
    });
}

comkit::Variant Extender::Get(DISPID id) const {
    switch (id) {
        case Name:
            return Wide(m_owner->Name()).c_str();
        case Visible:
            return m_owner->IsVisible();
        case Object:
            return m_owner->ControlDispatch();
        default:
            return m_owner->GetPlace(static_cast<std::size_t>(id - Left));
    }
}

void Extender::Put(DISPID id, const VARIANT& value) {
    if (id == Name || id == Object) throw comkit::ComError(DISP_E_MEMBERNOTFOUND);
    comkit::Variant converted;
    // The system's declaration lacks a const.
    comkit::ThrowIfFailed(VariantChangeType(converted.Put(), const_cast<VARIANT*>(&value), 0,
                                            static_cast<VARTYPE>(id == Visible ? VT_BOOL : VT_R8)));
    if (id == Visible)
        m_owner->SetVisible(converted.Get().boolVal != VARIANT_FALSE);
    else
        m_owner->SetPlace(static_cast<std::size_t>(id - Left), converted.Get().dblVal);
}

}  // namespace screenhost
