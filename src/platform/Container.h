// The container, as a control sees it: ambient properties, the extender, change notification, units.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Font.h"
#include "platform/Geometry.h"

namespace kiv {

class Container {
public:
    virtual ~Container() = default;

    /// The ambient UserMode at this moment; true where the container offers none.
    virtual bool UserMode() const = 0;

    /// Null where the container offers none.
    virtual FontPtr AmbientFont() const = 0;

    /// The name that the container gave this instance, such as "KivSetDateTime1"; empty where it gives none.
    virtual std::u16string InstanceName() const = 0;

    /// A property really changed. key is its persistence key, such as "ProtoShow24Hour" or "DataVarName0".
    virtual void PropertyChanged(std::u16string_view key) = 0;

    /// Something that is saved changed without being announced: the control needs saving, and that is all.
    virtual void MarkDirty() {}

    /// Sets a property of the object that the container wraps the control in. Throws where there is none such.
    virtual void SetExtenderNumber(std::u16string_view name, std::int32_t value) = 0;

    /// From twips to the container's position units, x and y apart.
    virtual Point ToContainerPosition(const Point& twips) const = 0;
};

}  // namespace kiv
