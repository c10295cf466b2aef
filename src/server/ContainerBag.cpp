#include "server/ContainerBag.h"

#include <string>

#include "comkit/Errors.h"
#include "comkit/Variant.h"
#include "platform/HostError.h"
#include "server/Boundary.h"
#include "server/StandardTexts.h"
#include "server/ValueConversion.h"

namespace kiv::server {

Value ContainerBag::Read(std::u16string_view key, const Value& fallback) const {
    const std::wstring name(comkit::ToWide(key));
    comkit::Variant value;  // empty: the bag is to give what it has, in the type that it has
    const HRESULT hr = m_bag.Read(name.c_str(), &value.Get(), m_pLog);
    if (hr == E_INVALIDARG) return fallback;
    comkit::ThrowIfFailed(hr);
    // Some bags have nothing and call it a success.
    if (value.Type() == VT_EMPTY) return fallback;
    return ValueOf(value.Get());
}

void ContainerBag::Write(std::u16string_view key, const Value& value, const Value* defaultValue) {
    if (!m_bSaveAll && defaultValue && SameValue(value, *defaultValue)) return;
    const std::wstring name(comkit::ToWide(key));
    comkit::Variant variant = VariantOf(value);
    comkit::ThrowIfFailed(m_bag.Write(name.c_str(), &variant.Get()));
}

void ContainerBag::ReportBadValue(std::u16string_view key) const {
    if (!m_pLog) return;
    const std::wstring name(comkit::ToWide(key));
    comkit::Bstr source(m_source);
    comkit::Bstr text(StandardText(ErrorNumber::InvalidPropertyValue));
    EXCEPINFO info{};
    info.scode = HostResult(ErrorNumber::InvalidPropertyValue);
    info.bstrSource = source.Get();
    info.bstrDescription = text.Get();
    m_pLog->AddError(name.c_str(), &info);  // the log copies; what it answers changes nothing for the control
}

}  // namespace kiv::server
