// What ends the menus and boxes that a test opens.
#pragma once

#include <windows.h>

namespace component {

/// While it lives, menus and boxes of this thread are ended: by a timer, which goes off in their loops, too.
class ModalEnder {
public:
    ModalEnder();
    ModalEnder(const ModalEnder&) = delete;
    ModalEnder& operator=(const ModalEnder&) = delete;
    ~ModalEnder();
    /// Boxes so far, in this process.
    static long Ended() noexcept;

private:
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD);
    UINT_PTR m_timer;
};

}  // namespace component
