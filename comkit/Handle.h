// Owners of system handles: one template, a line for each kind.
#pragma once

#include <windows.h>

#include <utility>

namespace comkit {

template <class T, auto Close>
class UniqueHandle {
public:
    UniqueHandle() noexcept = default;
    explicit UniqueHandle(T handle) noexcept : m_h(handle) {}
    UniqueHandle(UniqueHandle&& other) noexcept : m_h(std::exchange(other.m_h, T{})) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        if (this != &other) Reset(std::exchange(other.m_h, T{}));
        return *this;
    }
    ~UniqueHandle() { Reset(); }

    T Get() const noexcept { return m_h; }
    explicit operator bool() const noexcept { return m_h != T{}; }
    T Detach() noexcept { return std::exchange(m_h, T{}); }
    void Reset(T handle = T{}) noexcept {
        if (T old = std::exchange(m_h, handle); old != T{}) Close(old);
    }
    T* Put() noexcept {
        Reset();
        return &m_h;
    }

private:
    T m_h{};
};

namespace detail {
inline void CloseRegistryKey(HKEY key) noexcept {
    RegCloseKey(key);
}
inline void DestroyWindowHandle(HWND window) noexcept {
    DestroyWindow(window);
}
inline void DeleteGdiBrush(HBRUSH brush) noexcept {
    DeleteObject(brush);
}
inline void DeleteGdiFont(HFONT font) noexcept {
    DeleteObject(font);
}
inline void DeleteGdiBitmap(HBITMAP bitmap) noexcept {
    DeleteObject(bitmap);
}
inline void DeleteGdiPen(HPEN pen) noexcept {
    DeleteObject(pen);
}
inline void DeleteGdiRegion(HRGN region) noexcept {
    DeleteObject(region);
}
inline void DeleteMemoryDc(HDC dc) noexcept {
    DeleteDC(dc);
}
inline void CloseKernelHandle(HANDLE handle) noexcept {
    CloseHandle(handle);
}
inline void FreeLoadedModule(HMODULE module) noexcept {
    FreeLibrary(module);
}
}  // namespace detail

using UniqueRegKey = UniqueHandle<HKEY, &detail::CloseRegistryKey>;
using UniqueWindow = UniqueHandle<HWND, &detail::DestroyWindowHandle>;
using UniqueBrush = UniqueHandle<HBRUSH, &detail::DeleteGdiBrush>;
using UniqueFont = UniqueHandle<HFONT, &detail::DeleteGdiFont>;
using UniqueBitmap = UniqueHandle<HBITMAP, &detail::DeleteGdiBitmap>;
using UniquePen = UniqueHandle<HPEN, &detail::DeleteGdiPen>;
using UniqueRegion = UniqueHandle<HRGN, &detail::DeleteGdiRegion>;
using UniqueMemoryDc = UniqueHandle<HDC, &detail::DeleteMemoryDc>;
using UniqueKernelHandle = UniqueHandle<HANDLE, &detail::CloseKernelHandle>;
using UniqueModule = UniqueHandle<HMODULE, &detail::FreeLoadedModule>;

/// A window's or the screen's device context, released to where it came from.
class WindowDc {
public:
    explicit WindowDc(HWND window) noexcept : m_window(window), m_dc(GetDC(window)) {}
    WindowDc(const WindowDc&) = delete;
    WindowDc& operator=(const WindowDc&) = delete;
    ~WindowDc() {
        if (m_dc) ReleaseDC(m_window, m_dc);
    }
    HDC Get() const noexcept { return m_dc; }

private:
    HWND m_window;
    HDC m_dc;
};

/// Selects an object into a device context and puts the former one back.
class GdiSelection {
public:
    GdiSelection(HDC dc, HGDIOBJ object) noexcept : m_dc(dc), m_former(SelectObject(dc, object)) {}
    GdiSelection(const GdiSelection&) = delete;
    GdiSelection& operator=(const GdiSelection&) = delete;
    ~GdiSelection() { SelectObject(m_dc, m_former); }

private:
    HDC m_dc;
    HGDIOBJ m_former;
};

}  // namespace comkit
