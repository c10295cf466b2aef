#include "win32/WidgetWindow.h"

#include <windowsx.h>

#include <cstdint>
#include <cstdlib>

#include "win32/Dpi.h"
#include "win32/InputMessages.h"

namespace kiv::win32 {

WidgetWindow::~WidgetWindow() {
    if (m_pNative) m_pNative->Retire();
}

void WidgetWindow::OpenWindow(const WindowDescription& description) {
    m_ePending = 0;
    m_bSwallowCharacter = m_bLeftDown = false;
    m_pNative = NativeWindow::Create(*this, description);
}

void WidgetWindow::CloseWindow() noexcept {
    if (Window()) KeepState();
    if (m_pNative) m_pNative->Retire();
    m_pNative.reset();
    m_ePending = 0;
}

LRESULT WidgetWindow::OnMessage(NativeWindow& native, const Message& original) {
    // Keeps the context for as long as this message needs it: *this may go at any call to the listener.
    const std::shared_ptr<NativeWindow> held = native.shared_from_this();
    if (original.id == WM_DESTROY && original.window == native.Handle()) KeepState();
    if (IsParent()) {
        if (const auto result = HandToChild(original)) return *result;
    }
    if (original.id == WM_HELP) {
        const auto* const help = reinterpret_cast<const HELPINFO*>(original.lParam);
        if (help && AnswersHelp(*help)) return TRUE;
    }
    if (const auto result = HandleInstead(original)) return *result;

    Message message = original;
    if (!TellInput(native, message)) return 0;
    const LRESULT result = RunNative(native, message);
    if (!native.IsLive()) return result;
    NoteFocus(message);
    NoteGestures(message);
    AfterNative(message);
    if (native.IsIdle()) TellPending();
    return result;
}

std::optional<LRESULT> WidgetWindow::HandToChild(const Message& message) {
    HWND about = nullptr;
    switch (message.id) {
        case WM_NOTIFY:
            // Any program may send it, and without the structure, too.
            if (const auto* const header = reinterpret_cast<const NMHDR*>(message.lParam)) about = header->hwndFrom;
            break;
        case WM_COMMAND:
        case WM_CTLCOLORBTN:
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLOREDIT:
            about = reinterpret_cast<HWND>(message.lParam);
            break;
        default:
            return std::nullopt;
    }
    auto* const child = about ? static_cast<WidgetWindow*>(NativeWindow::OwnerOf(about)) : nullptr;
    if (!child || child == this) return std::nullopt;
    if (message.id == WM_NOTIFY) {
        child->OnNotify(*reinterpret_cast<const NMHDR*>(message.lParam));
    } else if (message.id == WM_COMMAND) {
        child->OnCommand(HIWORD(message.wParam));
    } else {
        const HBRUSH brush = child->OnControlColor(reinterpret_cast<HDC>(message.wParam));
        return brush ? std::optional(reinterpret_cast<LRESULT>(brush)) : std::nullopt;
    }
    if (!child->IsBusy()) child->TellPending();
    return 0;
}

/// False: the message is not for the native code, or the window has ended.
bool WidgetWindow::TellInput(NativeWindow& native, Message& message) {
    if (m_pContext->deactivating) return true;
    if (IsKeyMessage(message.id)) return TellKey(native, message);
    if (message.id == WM_CHAR) return TellCharacter(native, message);
    if (IsMouseMessage(message.id)) return TellMouse(native, message);
    return true;
}

bool WidgetWindow::TellKey(NativeWindow& native, Message& message) {
    const bool down = message.id == WM_KEYDOWN || message.id == WM_SYSKEYDOWN;
    if (down) m_bSwallowCharacter = false;
    WidgetListener* const listener = m_pContext->listener;
    if (!listener) return true;
    auto code = static_cast<std::int16_t>(message.wParam);
    if (down) {
        listener->OnKeyDown(Source(), code, ShiftState());
    } else {
        listener->OnKeyUp(Source(), code, ShiftState());
    }
    if (!native.IsLive()) return false;
    // The key's character is on its way already.
    if (down && code == 0) m_bSwallowCharacter = true;
    message.wParam = static_cast<std::uint16_t>(code);
    return code != 0;
}

bool WidgetWindow::TellCharacter(NativeWindow& native, Message& message) {
    if (m_bSwallowCharacter) return false;
    WidgetListener* const listener = m_pContext->listener;
    if (!listener) return true;
    auto code = static_cast<std::int16_t>(message.wParam);
    listener->OnKeyPress(Source(), code);
    if (!native.IsLive()) return false;
    message.wParam = static_cast<std::uint16_t>(code);
    return code != 0;
}

bool WidgetWindow::TellMouse(NativeWindow& native, const Message& message) {
    const MouseInput input = ReadMouseMessage(message);
    if (input.action == MouseAction::Down) {
        if (SurfaceSite* const site = m_pContext->site) site->OnMouseActivate();
        if (!native.IsLive()) return false;
    }
    WidgetListener* const listener = m_pContext->listener;
    if (!listener) return true;
    POINT position = input.position;
    if (message.window != native.Handle()) MapWindowPoints(message.window, native.Handle(), &position, 1);
    const int dpi = m_pContext->dpi;
    const MouseArgs args{
        input.button, input.shift, {TwipsFromPixels(position.x, dpi), TwipsFromPixels(position.y, dpi)}};
    listener->OnMouse(Source(), input.action, args);
    return native.IsLive();
}

void WidgetWindow::NoteGestures(const Message& message) {
    if (message.id == WM_LBUTTONDOWN || message.id == WM_LBUTTONDBLCLK) {
        m_bLeftDown = true;
        if (IsSecondPress(message)) Note(PendingDblClick);
    } else if (message.id == WM_LBUTTONUP && m_bLeftDown) {
        m_bLeftDown = false;
        RECT inside{};
        GetClientRect(message.window, &inside);
        if (ClicksByMouse() && PtInRect(&inside, {GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)}))
            Note(PendingClick);
    }
}

// Some native classes (the month calendar under Wine) know no double-click message.
bool WidgetWindow::IsSecondPress(const Message& message) noexcept {
    const auto time = static_cast<DWORD>(GetMessageTime());
    const POINT here{GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)};
    const bool second =
        message.id == WM_LBUTTONDBLCLK || (m_lLastPressTime != 0 && time - m_lLastPressTime <= GetDoubleClickTime() &&
                                           std::abs(here.x - m_lastPress.x) <= GetSystemMetrics(SM_CXDOUBLECLK) / 2 &&
                                           std::abs(here.y - m_lastPress.y) <= GetSystemMetrics(SM_CYDOUBLECLK) / 2);
    m_lLastPressTime = second ? 0 : time;
    m_lastPress = here;
    return second;
}

void WidgetWindow::NoteFocus(const Message& message) {
    if (message.id == WM_SETFOCUS) {
        m_pContext->focus = message.window;
    } else if (message.id == WM_KILLFOCUS) {
        m_pContext->focus = reinterpret_cast<HWND>(message.wParam);
    } else {
        return;
    }
    if (m_pContext->HasFocus() != m_pContext->focusTold) Note(PendingFocus);
}

void WidgetWindow::TellPending() {
    const std::shared_ptr<NativeWindow> native = m_pNative;
    while (native && native->IsLive() && native->IsIdle() && m_ePending) {
        const unsigned next = m_ePending & (~m_ePending + 1);
        m_ePending &= ~next;
        if (!m_pContext->deactivating) TellOne(static_cast<Pending>(next));
    }
}

void WidgetWindow::TellOne(Pending pending) {
    if (pending == PendingFocus) {
        const bool inside = m_pContext->HasFocus();
        if (inside == m_pContext->focusTold) return;
        m_pContext->focusTold = inside;
        if (SurfaceSite* const site = m_pContext->site) site->OnFocus(inside);
        return;
    }
    WidgetListener* const listener = m_pContext->listener;
    if (!listener) return;
    if (pending == PendingChange) listener->OnChange(Source());
    if (pending == PendingClick) listener->OnClick(Source());
    if (pending == PendingDblClick) listener->OnDblClick(Source());
}

}  // namespace kiv::win32
