// One native window, together with the windows that it makes inside itself (spin buttons, edit fields), seen through
// the window procedures put before theirs.
//
// The owner gets every message first and calls CallNative() for the native handling. While native code is running,
// nothing that could end in the owner's destruction may be called: the owner notes what it has to tell and tells it
// when IsIdle() again. A window that is retired while its native code is still on the stack (a menu of its own, say)
// is hidden and ends when that code has returned, so that no native procedure returns into freed memory.
//
// An exception that leaves the owner's handling ends here, and the message counts as handled.
#pragma once

#include <windows.h>

#include <memory>

namespace kiv::win32 {

class AccessibleSubject;

struct Message {
    HWND window;  ///< the window itself or one inside it
    UINT id;
    WPARAM wParam;
    LPARAM lParam;
};

struct WindowDescription {
    const wchar_t* className;
    const wchar_t* text;
    DWORD style;
    DWORD extendedStyle;
    RECT place;  ///< in the parent's client area
    HWND parent;
    bool hasInnerWindows;  ///< the native code makes windows of its own inside: they count as this one
};

class NativeWindow final : public std::enable_shared_from_this<NativeWindow> {
public:
    class Owner {
    public:
        virtual LRESULT OnMessage(NativeWindow& native, const Message& message) = 0;
        /// What accessibility clients get to know the window as; null where that is answered elsewhere.
        virtual const AccessibleSubject* Accessible() const noexcept { return nullptr; }

    protected:
        ~Owner() = default;
    };

    /// Throws comkit::ComError. The owner hears of no message of the creation itself.
    static std::shared_ptr<NativeWindow> Create(Owner& owner, const WindowDescription& description);

    NativeWindow(const NativeWindow&) = delete;
    NativeWindow& operator=(const NativeWindow&) = delete;
    ~NativeWindow() = default;

    /// Null once the window has ended or is retired.
    HWND Handle() const noexcept { return m_pOwner ? m_window : nullptr; }
    /// False once the window has ended or is retired: then the owner may be gone too.
    bool IsLive() const noexcept { return Handle() != nullptr; }
    /// No native code of this window is on the stack.
    bool IsIdle() const noexcept { return m_lDepth == 0; }

    LRESULT CallNative(const Message& message) noexcept;

    /// The owner hears no more.
    void Retire() noexcept;

    /// The owner of a child window; null when it has none.
    static Owner* OwnerOf(HWND window) noexcept;

private:
    NativeWindow(Owner& owner, bool hasInnerWindows) noexcept : m_pOwner(&owner), m_bHasInnerWindows(hasInnerWindows) {}
    void Hook(HWND window);
    void HookInnerWindows();
    LRESULT Dispatch(const Message& message);
    void DestroyIfDue() noexcept;
    LRESULT CallNative(WNDPROC native, const Message& message) noexcept;
    static LRESULT CALLBACK Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) noexcept;

    Owner* m_pOwner;
    bool m_bHasInnerWindows;
    bool m_bDestroying = false;
    HWND m_window = nullptr;
    int m_lDepth = 0;
    std::shared_ptr<NativeWindow> m_pSelf;  ///< the window's own hold on this object, until it has ended
};

}  // namespace kiv::win32
