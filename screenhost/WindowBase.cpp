#include "screenhost/WindowBase.h"

#include <exception>

#include "screenhost/ErrorText.h"
#include "screenhost/WideText.h"

namespace screenhost {

WindowBase::~WindowBase() {
    Destroy();
}

void WindowBase::Destroy() noexcept {
    const HWND window = m_window;
    if (!window) return;
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    m_window = nullptr;
    DestroyWindow(window);
}

void WindowBase::Create(const Style& style, HWND parent) {
    WNDCLASSEXW definition{};
    definition.cbSize = sizeof(definition);
    definition.style = CS_DBLCLKS;
    definition.lpfnWndProc = &WindowBase::Procedure;
    definition.hInstance = GetModuleHandleW(nullptr);
    definition.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    definition.hIcon = LoadIconW(definition.hInstance, MAKEINTRESOURCEW(1));
    definition.hbrBackground = GetSysColorBrush(style.background);
    definition.lpszClassName = style.className;
    if (!RegisterClassExW(&definition) && GetLastError() != ERROR_CLASS_ALREADY_EXISTS)
        throw TextError("a window class cannot be registered: " + ErrorText(comkit::LastErrorResult()));
    const bool isChild = (style.style & WS_CHILD) != 0;
    const int place = isChild ? 0 : CW_USEDEFAULT;
    CreateWindowExW(style.extended, style.className, style.title, style.style, place, place, place, place, parent,
                    style.menu, definition.hInstance, this);
    if (!m_window) throw TextError("a window cannot be made: " + ErrorText(comkit::LastErrorResult()));
}

LRESULT WindowBase::Default(UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    return DefWindowProcW(m_window, message, wParam, lParam);
}

LRESULT CALLBACK WindowBase::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_NCCREATE) {
        auto* const created = static_cast<WindowBase*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
        created->m_window = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* const self = reinterpret_cast<WindowBase*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!self) return DefWindowProcW(window, message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        self->m_window = nullptr;
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        return DefWindowProcW(window, message, wParam, lParam);
    }
    try {
        return self->OnMessage(message, wParam, lParam);
    } catch (const std::exception& error) {
        MessageBoxW(window, Wide(error.what()).c_str(), L"Screen Host", MB_ICONERROR);
        return 0;
    } catch (...) {
        return 0;
    }
}

HWND MakeChild(HWND parent, const wchar_t* className, const wchar_t* text, DWORD style, int id, HFONT font) {
    const HWND child =
        CreateWindowExW(0, className, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, parent,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
    if (!child) throw TextError("a part of the window cannot be made: " + ErrorText(comkit::LastErrorResult()));
    SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    return child;
}

}  // namespace screenhost
