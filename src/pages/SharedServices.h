// The framework's services where it has any, the built-in ones where it has none or where a call to it fails.
//
// The framework's are looked for at the first use and kept.
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "pages/BuiltInServices.h"

namespace kiv {

class SharedServices final : public UserServices {
public:
    /// Null or an exception where there are none.
    using Finder = std::function<std::unique_ptr<UserServices>()>;

    explicit SharedServices(Finder find) : m_find(std::move(find)) {}

    void SelectAllText(TextSelection& box) override;
    void FilterNumericKey(std::int16_t& keyCode) override;
    std::u16string FormatVersion(std::int32_t major, std::int32_t minor, std::int32_t revision) override;

private:
    UserServices* Framework();

    Finder m_find;
    std::unique_ptr<UserServices> m_pFramework;
    BuiltInServices m_builtIn;
};

}  // namespace kiv
