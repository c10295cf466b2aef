#include "screenhost/WindowPicture.h"

#include <objidl.h>

// The declarations below use the minimum and maximum macros that the project turns off.
#include <algorithm>
namespace Gdiplus {
// NOLINTBEGIN(misc-unused-using-decls): gdiplus.h is who uses them
using std::max;
using std::min;
// NOLINTEND(misc-unused-using-decls)
}  // namespace Gdiplus
#include <gdiplus.h>

#include "comkit/Handle.h"
#include "screenhost/ErrorText.h"
#include "screenhost/TextFile.h"
#include "screenhost/Units.h"
#include "screenhost/WideText.h"

namespace screenhost {

namespace {

// {557CF406-1A04-11D3-9A73-0000F81EF32E}, the system's PNG encoder.
constexpr CLSID PngEncoder = {0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

class GdiplusSession {
public:
    GdiplusSession() {
        const Gdiplus::GdiplusStartupInput input;
        if (Gdiplus::GdiplusStartup(&m_token, &input, nullptr) != Gdiplus::Ok)
            throw TextError("pictures cannot be written on this system");
    }
    GdiplusSession(const GdiplusSession&) = delete;
    GdiplusSession& operator=(const GdiplusSession&) = delete;
    ~GdiplusSession() { Gdiplus::GdiplusShutdown(m_token); }

private:
    ULONG_PTR m_token = 0;
};

comkit::UniqueBitmap Capture(HWND window) {
    RECT frame{};
    GetWindowRect(window, &frame);
    const comkit::WindowDc screen(nullptr);
    const comkit::UniqueMemoryDc memory(CreateCompatibleDC(screen.Get()));
    comkit::UniqueBitmap bitmap(CreateCompatibleBitmap(screen.Get(), WidthOf(frame), HeightOf(frame)));
    if (!memory || !bitmap) throw TextError("there is no memory for the picture");
    const comkit::GdiSelection selection(memory.Get(), bitmap.Get());
    // What the window shows, even where another one lies over it.
    const HDC source = GetWindowDC(window);
    const BOOL copied = BitBlt(memory.Get(), 0, 0, WidthOf(frame), HeightOf(frame), source, 0, 0, SRCCOPY | CAPTUREBLT);
    ReleaseDC(window, source);
    if (!copied) throw TextError("the window cannot be copied");
    return bitmap;
}

}  // namespace

void SaveWindowPicture(HWND window, const std::string& file) {
    MakeFolderOf(file);
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    GdiFlush();
    const comkit::UniqueBitmap bitmap = Capture(window);
    const GdiplusSession session;
    Gdiplus::Bitmap picture(bitmap.Get(), nullptr);
    const Gdiplus::Status status = picture.Save(Wide(file).c_str(), &PngEncoder, nullptr);
    if (status != Gdiplus::Ok)
        throw TextError(file + ": the picture cannot be written (" + std::to_string(static_cast<int>(status)) + ")");
}

}  // namespace screenhost
