#include "server/Classes.h"

#include <utility>

#include "server/ClassFactory.h"
#include "server/ControlObject.h"
#include "server/PageClasses.h"
#include "server/PageObject.h"
#include "server/SetCore.h"
#include "server/ShowCore.h"

namespace kiv::server {

namespace {

/// An object as IUnknown, by way of the one of its interfaces that is named.
template <class Interface, class Object>
comkit::ComPtr<IUnknown> Unknown(const comkit::ComPtr<Object>& object) {
    return comkit::ComPtr<IUnknown>::From(static_cast<Interface*>(object.Get()));
}

}  // namespace

std::span<const ControlClass* const> Classes() noexcept {
    static constexpr const ControlClass* All[] = {&SetControlClass, &ShowControlClass};
    return All;
}

comkit::ComPtr<IClassFactory> FactoryOf(REFCLSID clsid) {
    ClassFactory::Maker make;
    for (const ControlClass* c : Classes()) {
        if (IsEqualCLSID(clsid, c->clsid))
            make = [c] { return Unknown<IProvideClassInfo2>(comkit::MakeObject<ControlObject>(*c)); };
    }
    for (const PageClass& c : PageClasses()) {
        if (IsEqualCLSID(clsid, c.clsid))
            make = [&c] { return Unknown<IPropertyPage2>(comkit::MakeObject<PageObject>(c)); };
    }
    if (!make) return nullptr;
    return comkit::MakeObject<ClassFactory>(std::move(make)).As<IClassFactory>();
}

}  // namespace kiv::server
