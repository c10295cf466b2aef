// The Vexa framework, as a control sees it. Every call may throw. A framework that is not installed is one whose every
// call fails, or answers null: that costs less, on a screen of many controls. The control swallows such failures step
// by step.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// One slot's binding to a device value. Field order is the framework's.
struct DataElementBinding {
    std::int32_t lmObject = 0;
    std::int32_t dataType = 0;
    std::u16string variableName;  ///< empty: the slot is not used
    std::u16string elementPath;
    friend bool operator==(const DataElementBinding&, const DataElementBinding&) = default;
};

class PlatformObject;  // whatever a platform makes of it

class DataDefinition {
public:
    virtual ~DataDefinition() = default;
    virtual DataElementBinding ReadDefinition() = 0;
    virtual void WriteDefinition(const DataElementBinding& binding) = 0;
    /// Writes a value to the device. display and use are option words that the framework defines.
    virtual void WriteValue(std::u16string_view text, std::u16string_view display, std::u16string_view use) = 0;
    /// True while the element is bound for writing to the device.
    virtual void SetWriteEnabled(bool enabled) = 0;
};

class DataElement {
public:
    virtual ~DataElement() = default;
    virtual std::shared_ptr<DataDefinition> Definition() = 0;
    /// By this a platform knows the elements of its own make; null for those of any other.
    virtual PlatformObject* OfPlatform() noexcept { return nullptr; }
};

using DataElementPtr = std::shared_ptr<DataElement>;

/// One of the hidden control's element controls.
class ElementControl {
public:
    virtual ~ElementControl() = default;
    virtual DataElementPtr Data() = 0;
};

/// A walk over the element controls, in the framework's order.
class ElementWalk {
public:
    virtual ~ElementWalk() = default;
    /// Null at the end. A walk whose step failed is not to be continued.
    virtual std::unique_ptr<ElementControl> Next() = 0;
};

/// Values arriving from the device.
class DeviceValueListener {
public:
    virtual ~DeviceValueListener() = default;
    virtual void OnValueReceived(std::int16_t index, std::u16string_view value) = 0;
};

/// The framework's invisible part on a control; owns the live data elements.
class HiddenControl {
public:
    virtual ~HiddenControl() = default;
    /// Throws when the index is unknown.
    virtual DataElementPtr Element(std::int16_t index) = 0;
    virtual std::unique_ptr<ElementWalk> Elements() = 0;
};

/// Something of the framework's own that a control keeps and hands back as it is.
class FrameworkObject {
public:
    virtual ~FrameworkObject() = default;
    /// As a data element's.
    virtual PlatformObject* OfPlatform() noexcept { return nullptr; }
};

using FrameworkObjectPtr = std::shared_ptr<FrameworkObject>;

/// The framework's list of objects.
class Collection : public FrameworkObject {
public:
    /// The element must be one of the same framework.
    virtual void Add(const DataElementPtr& element) = 0;
    /// Takes each item once and lets it go again.
    virtual void Walk() = 0;
};

using CollectionPtr = std::shared_ptr<Collection>;

class HelpDefinition;  // platform/FrameworkHelp.h
using HelpDefinitionPtr = std::shared_ptr<HelpDefinition>;

class Framework {
public:
    virtual ~Framework() = default;
    /// The listener must outlive the hidden control. Null, as from the others: the framework has no such thing.
    virtual std::unique_ptr<HiddenControl> CreateHiddenControl(std::int16_t elementCount,
                                                               DeviceValueListener& listener) = 0;
    virtual CollectionPtr CreateCollection() = 0;
    virtual HelpDefinitionPtr CreateHelpDefinition() = 0;
};

}  // namespace kiv
