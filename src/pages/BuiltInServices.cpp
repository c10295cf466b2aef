#include "pages/BuiltInServices.h"

#include "common/NumericText.h"

namespace kiv {

void BuiltInServices::SelectAllText(TextSelection& box) {
    box.SetSelStart(0);
    box.SetSelLength(box.Text().size());
}

void BuiltInServices::FilterNumericKey(std::int16_t& keyCode) {
    const bool isEditingKey = keyCode >= 0 && keyCode < u' ';
    const bool isOfNumber = (keyCode >= u'0' && keyCode <= u'9') || keyCode == u'-';
    if (!isEditingKey && !isOfNumber) keyCode = 0;
}

std::u16string BuiltInServices::FormatVersion(std::int32_t major, std::int32_t minor, std::int32_t revision) {
    return ToText(major) + u"." + ToText(minor) + u"." + ToText(revision);
}

}  // namespace kiv
