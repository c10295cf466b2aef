// What the surface and its children have in common as windows: turning input messages into calls to the listener,
// handing notifications that a parent window receives to the child that they are about, and telling things in an order
// that survives the listener destroying everything.
//
// A message goes this way: input is told first (the listener may alter or swallow keys), then the native code runs,
// then what it notified is told: focus, change, click, double click.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>

#include "platform/Widgets.h"
#include "win32/NativeWindow.h"
#include "win32/SurfaceContext.h"

namespace kiv::win32 {

class WidgetWindow : public NativeWindow::Owner {
public:
    WidgetWindow(const WidgetWindow&) = delete;
    WidgetWindow& operator=(const WidgetWindow&) = delete;

    /// Null while there is no window.
    HWND Window() const noexcept { return m_pNative ? m_pNative->Handle() : nullptr; }
    const std::shared_ptr<SurfaceContext>& Context() const noexcept { return m_pContext; }

    LRESULT OnMessage(NativeWindow& native, const Message& original) final;

    /// What the core knows the window as.
    virtual Widget& Source() noexcept = 0;

protected:
    enum Pending : unsigned { PendingFocus = 1, PendingChange = 2, PendingClick = 4, PendingDblClick = 8 };

    explicit WidgetWindow(std::shared_ptr<SurfaceContext> context) noexcept : m_pContext(std::move(context)) {}
    virtual ~WidgetWindow();

    /// Throws comkit::ComError.
    void OpenWindow(const WindowDescription& description);
    /// Ends the window without a word to anybody; what the user may have changed is kept first.
    void CloseWindow() noexcept;
    /// The window's native code is running now.
    bool IsBusy() const noexcept { return m_pNative && !m_pNative->IsIdle(); }

    /// Notes what is to be told as soon as no native code is running.
    void Note(Pending pending) noexcept { m_ePending |= pending; }
    /// Tells it now if that is possible. *this may be gone afterwards.
    void TellPending();

    /// Complete handling of a message, instead of the native one. No listener may be called from here.
    virtual std::optional<LRESULT> HandleInstead(const Message&) { return std::nullopt; }
    /// Shows help for the widget; false: the message goes on to the parents.
    virtual bool AnswersHelp(const HELPINFO& /*help*/) { return false; }
    /// The native handling; a widget whose native class has none of its own for a message replaces it here.
    virtual LRESULT RunNative(NativeWindow& native, const Message& message) { return native.CallNative(message); }
    /// The native code has handled the message. No listener may be called from here.
    virtual void AfterNative(const Message&) {}
    /// The window is about to end: keep what lives in it.
    virtual void KeepState() {}
    /// A WM_COMMAND or WM_NOTIFY about this child. No listener may be called from here.
    virtual void OnCommand(WORD /*code*/) {}
    virtual void OnNotify(const NMHDR& /*header*/) {}
    /// The colours of a child that asks its parent for them: the brush, if it wants to answer.
    virtual HBRUSH OnControlColor(HDC /*dc*/) { return nullptr; }
    /// Other widgets live in this window.
    virtual bool IsParent() const noexcept { return false; }
    /// A click is the left button pressed and released inside.
    virtual bool ClicksByMouse() const noexcept { return false; }

private:
    std::optional<LRESULT> HandToChild(const Message& message);
    bool TellInput(NativeWindow& native, Message& message);
    bool TellKey(NativeWindow& native, Message& message);
    bool TellCharacter(NativeWindow& native, Message& message);
    bool TellMouse(NativeWindow& native, const Message& message);
    void NoteGestures(const Message& message);
    void NoteFocus(const Message& message);
    void TellOne(Pending pending);
    bool IsSecondPress(const Message& message) noexcept;

    std::shared_ptr<SurfaceContext> m_pContext;
    std::shared_ptr<NativeWindow> m_pNative;
    unsigned m_ePending = 0;
    bool m_bSwallowCharacter = false;
    bool m_bLeftDown = false;
    DWORD m_lLastPressTime = 0;
    POINT m_lastPress{};
};

}  // namespace kiv::win32
