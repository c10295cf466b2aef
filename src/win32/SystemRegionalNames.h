// Month and weekday names and upper case of the user's regional settings.
#pragma once

#include "platform/RegionalNames.h"

namespace kiv::win32 {

class SystemRegionalNames final : public RegionalNames {
public:
    std::u16string AbbreviatedMonth(int month) const override;
    std::u16string Weekday(int day) const override;
    std::u16string ToUpper(std::u16string_view text) const override;
    /// One for all controls, asked of the system anew after ForgetTables and from time to time: a screen of many would
    /// spend more on names than on all else.
    std::shared_ptr<const NameTable> Table(bool upperCase) const override;

    /// The user's settings are other ones.
    static void ForgetTables() noexcept;
};

}  // namespace kiv::win32
