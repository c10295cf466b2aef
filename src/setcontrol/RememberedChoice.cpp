#include "setcontrol/RememberedChoice.h"

#include "common/Attempt.h"
#include "common/NumericText.h"
#include "common/ValueConversion.h"

namespace kiv {

namespace {

constexpr std::u16string_view ValueName = u"UsePCDateTime";

/// A text counts by its leading number, as device values do.
bool IsNonZero(const Value& stored) {
    if (const auto* text = std::get_if<std::u16string>(&stored)) return ParseDeviceNumber(*text) != 0;
    return ToBool(stored);
}

}  // namespace

std::optional<bool> LoadUsePCDateTimeSetting(SettingsStore& settings, std::u16string_view keyPath) {
    std::optional<bool> choice;
    Attempt([&] { choice = IsNonZero(settings.OpenKey(keyPath)->QueryValue(ValueName)); });
    return choice;
}

void SaveUsePCDateTimeSetting(SettingsStore& settings, std::u16string_view keyPath, bool usePC) {
    Attempt([&] { settings.CreateKey(keyPath)->SetNumber(ValueName, usePC ? -1 : 0); });
}

}  // namespace kiv
