#include "WindowlessSite.h"

namespace bench {

namespace {

constexpr const wchar_t* FormClass = L"KivBenchForm";

}  // namespace

WindowlessForm::WindowlessForm() {
    WNDCLASSW form{};
    form.lpfnWndProc = &Procedure;
    form.hInstance = GetModuleHandleW(nullptr);
    form.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<ULONG_PTR>(COLOR_BTNFACE + 1));
    form.lpszClassName = FormClass;
    RegisterClassW(&form);
    m_window.Reset(CreateWindowExW(0, FormClass, L"bench", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_VISIBLE, 0, 0,
                                   1200, 900, nullptr, nullptr, form.hInstance, nullptr));
    SetWindowLongPtrW(m_window.Get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

LRESULT CALLBACK WindowlessForm::Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) noexcept {
    auto* const form = reinterpret_cast<WindowlessForm*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (id != WM_PAINT || !form) return DefWindowProcW(window, id, wParam, lParam);
    PAINTSTRUCT paint{};
    const HDC dc = BeginPaint(window, &paint);
    for (const auto& view : form->m_views)
        view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc, nullptr, nullptr, nullptr, 0);
    EndPaint(window, &paint);
    return 0;
}

}  // namespace bench
