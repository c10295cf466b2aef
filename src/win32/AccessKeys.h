// Access keys in captions: the letter behind a single '&'; "&&" is the character itself.
#pragma once

#include <string>
#include <string_view>

namespace kiv::win32 {

/// The letter behind the first single '&' of a caption, in upper case; 0 where there is none.
wchar_t MnemonicOf(std::u16string_view caption) noexcept;

/// The caption as it reads.
std::u16string WithoutAccessKey(std::u16string_view caption);

}  // namespace kiv::win32
