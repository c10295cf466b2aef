#include "win32/SystemRegionalNames.h"

#include <windows.h>

#include <array>

#include "comkit/Bstr.h"

namespace kiv::win32 {

namespace {

std::u16string LocaleText(LCTYPE type) {
    std::array<wchar_t, 80> text{};  // the longest name that the system knows
    const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text.data(), static_cast<int>(text.size()));
    return length > 0 ? std::u16string(comkit::ToUtf16({text.data(), static_cast<std::size_t>(length) - 1})) : u"";
}

}  // namespace

std::u16string SystemRegionalNames::AbbreviatedMonth(int month) const {
    return LocaleText(LOCALE_SABBREVMONTHNAME1 + static_cast<LCTYPE>(month - 1));
}

std::u16string SystemRegionalNames::Weekday(int day) const {
    // The system counts from Monday.
    return LocaleText(LOCALE_SDAYNAME1 + static_cast<LCTYPE>((day + 5) % 7));
}

std::u16string SystemRegionalNames::ToUpper(std::u16string_view text) const {
    std::u16string result(text);
    auto* const units = reinterpret_cast<wchar_t*>(result.data());
    const int length = static_cast<int>(result.size());
    if (length > 0) LCMapStringW(LOCALE_USER_DEFAULT, LCMAP_UPPERCASE, units, length, units, length);
    return result;
}

}  // namespace kiv::win32
