// The one exception with which the library reports an error to its caller.
//
// number is the host's standard error number (380, 381, ...). An empty source or description means that the thrower has
// none of its own; the component boundary then supplies the library's name and the standard text of the number.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

namespace kiv {

class HostError final : public std::exception {
public:
    explicit HostError(std::int32_t number, std::u16string source = {}, std::u16string description = {})
        : m_lNumber(number), m_strSource(std::move(source)), m_strDescription(std::move(description)) {}

    std::int32_t Number() const noexcept { return m_lNumber; }
    const std::u16string& Source() const noexcept { return m_strSource; }
    const std::u16string& Description() const noexcept { return m_strDescription; }
    const char* what() const noexcept override { return "kiv::HostError"; }

private:
    std::int32_t m_lNumber;
    std::u16string m_strSource;
    std::u16string m_strDescription;
};

namespace ErrorNumber {
inline constexpr std::int32_t Overflow = 6;
inline constexpr std::int32_t SubscriptOutOfRange = 9;
inline constexpr std::int32_t TypeMismatch = 13;
inline constexpr std::int32_t ObjectNotSet = 91;
inline constexpr std::int32_t ResourceNotFound = 326;
inline constexpr std::int32_t InvalidPropertyValue = 380;
inline constexpr std::int32_t InvalidPropertyArrayIndex = 381;
inline constexpr std::int32_t PropertyNotSettableAtRunTime = 382;
inline constexpr std::int32_t PropertyReadOnly = 383;
inline constexpr std::int32_t PropertyWriteOnly = 394;
}  // namespace ErrorNumber

}  // namespace kiv
