// A control that is selected in a designer, reached over its IDispatch as any caller reaches it.
#pragma once

#include <oaidl.h>

#include "comkit/ComPtr.h"
#include "comkit/Variant.h"
#include "pages/EditedObject.h"

namespace kiv::server {

class EditedDispatch final : public EditedObject {
public:
    /// Of an object without IDispatch every property is missing.
    explicit EditedDispatch(IUnknown* object);

    ControlKind Kind() const override { return m_kind; }
    Value Get(std::u16string_view property) override;
    void Put(std::u16string_view property, const Value& value) override;
    Value GetAt(std::u16string_view property, std::int32_t index) override;
    void PutAt(std::u16string_view property, std::int32_t index, const Value& value) override;

private:
    /// Runs a call; a numbered error of the host's kind becomes HostError again.
    template <class Body>
    auto Calling(Body&& body);

    comkit::ComPtr<IDispatch> m_pObject;
    ControlKind m_kind = ControlKind::Other;
};

}  // namespace kiv::server
