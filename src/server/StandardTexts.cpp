#include "server/StandardTexts.h"

#include <algorithm>
#include <iterator>

#include "platform/HostError.h"

namespace kiv::server {

namespace {

struct NumberedText {
    std::int32_t number;
    std::u16string_view text;
};

constexpr NumberedText Texts[] = {
    {ErrorNumber::Overflow, u"Overflow"},
    {ErrorNumber::SubscriptOutOfRange, u"Subscript out of range"},
    {ErrorNumber::TypeMismatch, u"Type mismatch"},
    {ErrorNumber::ObjectNotSet, u"Object variable not set"},
    {ErrorNumber::InvalidPropertyValue, u"Invalid property value"},
    {ErrorNumber::InvalidPropertyArrayIndex, u"Invalid property-array index"},
    {ErrorNumber::PropertyNotSettableAtRunTime, u"Property cannot be set at run time"},
    {ErrorNumber::PropertyReadOnly, u"Property is read-only"},
    {ErrorNumber::PropertyWriteOnly, u"Property is write-only"},
};

}  // namespace

std::u16string_view StandardText(std::int32_t number) noexcept {
    const auto found = std::find_if(std::begin(Texts), std::end(Texts),
                                    [number](const NumberedText& entry) { return entry.number == number; });
    return found != std::end(Texts) ? found->text : u"Application-defined or object-defined error";
}

}  // namespace kiv::server
