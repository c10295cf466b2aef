// What the framework's services do, where there is no framework: selects all of a text, lets digits, a minus sign and
// the editing keys pass, writes a version as "1.0.0".
#pragma once

#include "platform/UserServices.h"

namespace kiv {

class BuiltInServices final : public UserServices {
public:
    void SelectAllText(TextSelection& box) override;
    void FilterNumericKey(std::int16_t& keyCode) override;
    std::u16string FormatVersion(std::int32_t major, std::int32_t minor, std::int32_t revision) override;
};

}  // namespace kiv
