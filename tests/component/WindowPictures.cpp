#include "WindowPictures.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "comkit/Handle.h"

namespace component {

namespace {

constexpr WORD BitmapMark = 0x4D42;
constexpr WORD BitsPerPixel = 32;

void Write(const std::string& file, const BITMAPINFOHEADER& format, const void* pixels) {
    const DWORD bytes = static_cast<DWORD>(format.biWidth) * static_cast<DWORD>(format.biHeight) * (BitsPerPixel / 8);
    BITMAPFILEHEADER header{};
    header.bfType = BitmapMark;
    header.bfOffBits = sizeof(header) + sizeof(format);
    header.bfSize = header.bfOffBits + bytes;
    std::ofstream out(file, std::ios::binary);
    out.write(reinterpret_cast<const char*>(&header), sizeof(header));
    out.write(reinterpret_cast<const char*>(&format), sizeof(format));
    out.write(static_cast<const char*>(pixels), static_cast<std::streamsize>(bytes));
    EXPECT_TRUE(out.good()) << file;
}

}  // namespace

void LeavePicture(HWND window, const std::string& name) {
    const char* const folder = std::getenv("KIV_PICTURES");
    if (!folder) return;
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_UPDATENOW | RDW_ALLCHILDREN);
    RECT area{};
    GetWindowRect(window, &area);
    const comkit::UniqueMemoryDc memory(CreateCompatibleDC(nullptr));
    BITMAPINFO format{};
    format.bmiHeader.biSize = sizeof(format.bmiHeader);
    format.bmiHeader.biWidth = area.right - area.left;
    format.bmiHeader.biHeight = area.bottom - area.top;
    format.bmiHeader.biPlanes = 1;
    format.bmiHeader.biBitCount = BitsPerPixel;
    void* pixels = nullptr;
    const comkit::UniqueBitmap bitmap(CreateDIBSection(memory.Get(), &format, DIB_RGB_COLORS, &pixels, nullptr, 0));
    ASSERT_TRUE(bitmap);
    const comkit::GdiSelection selection(memory.Get(), bitmap.Get());
    const HDC source = GetWindowDC(window);
    BitBlt(memory.Get(), 0, 0, format.bmiHeader.biWidth, format.bmiHeader.biHeight, source, 0, 0, SRCCOPY);
    ReleaseDC(window, source);
    GdiFlush();
    Write(std::string(folder) + "/" + name + ".bmp", format.bmiHeader, pixels);
}

}  // namespace component
