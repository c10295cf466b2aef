// Errors that a control raises to the caller of a property, the same way for both controls.
#pragma once

#include <cstdint>
#include <string_view>

namespace kiv {

class Container;

/// The host's own text for an error number, for errors that come without a description; empty for unknown numbers.
std::u16string_view StandardErrorText(std::int32_t number) noexcept;

/// Raises HostError number with the source "className (instance name)" and the text of string resId. A missing string
/// leaves the description empty.
[[noreturn]] void RaisePropertyError(std::u16string_view className, const Container& container, std::int32_t number,
                                     std::int32_t resId);

/// Returns silently for 0 <= index < count, otherwise raises error 381 with the text of string resId.
void ValidateIndex(std::u16string_view className, const Container& container, std::int32_t index, std::int32_t count,
                   std::int32_t resId);

}  // namespace kiv
