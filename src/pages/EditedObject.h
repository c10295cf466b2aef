// A selected control, as a page sees it: properties by name. Any call may fail with any exception; an error that the
// control itself raised comes as HostError.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "pages/PageDescription.h"
#include "platform/Value.h"

namespace kiv {

class EditedObject {
public:
    virtual ~EditedObject() = default;
    virtual ControlKind Kind() const = 0;
    virtual Value Get(std::u16string_view property) = 0;
    virtual void Put(std::u16string_view property, const Value& value) = 0;
    /// Properties with an index.
    virtual Value GetAt(std::u16string_view property, std::int32_t index) = 0;
    virtual void PutAt(std::u16string_view property, std::int32_t index, const Value& value) = 0;
};

/// In the order of the selection; none is null.
using EditedObjects = std::vector<std::shared_ptr<EditedObject>>;

}  // namespace kiv
