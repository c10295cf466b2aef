// What a component imports: the functions that can be made to fail, with what they answer then, and the rest, with the
// reason why it is left alone.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <ole2.h>
#include <oleauto.h>
#include <olectl.h>
#include <uxtheme.h>

#include <cstddef>
#include <string_view>
#include <tuple>

#include "ImportFaults.h"

namespace component {

template <class F>
struct Signature;
template <class R, class... A>
struct Signature<R(WINAPI*)(A...)> {
    using Result = R;
};
#ifndef _WIN64  // elsewhere it is the same convention
template <class R, class... A>
struct Signature<R(__cdecl*)(A...)> {
    using Result = R;
};
#endif

/// A function, and what it answers where it fails.
template <class F>
struct FaultPoint {
    using Function = F;
    const char* name;
    FaultKind kind;
    typename Signature<F>::Result failure;
    DWORD lastError;
};

/// Answers 0, FALSE or nothing, unless said otherwise.
template <class F>
constexpr FaultPoint<F> System(const char* name, typename Signature<F>::Result failure = {}) {
    return {name, FaultKind::System, failure, ERROR_NO_SYSTEM_RESOURCES};
}
template <class F>
constexpr FaultPoint<F> Memory(const char* name, typename Signature<F>::Result failure = {}) {
    return {name, FaultKind::Memory, failure, ERROR_NOT_ENOUGH_MEMORY};
}

using Allocate = void*(__cdecl*)(std::size_t);
using AllocateCleared = void*(__cdecl*)(std::size_t, std::size_t);
using Reallocate = void*(__cdecl*)(void*, std::size_t);

inline constexpr LSTATUS NoKey = ERROR_NO_SYSTEM_RESOURCES;
inline constexpr int NoExtra = static_cast<int>(0x80000000);
inline constexpr UINT NoAlign = GDI_ERROR;

inline constexpr std::tuple FaultPoints{
    // registry
    System<decltype(&RegCreateKeyExW)>("RegCreateKeyExW", NoKey),
    System<decltype(&RegDeleteKeyW)>("RegDeleteKeyW", NoKey),
    System<decltype(&RegDeleteValueW)>("RegDeleteValueW", NoKey),
    System<decltype(&RegOpenKeyExW)>("RegOpenKeyExW", NoKey),
    System<decltype(&RegQueryInfoKeyW)>("RegQueryInfoKeyW", NoKey),
    System<decltype(&RegQueryValueExW)>("RegQueryValueExW", NoKey),
    System<decltype(&RegSetValueExW)>("RegSetValueExW", NoKey),
    // windows and what they are made of
    System<decltype(&AdjustWindowRectEx)>("AdjustWindowRectEx"),
    System<decltype(&ClientToScreen)>("ClientToScreen"),
    System<decltype(&CreateAcceleratorTableW)>("CreateAcceleratorTableW"),
    System<decltype(&CreateDialogIndirectParamW)>("CreateDialogIndirectParamW"),
    System<decltype(&CreateWindowExW)>("CreateWindowExW"),
    System<decltype(&DialogBoxIndirectParamW)>("DialogBoxIndirectParamW", -1),
    System<decltype(&GetAncestor)>("GetAncestor"),
    System<decltype(&GetClientRect)>("GetClientRect"),
    System<decltype(&GetDlgItem)>("GetDlgItem"),
    System<decltype(&GetMonitorInfoW)>("GetMonitorInfoW"),
    System<decltype(&GetWindowLongPtrW)>("GetWindowLongPtrW"),
    System<decltype(&GetWindowLongW)>("GetWindowLongW"),
    System<decltype(&GetWindowRect)>("GetWindowRect"),
    System<decltype(&GetWindowTextLengthW)>("GetWindowTextLengthW"),
    System<decltype(&GetWindowTextW)>("GetWindowTextW"),
    System<decltype(&InitCommonControlsEx)>("InitCommonControlsEx"),
    System<decltype(&InvalidateRect)>("InvalidateRect"),
    System<decltype(&LoadCursorW)>("LoadCursorW"),
    System<decltype(&LoadImageW)>("LoadImageW"),
    System<decltype(&MapWindowPoints)>("MapWindowPoints"),
    System<decltype(&MessageBoxW)>("MessageBoxW"),
    System<decltype(&MoveWindow)>("MoveWindow"),
    System<decltype(&RedrawWindow)>("RedrawWindow"),
    System<decltype(&RegisterClassExW)>("RegisterClassExW"),
    System<decltype(&ScreenToClient)>("ScreenToClient"),
    System<decltype(&SetFocus)>("SetFocus"),
    System<decltype(&SetParent)>("SetParent"),
    System<decltype(&SetWindowContextHelpId)>("SetWindowContextHelpId"),
    System<decltype(&SetWindowLongPtrW)>("SetWindowLongPtrW"),
    System<decltype(&SetWindowLongW)>("SetWindowLongW"),
    System<decltype(&SetWindowPos)>("SetWindowPos"),
    System<decltype(&SetWindowRgn)>("SetWindowRgn"),
    System<decltype(&SetWindowSubclass)>("SetWindowSubclass"),
    System<decltype(&SetWindowTextW)>("SetWindowTextW"),
    System<decltype(&SetWindowTheme)>("SetWindowTheme", E_FAIL),
    System<decltype(&SystemParametersInfoW)>("SystemParametersInfoW"),
    System<decltype(&VkKeyScanW)>("VkKeyScanW", -1),
    System<decltype(&WinHelpW)>("WinHelpW"),
    System<decltype(&SetTimer)>("SetTimer"),
    // drawing
    System<decltype(&BeginPaint)>("BeginPaint"),
    System<decltype(&BitBlt)>("BitBlt"),
    System<decltype(&CreateCompatibleDC)>("CreateCompatibleDC"),
    System<decltype(&CreateDIBSection)>("CreateDIBSection"),
    System<decltype(&CreateEnhMetaFileW)>("CreateEnhMetaFileW"),
    System<decltype(&CreateFontIndirectW)>("CreateFontIndirectW"),
    System<decltype(&CreateMetaFileW)>("CreateMetaFileW"),
    System<decltype(&CreateRectRgnIndirect)>("CreateRectRgnIndirect"),
    System<decltype(&DrawEdge)>("DrawEdge"),
    System<decltype(&DrawTextW)>("DrawTextW"),
    System<decltype(&ExcludeClipRect)>("ExcludeClipRect"),
    System<decltype(&ExtTextOutW)>("ExtTextOutW"),
    System<decltype(&FillRect)>("FillRect"),
    System<decltype(&FrameRect)>("FrameRect"),
    System<decltype(&GetBkColor)>("GetBkColor", CLR_INVALID),
    System<decltype(&GetDC)>("GetDC"),
    System<decltype(&GetMapMode)>("GetMapMode"),
    System<decltype(&GetObjectType)>("GetObjectType"),
    System<decltype(&GetCurrentObject)>("GetCurrentObject"),
    System<decltype(&GetStockObject)>("GetStockObject"),
    System<decltype(&GetTextColor)>("GetTextColor", CLR_INVALID),
    System<decltype(&GetTextExtentPoint32W)>("GetTextExtentPoint32W"),
    System<decltype(&GetTextMetricsW)>("GetTextMetricsW"),
    System<decltype(&LPtoDP)>("LPtoDP"),
    System<decltype(&SaveDC)>("SaveDC"),
    System<decltype(&SelectObject)>("SelectObject"),
    System<decltype(&SetBkColor)>("SetBkColor", CLR_INVALID),
    System<decltype(&SetBkMode)>("SetBkMode"),
    System<decltype(&SetDCBrushColor)>("SetDCBrushColor", CLR_INVALID),
    System<decltype(&SetMapMode)>("SetMapMode"),
    System<decltype(&SetStretchBltMode)>("SetStretchBltMode"),
    System<decltype(&SetTextAlign)>("SetTextAlign", NoAlign),
    System<decltype(&SetTextCharacterExtra)>("SetTextCharacterExtra", NoExtra),
    System<decltype(&SetTextColor)>("SetTextColor", CLR_INVALID),
    System<decltype(&SetViewportExtEx)>("SetViewportExtEx"),
    System<decltype(&SetViewportOrgEx)>("SetViewportOrgEx"),
    System<decltype(&SetWindowExtEx)>("SetWindowExtEx"),
    System<decltype(&SetWindowOrgEx)>("SetWindowOrgEx"),
    System<decltype(&StretchBlt)>("StretchBlt"),
    System<decltype(&StretchDIBits)>("StretchDIBits"),
    // resources, modules, names and times
    System<decltype(&FindResourceW)>("FindResourceW"),
    System<decltype(&GetDateFormatW)>("GetDateFormatW"),
    System<decltype(&GetLocaleInfoW)>("GetLocaleInfoW"),
    System<decltype(&GetModuleFileNameW)>("GetModuleFileNameW"),
    System<decltype(&GetModuleHandleW)>("GetModuleHandleW"),
    System<decltype(&GetProcAddress)>("GetProcAddress"),
    System<decltype(&GetTimeFormatW)>("GetTimeFormatW"),
    System<decltype(&GetTimeZoneInformation)>("GetTimeZoneInformation", TIME_ZONE_ID_INVALID),
    System<decltype(&LCMapStringW)>("LCMapStringW"),
    System<decltype(&LoadLibraryExW)>("LoadLibraryExW"),
    System<decltype(&LoadLibraryW)>("LoadLibraryW"),
    System<decltype(&LoadResource)>("LoadResource"),
    System<decltype(&LockResource)>("LockResource"),
    System<decltype(&SearchPathW)>("SearchPathW"),
    System<decltype(&SizeofResource)>("SizeofResource"),
    System<decltype(&VerQueryValueW)>("VerQueryValueW"),
    // objects of others
    System<decltype(&CLSIDFromProgID)>("CLSIDFromProgID", CO_E_CLASSSTRING),
    System<decltype(&CoCreateInstance)>("CoCreateInstance", REGDB_E_CLASSNOTREG),
    System<decltype(&LoadRegTypeLib)>("LoadRegTypeLib", TYPE_E_LIBNOTREGISTERED),
    System<decltype(&LoadTypeLibEx)>("LoadTypeLibEx", TYPE_E_CANTLOADLIBRARY),
    System<decltype(&OleCreateFontIndirect)>("OleCreateFontIndirect", E_FAIL),
    System<decltype(&OleTranslateColor)>("OleTranslateColor", E_INVALIDARG),
    System<decltype(&SafeArrayGetVartype)>("SafeArrayGetVartype", E_INVALIDARG),
    System<decltype(&SetErrorInfo)>("SetErrorInfo", E_FAIL),
    System<decltype(&StringFromGUID2)>("StringFromGUID2"),
    // what takes memory
    Memory<Allocate>("malloc"),
    Memory<AllocateCleared>("calloc"),
    Memory<Reallocate>("realloc"),
    Memory<decltype(&CoTaskMemAlloc)>("CoTaskMemAlloc"),
    Memory<decltype(&GlobalAlloc)>("GlobalAlloc"),
    Memory<decltype(&GlobalLock)>("GlobalLock"),
    Memory<decltype(&CreateDataAdviseHolder)>("CreateDataAdviseHolder", E_OUTOFMEMORY),
    Memory<decltype(&CreateErrorInfo)>("CreateErrorInfo", E_OUTOFMEMORY),
    Memory<decltype(&CreateOleAdviseHolder)>("CreateOleAdviseHolder", E_OUTOFMEMORY),
    Memory<decltype(&SafeArrayGetElement)>("SafeArrayGetElement", E_OUTOFMEMORY),
    Memory<decltype(&SysAllocStringLen)>("SysAllocStringLen"),
    Memory<decltype(&VariantChangeType)>("VariantChangeType", E_OUTOFMEMORY),
    Memory<decltype(&VariantChangeTypeEx)>("VariantChangeTypeEx", E_OUTOFMEMORY),
    Memory<decltype(&VariantCopyInd)>("VariantCopyInd", E_OUTOFMEMORY),
};

struct ImportsLeftAlone {
    const char* reason;
    std::string_view names;
};

inline constexpr ImportsLeftAlone LeftAlone[] = {
    {"gives back or ends what was begun: made to fail, it would keep it",
     "CloseEnhMetaFile CloseHandle CloseMetaFile CoTaskMemFree DeleteCriticalSection DeleteDC DeleteEnhMetaFile "
     "DeleteMetaFile DeleteObject DestroyAcceleratorTable DestroyIcon DestroyWindow EndDialog EndPaint FreeLibrary "
     "GlobalFree GlobalUnlock KillTimer RegCloseKey ReleaseCapture ReleaseDC RemoveWindowSubclass RestoreDC "
     "SysFreeString UnregisterClassW VariantClear free"},
    {"cannot fail with arguments that are right, or tells no failure apart from an answer",
     "CharLowerW CharUpperBuffW CharUpperW CompareStringOrdinal EnableWindow EnumChildWindows EqualRect GdiFlush "
     "GetActiveWindow GetCapture GetDeviceCaps GetDoubleClickTime GetFocus GetKeyState GetLastError GetLocalTime "
     "GetMessageTime "
     "GetNextDlgTabItem GetParent GetSysColor GetSystemMetrics GetTickCount64 GetWindow GetWindowThreadProcessId "
     "IntersectRect IsChild IsRectEmpty IsWindow IsWindowEnabled IsWindowVisible MonitorFromWindow MulDiv "
     "NotifyWinEvent OffsetRect PtInRect SafeArrayGetDim SafeArrayGetElemsize SetCapture SetLastError ShowWindow "
     "SubtractRect SysStringLen VariantInit lstrcmpiW"},
    {"hands messages on: the answer is whatever the other side says",
     "CallWindowProcW DefSubclassProc DefWindowProcW IsDialogMessageW SendMessageW"},
    {"locks and waiting for each other, which cannot fail; otherwise called by the compiler's libraries alone",
     "AcquireSRWLockExclusive CreateEventA EnterCriticalSection GetCurrentThreadId GetModuleHandleA "
     "GetSystemTimeAsFileTime InitializeCriticalSection LeaveCriticalSection LoadLibraryA "
     "RaiseException ReleaseSRWLockExclusive RtlCaptureContext RtlLookupFunctionEntry "
     "RtlUnwindEx RtlVirtualUnwind SetEvent Sleep SleepConditionVariableSRW TlsGetValue VirtualProtect "
     "VirtualQuery WaitForMultipleObjects WaitForSingleObject WakeAllConditionVariable"},
    {"the C library, without what allocates",
     "__iob_func _amsg_exit "
     "_errno _initterm _iob _lock _unlock _wcsicmp abort atoi exit fwrite "
     "memcmp memcpy memmove strcmp strlen strncmp towupper vfprintf "
     "wcslen"},
};

}  // namespace component
