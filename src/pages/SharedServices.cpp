#include "pages/SharedServices.h"

#include <utility>

#include "common/Attempt.h"

namespace kiv {

UserServices* SharedServices::Framework() {
    if (const Finder find = std::exchange(m_find, nullptr)) {
        Attempt([&] { m_pFramework = find(); });
    }
    return m_pFramework.get();
}

void SharedServices::SelectAllText(TextSelection& box) {
    UserServices* const framework = Framework();
    if (framework && Attempt([&] { framework->SelectAllText(box); })) return;
    m_builtIn.SelectAllText(box);
}

void SharedServices::FilterNumericKey(std::int16_t& keyCode) {
    UserServices* const framework = Framework();
    std::int16_t filtered = keyCode;
    if (!framework || !Attempt([&] { framework->FilterNumericKey(filtered); })) {
        filtered = keyCode;
        m_builtIn.FilterNumericKey(filtered);
    }
    keyCode = filtered;
}

std::u16string SharedServices::FormatVersion(std::int32_t major, std::int32_t minor, std::int32_t revision) {
    UserServices* const framework = Framework();
    std::u16string text;
    if (framework && Attempt([&] { text = framework->FormatVersion(major, minor, revision); })) return text;
    return m_builtIn.FormatVersion(major, minor, revision);
}

}  // namespace kiv
