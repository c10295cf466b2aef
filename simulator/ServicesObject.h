// The framework's services for user interfaces.
#pragma once

#include "simulator/LateBound.h"

namespace vexa {

class ServicesObject final : public LateBoundObject<ServicesObject> {
public:
    ServicesObject();
    static std::span<const LateMember<ServicesObject>> Members();

private:
    /// Any object with SelStart, SelLength and Text.
    comkit::Variant SelectAllText(const LateArguments& arguments);
    /// Lets digits, a minus sign, control keys and the characters of Extra pass, with Flag a decimal point too; any
    /// other key code becomes 0.
    comkit::Variant FilterNumericKey(const LateArguments& arguments);
    /// "1.0.0"
    comkit::Variant FormatVersion(const LateArguments& arguments);
};

}  // namespace vexa
