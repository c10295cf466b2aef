#include "platform/RegionalNames.h"

#include <cstddef>

namespace kiv {

std::shared_ptr<const NameTable> RegionalNames::Table(bool upperCase) const {
    const auto table = std::make_shared<NameTable>();
    const auto cased = [&](const std::u16string& name) { return upperCase ? ToUpper(name) : name; };
    for (std::size_t i = 0; i < table->months.size(); ++i)
        table->months[i] = cased(AbbreviatedMonth(static_cast<int>(i) + 1));
    for (std::size_t i = 0; i < table->weekdays.size(); ++i)
        table->weekdays[i] = cased(Weekday(static_cast<int>(i) + 1));
    return table;
}

}  // namespace kiv
