#include "win32/SystemRegionalNames.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <mutex>

#include "comkit/Bstr.h"
#include "comkit/SlimLock.h"

namespace kiv::win32 {

namespace {

std::u16string LocaleText(LCTYPE type) {
    std::array<wchar_t, 80> text{};  // the longest name that the system knows
    const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text.data(), static_cast<int>(text.size()));
    return length > 0 ? std::u16string(comkit::ToUtf16({text.data(), static_cast<std::size_t>(length) - 1})) : u"";
}

/// For those who are never told that the settings are other ones.
constexpr ULONGLONG TablesHold = 2000;

struct SharedTables {
    comkit::SlimLock lock;
    ULONGLONG since = 0;
    std::array<std::shared_ptr<const NameTable>, 2> tables;  ///< as they are, in upper case
};

SharedTables& Shared() {
    static SharedTables shared;
    return shared;
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
    // Without linguistic casing, which nobody asks for here, these letters are the same to every language.
    if (std::ranges::all_of(result, [](char16_t unit) { return unit < 0x80; })) {
        std::ranges::transform(result, result.begin(), [](char16_t unit) {
            return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
        });
        return result;
    }
    auto* const units = reinterpret_cast<wchar_t*>(result.data());
    const int length = static_cast<int>(result.size());
    if (length > 0) LCMapStringW(LOCALE_USER_DEFAULT, LCMAP_UPPERCASE, units, length, units, length);
    return result;
}

std::shared_ptr<const NameTable> SystemRegionalNames::Table(bool upperCase) const {
    SharedTables& shared = Shared();
    const std::lock_guard guard(shared.lock);
    const ULONGLONG now = GetTickCount64();
    if (now - shared.since > TablesHold) {
        shared.tables = {};
        shared.since = now;
    }
    std::shared_ptr<const NameTable>& table = shared.tables.at(upperCase ? 1 : 0);
    if (!table) table = RegionalNames::Table(upperCase);
    return table;
}

void SystemRegionalNames::ForgetTables() noexcept {
    SharedTables& shared = Shared();
    const std::lock_guard guard(shared.lock);
    shared.tables = {};
}

}  // namespace kiv::win32
