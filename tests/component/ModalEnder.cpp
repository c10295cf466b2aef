#include "ModalEnder.h"

#include <string>

namespace component {

namespace {

BOOL CALLBACK EndBox(HWND window, LPARAM) {
    wchar_t name[16] = L"";
    GetClassNameW(window, name, 16);
    if (std::wstring(name) == L"#32770") PostMessageW(window, WM_CLOSE, 0, 0);
    return TRUE;
}

}  // namespace

ModalEnder::ModalEnder() : m_timer(SetTimer(nullptr, 0, USER_TIMER_MINIMUM, &OnTimer)) {}

ModalEnder::~ModalEnder() {
    KillTimer(nullptr, m_timer);
}

void ModalEnder::OnTimer(HWND, UINT, UINT_PTR, DWORD) {
    EndMenu();
    EnumThreadWindows(GetCurrentThreadId(), &EndBox, 0);
}

}  // namespace component
