// A control's members by name, as a script names them: "Caption", "DataVariableName(3)".
#pragma once

#include <oaidl.h>

#include <optional>
#include <string>

#include "comkit/Variant.h"
#include "screenhost/DeviceLink.h"
#include "screenhost/ScreenValue.h"

namespace screenhost {

/// Throw TextError with the component's own words.
comkit::Variant GetMember(IDispatch& object, const std::string& member);
void PutMember(IDispatch& object, const std::string& member, const ScreenValue& value);

/// Whether a member's value is the wanted one; numbers and Booleans are compared as what is wanted.
bool SameValue(const comkit::Variant& found, const ScreenValue& wanted);

/// A value in words, for logs and messages. Never throws anything but std::bad_alloc.
std::string DescribeVariant(const VARIANT& value);

/// What a control shows as date and time (GetDateTimeInfo). Throws TextError.
CivilDateTime ShownDateTime(IDispatch& control);

/// The member's name, or its number where the type information does not know it.
std::string MemberName(IDispatch& object, DISPID id);

}  // namespace screenhost
