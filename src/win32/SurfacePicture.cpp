#include "win32/SurfacePicture.h"

#include "comkit/Errors.h"
#include "comkit/Handle.h"

namespace kiv::win32 {

namespace {

/// A picture to draw into, as large as a window. It is one of no device, so that every device takes it: a printer need
/// not take the screen's own kind.
class Canvas {
public:
    explicit Canvas(const SIZE& size) noexcept
        : m_size(size), m_dc(CreateCompatibleDC(nullptr)), m_bitmap(Make()), m_selection(m_dc.Get(), m_bitmap.Get()) {}
    HDC Dc() const noexcept { return m_dc.Get(); }

    /// Throws comkit::ComError where there was no memory for the picture.
    void StretchTo(HDC dc, const RECT& bounds) const {
        if (!m_pBits) throw comkit::ComError(E_OUTOFMEMORY);
        const SIZE size{bounds.right - bounds.left, bounds.bottom - bounds.top};
        GdiFlush();
        if (GetObjectType(dc) == OBJ_METADC) {
            // Wine plays an old metafile's bits from the wrong place when there are more than 64 KB of them.
            StretchBlt(dc, bounds.left, bounds.top, size.cx, size.cy, Dc(), 0, 0, m_size.cx, m_size.cy, SRCCOPY);
        } else {
            StretchDIBits(dc, bounds.left, bounds.top, size.cx, size.cy, 0, 0, m_size.cx, m_size.cy, m_pBits, &m_info,
                          DIB_RGB_COLORS, SRCCOPY);
        }
    }

private:
    HBITMAP Make() noexcept {
        m_info.bmiHeader = {sizeof(BITMAPINFOHEADER), m_size.cx, m_size.cy, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
        return CreateDIBSection(nullptr, &m_info, DIB_RGB_COLORS, &m_pBits, nullptr, 0);
    }

    SIZE m_size;
    BITMAPINFO m_info{};
    void* m_pBits = nullptr;
    comkit::UniqueMemoryDc m_dc;
    comkit::UniqueBitmap m_bitmap;
    comkit::GdiSelection m_selection;
};

// Each window into a bitmap of its own: Wine's buttons clip wrongly in a device context whose origin was moved.
void PaintClient(HWND window, HDC dc, POINT origin) {
    RECT inside{};
    GetClientRect(window, &inside);
    const Canvas canvas({inside.right, inside.bottom});
    SendMessageW(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.Dc()), 0);
    SendMessageW(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(canvas.Dc()), PRF_CLIENT);
    BitBlt(dc, origin.x, origin.y, inside.right, inside.bottom, canvas.Dc(), 0, 0, SRCCOPY);
}

// Window by window: WM_PRINT, which could do it all in one, leaves out children and borders under Wine.
void PaintTree(HWND window, HDC dc, POINT origin) {
    RECT place{};
    GetWindowRect(window, &place);
    POINT client{0, 0};
    ClientToScreen(window, &client);
    if (client.x != place.left || client.y != place.top) {
        RECT edge{origin.x, origin.y, origin.x + place.right - place.left, origin.y + place.bottom - place.top};
        DrawEdge(dc, &edge, EDGE_SUNKEN, BF_RECT);
    }
    PaintClient(window, dc, {origin.x + client.x - place.left, origin.y + client.y - place.top});
    const HWND first = GetWindow(window, GW_CHILD);
    for (HWND child = first ? GetWindow(first, GW_HWNDLAST) : nullptr; child; child = GetWindow(child, GW_HWNDPREV)) {
        if (!(GetWindowLongPtrW(child, GWL_STYLE) & WS_VISIBLE)) continue;
        RECT childPlace{};
        GetWindowRect(child, &childPlace);
        PaintTree(child, dc, {origin.x + childPlace.left - place.left, origin.y + childPlace.top - place.top});
    }
}

}  // namespace

void DrawWindowTree(HWND window, HDC dc, const RECT& bounds) {
    RECT place{};
    GetWindowRect(window, &place);
    const SIZE size{place.right - place.left, place.bottom - place.top};
    // Through a bitmap: native children know no other scale than pixels.
    const Canvas canvas(size);
    PaintTree(window, canvas.Dc(), {0, 0});
    SetStretchBltMode(dc, HALFTONE);
    canvas.StretchTo(dc, bounds);
}

}  // namespace kiv::win32
