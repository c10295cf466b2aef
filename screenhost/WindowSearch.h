// Finding windows as a user would name them: by what is written on them, and by what lies under a point.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace screenhost {

/// Without ampersands.
std::string CaptionOf(HWND window);
std::wstring ClassOf(HWND window);
bool IsOfClass(HWND window, const wchar_t* className);
/// For messages: the caption in quotes, or the class.
std::string DescribeWindow(HWND window);

/// All visible windows inside of another one.
std::vector<HWND> Descendants(HWND root);
/// The first visible one. Throws TextError when there is none.
HWND ChildOfClass(HWND root, const wchar_t* className);
/// The window with this caption; the beginning is enough where it is the only one. Throws TextError.
HWND FindCaption(const std::vector<HWND>& windows, std::string caption);

/// The window that the mouse would meet at a point of the screen.
HWND WindowAt(HWND window, POINT screen);
/// Also false where a window round it is disabled.
bool IsReallyEnabled(HWND window);

}  // namespace screenhost
