// The user's regional settings, as far as the controls show them.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>

namespace kiv {

/// All names in one case.
struct NameTable {
    std::array<std::u16string, 12> months;   ///< January first
    std::array<std::u16string, 7> weekdays;  ///< Sunday first
};

class RegionalNames {
public:
    virtual ~RegionalNames() = default;
    /// month 1..12, in the form that stands beside a day and a year.
    virtual std::u16string AbbreviatedMonth(int month) const = 0;
    /// day 1 Sunday .. 7 Saturday, in full.
    virtual std::u16string Weekday(int day) const = 0;
    /// Upper case of any text by the user's language, unit by unit: the length stays.
    virtual std::u16string ToUpper(std::u16string_view text) const = 0;

    /// Never null. Names that cost something to be asked for may be the same ones for all who ask within a moment.
    virtual std::shared_ptr<const NameTable> Table(bool upperCase) const;
};

}  // namespace kiv
