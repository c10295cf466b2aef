// English names, as of a PC set to US English.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

#include "platform/RegionalNames.h"

namespace kiv::headless {

class HeadlessRegionalNames final : public RegionalNames {
public:
    std::u16string AbbreviatedMonth(int month) const override {
        static constexpr std::array<std::u16string_view, 12> Names{u"Jan", u"Feb", u"Mar", u"Apr", u"May", u"Jun",
                                                                   u"Jul", u"Aug", u"Sep", u"Oct", u"Nov", u"Dec"};
        return std::u16string(Names.at(static_cast<std::size_t>(month - 1)));
    }

    std::u16string Weekday(int day) const override {
        static constexpr std::array<std::u16string_view, 7> Names{u"Sunday",   u"Monday", u"Tuesday", u"Wednesday",
                                                                  u"Thursday", u"Friday", u"Saturday"};
        return std::u16string(Names.at(static_cast<std::size_t>(day - 1)));
    }

    /// ASCII and Latin-1.
    std::u16string ToUpper(std::u16string_view text) const override {
        std::u16string result(text);
        std::transform(result.begin(), result.end(), result.begin(), [](char16_t c) {
            const bool lower = (c >= u'a' && c <= u'z') || (c >= 0xE0 && c <= 0xFE && c != 0xF7);
            return static_cast<char16_t>(lower ? c - 0x20 : c);
        });
        return result;
    }
};

}  // namespace kiv::headless
