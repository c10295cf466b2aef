// Pixels of a white sheet after somebody drew on it.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdlib>
#include <functional>
#include <map>
#include <utility>
#include <vector>

#include "comkit/Handle.h"

namespace component {

class Sheet {
public:
    static constexpr int Width = 420;
    static constexpr int Height = 320;

    explicit Sheet(const std::function<void(HDC)>& draw) : Sheet({Width, Height}, draw) {}
    Sheet(const SIZE& size, const std::function<void(HDC)>& draw) {
        const comkit::WindowDc screen(nullptr);
        const comkit::UniqueMemoryDc dc(CreateCompatibleDC(screen.Get()));
        const comkit::UniqueBitmap bitmap(CreateCompatibleBitmap(screen.Get(), size.cx, size.cy));
        {
            const comkit::GdiSelection selected(dc.Get(), bitmap.Get());
            PatBlt(dc.Get(), 0, 0, size.cx, size.cy, WHITENESS);
            draw(dc.Get());
        }
        BITMAPINFO info{};
        info.bmiHeader = {sizeof(BITMAPINFOHEADER), size.cx, -size.cy, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        m_pixels.resize(static_cast<std::size_t>(size.cx) * static_cast<std::size_t>(size.cy));
        GetDIBits(dc.Get(), bitmap.Get(), 0, static_cast<UINT>(size.cy), m_pixels.data(), &info, DIB_RGB_COLORS);
        for (DWORD& pixel : m_pixels) pixel &= 0xFFFFFF;
    }
    /// Of pixels that came from elsewhere, 0x00RRGGBB each, line by line from the top.
    explicit Sheet(std::vector<DWORD> pixels) : m_pixels(std::move(pixels)) {}

    /// Of a sheet of the usual size.
    DWORD At(int x, int y) const {
        return m_pixels.at(static_cast<std::size_t>(y) * Width + static_cast<std::size_t>(x));
    }
    std::size_t PixelCount() const noexcept { return m_pixels.size(); }
    friend bool operator==(const Sheet&, const Sheet&) = default;
    std::size_t Colors() const {
        std::map<DWORD, int> seen;
        for (const DWORD pixel : m_pixels) ++seen[pixel];
        return seen.size();
    }
    /// Part of the pixels, 0 to 1, that differ visibly.
    double DifferenceTo(const Sheet& other) const {
        int different = 0;
        for (std::size_t i = 0; i < m_pixels.size(); ++i) different += Differs(m_pixels[i], other.m_pixels[i]);
        return static_cast<double>(different) / static_cast<double>(m_pixels.size());
    }

private:
    static bool Differs(DWORD a, DWORD b) {
        for (int shift = 0; shift < 24; shift += 8)
            if (std::abs(static_cast<int>((a >> shift) & 0xFF) - static_cast<int>((b >> shift) & 0xFF)) > 48)
                return true;
        return false;
    }
    std::vector<DWORD> m_pixels;
};

}  // namespace component
