// Month and weekday names and upper case of the user's regional settings.
#pragma once

#include "platform/RegionalNames.h"

namespace kiv::win32 {

class SystemRegionalNames final : public RegionalNames {
public:
    std::u16string AbbreviatedMonth(int month) const override;
    std::u16string Weekday(int day) const override;
    std::u16string ToUpper(std::u16string_view text) const override;
};

}  // namespace kiv::win32
