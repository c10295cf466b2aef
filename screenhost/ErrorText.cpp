#include "screenhost/ErrorText.h"

#include <array>
#include <cstdio>

#include "screenhost/WideText.h"

namespace screenhost {

std::string ErrorText(HRESULT hr) {
    return ErrorText(comkit::ComError(hr));
}

std::string ErrorText(const comkit::ComError& error) {
    std::string text = Utf8FromUtf16(error.Description());
    if (text.empty()) {
        std::array<wchar_t, 512> buffer{};
        const DWORD length =
            FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                           static_cast<DWORD>(error.Result()), 0, buffer.data(), buffer.size(), nullptr);
        text = Narrow(std::wstring_view(buffer.data(), length));
        while (!text.empty() && (text.back() == '\n' || text.back() == '\r' || text.back() == '.')) text.pop_back();
    }
    if (!error.Source().empty()) text = Utf8FromUtf16(error.Source()) + ": " + text;
    std::array<char, 32> number{};
    std::snprintf(number.data(), number.size(), "0x%08lX", static_cast<unsigned long>(error.Result()));
    return text.empty() ? number.data() : text + " (" + number.data() + ")";
}

}  // namespace screenhost
