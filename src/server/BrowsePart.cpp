#include "server/BrowsePart.h"

#include <olectl.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "comkit/Bstr.h"
#include "comkit/DecimalText.h"
#include "comkit/Dispatch.h"
#include "comkit/Errors.h"
#include "comkit/Variant.h"
#include "pages/Pages.h"
#include "server/Boundary.h"
#include "server/Module.h"
#include "server/PageClasses.h"
#include "server/PropertyType.h"
#include "server/TaskMemory.h"

namespace kiv::server {

namespace {

using Kind = PropertyType::Kind;

std::wstring DisplayText(const PropertyType::NamedValue& entry) {
    return comkit::DecimalText(entry.value) + L" - " + entry.name;
}

LONG CurrentNumber(IUnknown& object, DISPID property) {
    const auto dispatch = comkit::ComPtr<IDispatch>::From(&object);
    const comkit::Variant value =
        comkit::InvokeWith(*dispatch, property, DISPATCH_PROPERTYGET, std::array<VARIANT, 0>{});
    comkit::Variant number;
    comkit::ThrowIfFailed(number.ConvertFrom(value.Get(), VT_I4));
    return number.Get().lVal;
}

std::u16string MemberName(ITypeInfo& type, DISPID member) {
    comkit::Bstr name;
    UINT count = 0;
    comkit::ThrowIfFailed(type.GetNames(member, name.Put(), 1, &count));
    return std::u16string(name.View());
}

/// The system's page for a kind of value; CLSID_NULL where it has none.
CLSID StockPage(Kind kind) noexcept {
    switch (kind) {
        case Kind::Color:
            return CLSID_CColorPropPage;
        case Kind::Font:
            return CLSID_CFontPropPage;
        default:
            return CLSID_NULL;
    }
}

}  // namespace

HRESULT BrowsePart::GetDisplayString(DISPID property, BSTR* out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    return AtBoundaryOf(Owner(), [&] {
        const PropertyType type = TypeOfProperty(*Module::TypeInfo(m_class.dualInterface), property);
        if (type.kind != Kind::Enumeration) return S_FALSE;
        LONG value = 0;
        try {
            value = CurrentNumber(Owner(), property);
        } catch (const comkit::ComError&) {
            return S_FALSE;  // one of several, by index: the list cannot tell which one it means
        }
        const PropertyType::NamedValue* entry = type.Find(value);
        if (!entry) return S_FALSE;
        *out = comkit::Bstr(DisplayText(*entry).c_str()).Detach();
        return S_OK;
    });
}

HRESULT BrowsePart::MapPropertyToPage(DISPID property, CLSID* out) {
    if (!out) return E_POINTER;
    *out = CLSID_NULL;
    return AtBoundary([&] {
        const auto type = Module::TypeInfo(m_class.dualInterface);
        const Kind kind = TypeOfProperty(*type, property).kind;
        *out = PageClassOfProperty(m_class.kind, MemberName(*type, property)).value_or(StockPage(kind));
        return IsEqualCLSID(*out, CLSID_NULL) ? PERPROP_E_NOPAGEAVAILABLE : S_OK;
    });
}

HRESULT BrowsePart::GetPredefinedStrings(DISPID property, CALPOLESTR* texts, CADWORD* cookies) {
    if (!texts || !cookies) return E_POINTER;
    *texts = {};
    *cookies = {};
    return AtBoundary([&] {
        const PropertyType type = TypeOfProperty(*Module::TypeInfo(m_class.dualInterface), property);
        if (type.kind != Kind::Enumeration) return S_FALSE;
        TaskArray<LPOLESTR> names(type.values.size());
        TaskArray<DWORD> numbers(type.values.size());
        TaskStrings owned;
        for (std::size_t i = 0; i < type.values.size(); ++i) {
            names[i] = owned.Add(DisplayText(type.values[i]));
            numbers[i] = static_cast<DWORD>(i);
        }
        owned.Release();
        const auto count = static_cast<ULONG>(type.values.size());
        *texts = {count, names.Release()};
        *cookies = {count, numbers.Release()};
        return S_OK;
    });
}

HRESULT BrowsePart::GetPredefinedValue(DISPID property, DWORD cookie, VARIANT* out) {
    if (!out) return E_POINTER;
    VariantInit(out);
    return AtBoundary([&] {
        const PropertyType type = TypeOfProperty(*Module::TypeInfo(m_class.dualInterface), property);
        if (cookie >= type.values.size()) return E_INVALIDARG;
        *out = comkit::Variant(type.values[cookie].value).Detach();
        return S_OK;
    });
}

HRESULT BrowsePart::GetPages(CAUUID* out) {
    if (!out) return E_POINTER;
    *out = {};
    return AtBoundary([&] {
        std::vector<CLSID> pages;
        for (const PageId page : PagesOf(m_class.kind)) pages.push_back(ClassOf(page).clsid);
        for (const Kind kind : KindsOfProperties(*Module::TypeInfo(m_class.dualInterface)))
            if (const CLSID page = StockPage(kind); !IsEqualCLSID(page, CLSID_NULL)) pages.push_back(page);
        TaskArray<GUID> list(pages.size());
        std::ranges::copy(pages, list.begin());
        *out = {static_cast<ULONG>(pages.size()), list.Release()};
    });
}

}  // namespace kiv::server
