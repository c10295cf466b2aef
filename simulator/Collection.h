// The framework's collection of objects, numbered from 1.
#pragma once

#include "simulator/LateBound.h"
#include "simulator/VariantEnumerator.h"

namespace vexa {

class Collection final : public LateBoundObject<Collection> {
public:
    Collection();
    static std::span<const LateMember<Collection>> Members();

private:
    comkit::Variant Add(const LateArguments& arguments);
    comkit::Variant Item(const LateArguments& arguments);
    comkit::Variant Count(const LateArguments&);
    comkit::Variant NewEnum(const LateArguments&);

    ObjectList m_objects;
};

}  // namespace vexa
