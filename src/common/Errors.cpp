#include "common/Errors.h"

#include <string>

#include "common/Attempt.h"
#include "common/ResourceStrings.h"
#include "platform/Container.h"
#include "platform/HostError.h"

namespace kiv {

std::u16string_view StandardErrorText(std::int32_t number) noexcept {
    switch (number) {
        case ErrorNumber::Overflow:
            return u"Overflow";
        case ErrorNumber::SubscriptOutOfRange:
            return u"Subscript out of range";
        case ErrorNumber::TypeMismatch:
            return u"Type mismatch";
        case ErrorNumber::ObjectNotSet:
            return u"Object variable not set";
        case ErrorNumber::InvalidPropertyValue:
            return u"Invalid property value";
        case ErrorNumber::InvalidPropertyArrayIndex:
            return u"Invalid property-array index";
        case ErrorNumber::PropertyNotSettableAtRunTime:
            return u"Property cannot be set at run time";
        case ErrorNumber::PropertyReadOnly:
            return u"Property is read-only";
        case ErrorNumber::PropertyWriteOnly:
            return u"Property is write-only";
        default:
            return {};
    }
}

void RaisePropertyError(std::u16string_view className, const Container& container, std::int32_t number,
                        std::int32_t resId) {
    std::u16string description(FindResString(resId).value_or(std::u16string_view{}));
    // A container that fails to tell the name must not turn this error into another one.
    std::u16string name;
    Attempt([&] { name = container.InstanceName(); });
    throw HostError(number, std::u16string(className) + u" (" + name + u")", std::move(description));
}

void ValidateIndex(std::u16string_view className, const Container& container, std::int32_t index, std::int32_t count,
                   std::int32_t resId) {
    if (index >= 0 && index < count) return;
    RaisePropertyError(className, container, ErrorNumber::InvalidPropertyArrayIndex, resId);
}

}  // namespace kiv
