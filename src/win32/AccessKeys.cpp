#include "win32/AccessKeys.h"

#include <windows.h>

namespace kiv::win32 {

wchar_t MnemonicOf(std::u16string_view caption) noexcept {
    for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
        if (caption[i] != u'&') continue;
        auto letter = static_cast<wchar_t>(caption[i + 1]);
        if (letter != L'&') {
            CharUpperBuffW(&letter, 1);
            return letter;
        }
        ++i;
    }
    return 0;
}

std::u16string WithoutAccessKey(std::u16string_view caption) {
    std::u16string result;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] == u'&' && i + 1 < caption.size()) ++i;
        result += caption[i];
    }
    return result;
}

}  // namespace kiv::win32
