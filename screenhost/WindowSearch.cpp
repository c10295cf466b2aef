#include "screenhost/WindowSearch.h"

#include <array>

#include "screenhost/TextCursor.h"
#include "screenhost/WideText.h"

namespace screenhost {

namespace {

BOOL CALLBACK AddToList(HWND window, LPARAM list) {
    reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

}  // namespace

std::string CaptionOf(HWND window) {
    std::array<wchar_t, 256> text{};
    const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    std::string caption = Narrow(std::wstring_view(text.data(), static_cast<std::size_t>(length)));
    std::erase(caption, '&');
    return caption;
}

std::wstring ClassOf(HWND window) {
    std::array<wchar_t, 64> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

bool IsOfClass(HWND window, const wchar_t* className) {
    return lstrcmpiW(ClassOf(window).c_str(), className) == 0;
}

std::string DescribeWindow(HWND window) {
    const std::string caption = CaptionOf(window);
    return caption.empty() ? Narrow(ClassOf(window)) : "\"" + caption + "\"";
}

std::vector<HWND> Descendants(HWND root) {
    std::vector<HWND> result;
    EnumChildWindows(root, &AddToList, reinterpret_cast<LPARAM>(&result));
    std::erase_if(result, [](HWND window) { return !IsWindowVisible(window); });
    return result;
}

HWND ChildOfClass(HWND root, const wchar_t* className) {
    for (HWND window : Descendants(root))
        if (IsOfClass(window, className)) return window;
    throw TextError("there is no visible " + Narrow(std::wstring_view(className)));
}

HWND FindCaption(const std::vector<HWND>& windows, std::string caption) {
    std::erase(caption, '&');
    HWND partial = nullptr;
    int partialCount = 0;
    std::string seen;
    for (HWND window : windows) {
        const std::string found = CaptionOf(window);
        if (found.empty()) continue;
        if (EqualWithoutCase(found, caption)) return window;
        if (found.size() > caption.size() && EqualWithoutCase(found.substr(0, caption.size()), caption)) {
            partial = window;
            ++partialCount;
        }
        seen += (seen.empty() ? "\"" : ", \"") + found + "\"";
    }
    if (partialCount == 1) return partial;
    throw TextError((partialCount ? "more than one window starts with \"" : "there is no window \"") + caption +
                    "\" among " + (seen.empty() ? "none" : seen));
}

HWND WindowAt(HWND window, POINT screen) {
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        RECT place{};
        GetWindowRect(child, &place);
        if (!IsWindowVisible(child) || !PtInRect(&place, screen)) continue;
        // A disabled window is met, but not asked: it may be asleep.
        if (!IsWindowEnabled(child)) return child;
        if (SendMessageW(child, WM_NCHITTEST, 0, MAKELPARAM(screen.x, screen.y)) == HTTRANSPARENT) continue;
        return WindowAt(child, screen);
    }
    return window;
}

bool IsReallyEnabled(HWND window) {
    for (; window; window = GetAncestor(window, GA_PARENT))
        if (!IsWindowEnabled(window)) return false;
    return true;
}

}  // namespace screenhost
