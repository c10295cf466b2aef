// Between the UTF-8 of the host's files and messages and the wide strings of Windows.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "comkit/Bstr.h"
#include "screenhost/Utf8.h"

namespace screenhost {

/// Bytes that are no UTF-8 become U+FFFD.
inline std::wstring Wide(std::string_view utf8) {
    std::wstring result(utf8.size(), L'\0');
    if (utf8.empty()) return result;
    const int length = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), result.data(),
                                           static_cast<int>(result.size()));
    result.resize(static_cast<std::size_t>(length));
    return result;
}

inline std::string Narrow(std::wstring_view text) {
    return Utf8FromUtf16(comkit::ToUtf16(text));
}

inline std::string Narrow(BSTR text) {
    return Utf8FromUtf16(comkit::ViewOf(text));
}

}  // namespace screenhost
