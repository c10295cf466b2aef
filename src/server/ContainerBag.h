// The container's property bag as the core's.
//
// Reading: a key that the bag does not have (E_INVALIDARG) yields the fallback; any other failure is a
// comkit::ComError. Bad values go to the error log, where the container gave one. Writing leaves out values that equal
// their default, unless all are asked for.
#pragma once

#include <ocidl.h>

#include "comkit/ComPtr.h"
#include "platform/PropertyBag.h"

namespace kiv::server {

class ContainerBag final : public PropertyBag {
public:
    /// source names the control in the error log, such as "KivDateTime.KivSetDateTime".
    ContainerBag(IPropertyBag& bag, IErrorLog* log, const wchar_t* source) noexcept
        : m_bag(bag), m_pLog(log), m_source(source) {}
    ContainerBag(IPropertyBag& bag, bool saveAll) noexcept : m_bag(bag), m_bSaveAll(saveAll) {}

    Value Read(std::u16string_view key, const Value& fallback) const override;
    void Write(std::u16string_view key, const Value& value, const Value* defaultValue) override;
    void ReportBadValue(std::u16string_view key) const override;

private:
    IPropertyBag& m_bag;
    IErrorLog* m_pLog = nullptr;
    const wchar_t* m_source = nullptr;
    bool m_bSaveAll = false;
};

}  // namespace kiv::server
