// Framework objects that are automation objects: how the library keeps them and gives them back.
#pragma once

#include <oaidl.h>

#include <memory>
#include <utility>

#include "comkit/ComPtr.h"
#include "comkit/Variant.h"
#include "platform/Framework.h"

namespace kiv {

/// Any of the framework's objects that is kept over its automation interface.
class PlatformObject {
public:
    explicit PlatformObject(comkit::ComPtr<IDispatch> object) noexcept : m_pObject(std::move(object)) {}
    PlatformObject(const PlatformObject&) = delete;
    PlatformObject& operator=(const PlatformObject&) = delete;
    const comkit::ComPtr<IDispatch>& Object() const noexcept { return m_pObject; }

protected:
    ~PlatformObject() = default;

private:
    comkit::ComPtr<IDispatch> m_pObject;
};

}  // namespace kiv

namespace kiv::win32 {

/// An implementation of an interface of the core's over such an object.
template <class Interface>
class AutomationObject : public Interface, public PlatformObject {
public:
    using PlatformObject::PlatformObject;
    PlatformObject* OfPlatform() noexcept override { return this; }
};

/// The very object that the framework gave; null for null and for what is no automation object.
comkit::ComPtr<IDispatch> DispatchOf(const FrameworkObjectPtr& object) noexcept;

/// The object that a late-bound call answered. Throws HostError 91 where it is none.
comkit::ComPtr<IDispatch> ObjectOf(const comkit::Variant& result);

/// Over the objects that are made by the framework's names; null where it is not installed. Throw comkit::ComError.
CollectionPtr MakeLateBoundCollection();
HelpDefinitionPtr MakeLateBoundHelpDefinition();

}  // namespace kiv::win32
