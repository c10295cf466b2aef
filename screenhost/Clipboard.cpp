#include "screenhost/Clipboard.h"

#include <algorithm>

#include "screenhost/WideText.h"

namespace screenhost {

namespace {

class OpenedClipboard {
public:
    explicit OpenedClipboard(HWND owner) noexcept : m_bOpen(OpenClipboard(owner) != FALSE) {}
    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;
    ~OpenedClipboard() {
        if (m_bOpen) CloseClipboard();
    }
    explicit operator bool() const noexcept { return m_bOpen; }

private:
    bool m_bOpen;
};

}  // namespace

bool PutClipboardText(HWND owner, std::string_view text) {
    const std::wstring wide = Wide(text);
    const OpenedClipboard clipboard(owner);
    if (!clipboard || !EmptyClipboard()) return false;
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (wide.size() + 1) * sizeof(wchar_t));
    auto* const target = static_cast<wchar_t*>(memory ? GlobalLock(memory) : nullptr);
    if (target) {
        *std::ranges::copy(wide, target).out = L'\0';
        GlobalUnlock(memory);
        if (SetClipboardData(CF_UNICODETEXT, memory)) return true;  // the system's from now on
    }
    GlobalFree(memory);
    return false;
}

std::string GetClipboardText(HWND owner) {
    const OpenedClipboard clipboard(owner);
    const HANDLE memory = clipboard ? GetClipboardData(CF_UNICODETEXT) : nullptr;
    const auto* const text = static_cast<const wchar_t*>(memory ? GlobalLock(memory) : nullptr);
    if (!text) return {};
    const std::size_t most = GlobalSize(memory) / sizeof(wchar_t);
    const std::wstring_view view(text, most);
    std::string result = Narrow(view.substr(0, view.find(L'\0')));
    GlobalUnlock(memory);
    return result;
}

}  // namespace screenhost
