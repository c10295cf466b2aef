// What an accessibility client is told of a child: the system's own answer for the window's class, with the child's
// name, and with a role, a value and a state where the system knows none.
#pragma once

#include <windows.h>

#include <string>

namespace kiv::win32 {

/// A child as an accessibility client gets to know it.
struct AccessibleFacts {
    std::u16string name;
    long role;             ///< told where the system has only "client area" to say
    std::u16string value;  ///< told where the system has no value; empty is none
    long state = 0;        ///< told beside what the system says
};

class AccessibleSubject {
public:
    virtual AccessibleFacts Access() const = 0;

protected:
    ~AccessibleSubject() = default;
};

/// The subject behind a window at this moment; null when it has none any more.
using FindAccessibleSubject = const AccessibleSubject* (*)(HWND window) noexcept;

/// The answer to WM_GETOBJECT for a window's client area; 0 where accessibility is not to be had.
LRESULT AnswerAccess(HWND window, WPARAM wParam, FindAccessibleSubject find);

}  // namespace kiv::win32
