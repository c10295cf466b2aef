#include "common/ReadPropXxx.h"

#include "common/Attempt.h"
#include "common/ValueConversion.h"

namespace kiv {

namespace {

template <typename Result, typename Convert>
Result ReadProp(const PropertyBag& bag, std::u16string_view key, const Result& defaultValue, Convert convert) {
    Result result = defaultValue;
    if (!Attempt([&] { result = convert(bag.Read(key, Value{defaultValue})); })) {
        Attempt([&] { bag.ReportBadValue(key); });
    }
    return result;
}

bool IsOutOfBounds(std::u16string_view text, std::int16_t minLength, std::int16_t maxLength) noexcept {
    return (minLength > -1 && text.size() < static_cast<std::size_t>(minLength)) ||
           (maxLength > -1 && text.size() > static_cast<std::size_t>(maxLength));
}

}  // namespace

bool ReadPropBool(const PropertyBag& bag, std::u16string_view key, bool defaultValue) {
    return ReadProp(bag, key, defaultValue, ToBool);
}

std::int32_t ReadPropLong(const PropertyBag& bag, std::u16string_view key, std::int32_t defaultValue) {
    return ReadProp(bag, key, defaultValue, ToLong);
}

std::u16string ReadPropString(const PropertyBag& bag, std::u16string_view key, std::u16string_view defaultValue,
                              std::int16_t minLength, std::int16_t maxLength) {
    std::u16string text = ReadProp(bag, key, std::u16string(defaultValue), ToString);
    if (!IsOutOfBounds(text, minLength, maxLength)) return text;
    Attempt([&] { bag.ReportBadValue(key); });
    return std::u16string(defaultValue);
}

}  // namespace kiv
