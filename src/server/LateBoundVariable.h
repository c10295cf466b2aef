// A variable of the framework that a host hands over, reached by name.
#pragma once

#include <oaidl.h>

#include "comkit/ComPtr.h"
#include "platform/VariableObject.h"

namespace kiv::server {

class LateBoundVariable final : public VariableObject {
public:
    /// Whatever else than an object the variant holds or refers to is a variable without elements.
    explicit LateBoundVariable(const VARIANT& object) noexcept;

    Value ElementValue(std::u16string_view path) override;

private:
    comkit::ComPtr<IDispatch> m_pObject;
};

}  // namespace kiv::server
