// A variable of the framework that a host hands to a control, so that the control reads its values from it at once
// instead of waiting for them.
#pragma once

#include <string_view>

#include "platform/Value.h"

namespace kiv {

class VariableObject {
public:
    virtual ~VariableObject() = default;
    /// The value of the element at that path. Throws when there is no such element or it cannot be read.
    virtual Value ElementValue(std::u16string_view path) = 0;
};

}  // namespace kiv
