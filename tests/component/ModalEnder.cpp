#include "ModalEnder.h"

#include <string_view>

namespace component {

namespace {

long g_ended = 0;

BOOL CALLBACK EndBox(HWND window, LPARAM) {
    wchar_t name[16] = L"";
    GetClassNameW(window, name, 16);
    if (std::wstring_view(name) != L"#32770") return TRUE;
    ++g_ended;
    PostMessageW(window, WM_CLOSE, 0, 0);
    return TRUE;
}

}  // namespace

ModalEnder::ModalEnder() : m_timer(SetTimer(nullptr, 0, USER_TIMER_MINIMUM, &OnTimer)) {}

ModalEnder::~ModalEnder() {
    KillTimer(nullptr, m_timer);
}

long ModalEnder::Ended() noexcept {
    return g_ended;
}

void ModalEnder::OnTimer(HWND, UINT, UINT_PTR, DWORD) {
    EndMenu();
    EnumThreadWindows(GetCurrentThreadId(), &EndBox, 0);
}

}  // namespace component
