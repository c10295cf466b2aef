// The framework's registry object: one open key of the Windows registry. Whatever fails raises an error with the
// system's own result.
#pragma once

#include "comkit/Handle.h"
#include "simulator/LateBound.h"

namespace vexa {

class RegistryObject final : public LateBoundObject<RegistryObject> {
public:
    RegistryObject();
    static std::span<const LateMember<RegistryObject>> Members();

private:
    comkit::Variant OpenKey(const LateArguments& arguments);
    comkit::Variant CreateKey(const LateArguments& arguments);
    comkit::Variant QueryValue(const LateArguments& arguments);
    comkit::Variant SetValue(const LateArguments& arguments);
    comkit::Variant CloseKey(const LateArguments&);
    HKEY OpenedKey() const;

    comkit::UniqueRegKey m_key;
};

}  // namespace vexa
