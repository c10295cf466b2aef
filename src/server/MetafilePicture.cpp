#include "server/MetafilePicture.h"

#include <cmath>

#include "comkit/Errors.h"
#include "comkit/Handle.h"
#include "server/Extent.h"

namespace kiv::server {

namespace {

struct PictureSize {
    SIZEL himetric;
    SIZE pixels;
};

PictureSize SizeOf(const win32::HostedSurface& surface) {
    const Rect bounds = surface.Area().Bounds();
    const double perPixel = surface.Area().TwipsPerPixel();
    return {HimetricOf(Size{bounds.width, bounds.height}),
            {static_cast<LONG>(std::lround(bounds.width / perPixel)),
             static_cast<LONG>(std::lround(bounds.height / perPixel))}};
}

void DeleteMetafile(HMETAFILE file) noexcept {
    DeleteMetaFile(file);
}
void DeleteEnhanced(HENHMETAFILE file) noexcept {
    DeleteEnhMetaFile(file);
}
void FreeGlobal(HGLOBAL memory) noexcept {
    GlobalFree(memory);
}
// A recording ends with the metafile in hand, wanted or not.
void AbandonRecording(HDC recording) noexcept {
    DeleteMetaFile(CloseMetaFile(recording));
}
void AbandonEnhancedRecording(HDC recording) noexcept {
    DeleteEnhMetaFile(CloseEnhMetaFile(recording));
}
using UniqueMetafile = comkit::UniqueHandle<HMETAFILE, &DeleteMetafile>;
using UniqueEnhanced = comkit::UniqueHandle<HENHMETAFILE, &DeleteEnhanced>;
using UniqueGlobal = comkit::UniqueHandle<HGLOBAL, &FreeGlobal>;
using Recording = comkit::UniqueHandle<HDC, &AbandonRecording>;
using EnhancedRecording = comkit::UniqueHandle<HDC, &AbandonEnhancedRecording>;

template <class Handle>
void ThrowIfNone(const Handle& handle) {
    if (!handle) throw comkit::ComError(E_OUTOFMEMORY);
}

}  // namespace

void MakeMetafilePicture(win32::HostedSurface& surface, STGMEDIUM& out) {
    const PictureSize size = SizeOf(surface);
    Recording recording(CreateMetaFileW(nullptr));
    ThrowIfNone(recording);
    // Whoever plays it sets the viewport: the picture fills the window from edge to edge.
    SetMapMode(recording.Get(), MM_ANISOTROPIC);
    SetWindowOrgEx(recording.Get(), 0, 0, nullptr);
    SetWindowExtEx(recording.Get(), size.pixels.cx, size.pixels.cy, nullptr);
    surface.Draw(recording.Get(), {0, 0, size.pixels.cx, size.pixels.cy});
    UniqueMetafile file(CloseMetaFile(recording.Detach()));
    ThrowIfNone(file);
    UniqueGlobal memory(GlobalAlloc(GMEM_MOVEABLE | GMEM_SHARE, sizeof(METAFILEPICT)));
    ThrowIfNone(memory);
    auto* picture = static_cast<METAFILEPICT*>(GlobalLock(memory.Get()));
    if (!picture) throw comkit::ComError(E_OUTOFMEMORY);
    *picture = {MM_ANISOTROPIC, size.himetric.cx, size.himetric.cy, file.Detach()};
    GlobalUnlock(memory.Get());
    out.tymed = TYMED_MFPICT;
    out.hMetaFilePict = memory.Detach();
}

void MakeEnhancedMetafile(win32::HostedSurface& surface, STGMEDIUM& out) {
    const PictureSize size = SizeOf(surface);
    const comkit::WindowDc screen(nullptr);
    const RECT frame{0, 0, size.himetric.cx, size.himetric.cy};
    EnhancedRecording recording(CreateEnhMetaFileW(screen.Get(), nullptr, &frame, nullptr));
    ThrowIfNone(recording);
    // In the units of its frame: the device's own millimetres need not be those that the control reckons with.
    SetMapMode(recording.Get(), MM_ANISOTROPIC);
    SetWindowExtEx(recording.Get(), size.himetric.cx, size.himetric.cy, nullptr);
    SetViewportExtEx(
        recording.Get(),
        MulDiv(size.himetric.cx, GetDeviceCaps(screen.Get(), HORZRES), 100 * GetDeviceCaps(screen.Get(), HORZSIZE)),
        MulDiv(size.himetric.cy, GetDeviceCaps(screen.Get(), VERTRES), 100 * GetDeviceCaps(screen.Get(), VERTSIZE)),
        nullptr);
    surface.Draw(recording.Get(), frame);
    UniqueEnhanced file(CloseEnhMetaFile(recording.Detach()));
    ThrowIfNone(file);
    out.tymed = TYMED_ENHMF;
    out.hEnhMetaFile = file.Detach();
}

}  // namespace kiv::server
