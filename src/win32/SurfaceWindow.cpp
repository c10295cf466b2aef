#include "win32/SurfaceWindow.h"

#include <algorithm>

#include "comkit/Errors.h"
#include "comkit/Handle.h"
#include "win32/ChildWidget.h"
#include "win32/Dpi.h"
#include "win32/InputMessages.h"
#include "win32/ModuleInstance.h"
#include "win32/PaintScope.h"
#include "win32/ShownColors.h"
#include "win32/SurfaceClass.h"
#include "win32/SurfacePicture.h"

namespace kiv::win32 {

namespace {

constexpr UINT DpiChangedAfterParent = 0x02E3;  // WM_DPICHANGED_AFTERPARENT, Windows 10

Size SizeOf(const SIZE& pixels, int dpi) noexcept {
    return {TwipsFromPixels(pixels.cx, dpi), TwipsFromPixels(pixels.cy, dpi)};
}

}  // namespace

ControlSurface::Impl::Impl(ControlSurface& surface, SurfaceSite& site)
    : WidgetWindow(std::make_shared<SurfaceContext>()), m_pSurface(&surface) {
    Context()->site = &site;
    Context()->dpi = DpiOf(nullptr);
}

void ControlSurface::Impl::Detach() noexcept {
    Context()->listener = nullptr;
    Context()->site = nullptr;
    Close();
    m_pSurface = nullptr;
}

void ControlSurface::Impl::Open(HWND parent, const RECT& pixels) {
    if (Window()) return;
    const auto held = shared_from_this();
    // The layout for this resolution and size comes first, so that the windows are made where they stay.
    UseDpi(DpiOf(parent));
    if (m_pSurface) TakePixelSize(pixels);
    if (!m_pSurface || Window()) return;
    try {
        OpenWindows(parent, pixels);
    } catch (...) {
        Close();
        throw;
    }
}

void ControlSurface::Impl::OpenWindows(HWND parent, const RECT& pixels) {
    OpenWindow({.className = SurfaceClass::Name(),
                .text = L"",
                .style = WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS | (m_bEnabled ? 0u : WS_DISABLED),
                .extendedStyle = WS_EX_CONTROLPARENT,
                .place = pixels,
                .parent = parent,
                .hasInnerWindows = false});
    Context()->window = Window();
    Context()->focus = nullptr;
    Context()->focusTold = false;
    for (ChildWidget* const child : Context()->children) child->Open();
    // Shown last: nothing is painted before everything is in place. Each window's background comes with its painting
    // and not in a round of its own before that, which has the system work out what is visible of each window once
    // more.
    if (m_bVisible)
        SetWindowPos(Window(), nullptr, 0, 0, 0, 0,
                     SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW | SWP_DEFERERASE);
}

void ControlSurface::Impl::Close() noexcept {
    const auto context = Context();
    context->deactivating = true;
    for (ChildWidget* const child : context->children) child->PrepareToClose();
    CloseWindow();
    for (ChildWidget* const child : context->children) child->DropWindow();
    context->window = nullptr;
    context->focus = nullptr;
    context->focusTold = false;
    context->deactivating = false;
}

void ControlSurface::Impl::Draw(HDC dc, const RECT& bounds) {
    if (Window()) {
        DrawWindowTree(Window(), dc, bounds);
        return;
    }
    // The windows are made for the moment, inside one that is never shown, and nobody is told anything of it.
    const comkit::UniqueWindow host(CreateWindowExW(0, SurfaceClass::Name(), L"", WS_POPUP, 0, 0, 0, 0, nullptr,
                                                    nullptr, ModuleInstance(), nullptr));
    if (!host) throw comkit::ComError(comkit::LastErrorResult());
    const auto context = Context();
    context->deactivating = true;
    try {
        OpenWindows(host.Get(), PixelEdges({0, 0, m_size.width, m_size.height}, context->dpi));
        DrawWindowTree(Window(), dc, bounds);
    } catch (...) {
        Close();
        throw;
    }
    Close();
}

void ControlSurface::Impl::UseDpi(int dpi) {
    if (Context()->dpi == dpi) return;
    Context()->dpi = dpi;
    for (ChildWidget* const child : Context()->children) child->OnDpiChanged();
    TellResize();
}

void ControlSurface::Impl::TellResize() {
    if (WidgetListener* const listener = Context()->listener) listener->OnResize();
}

void ControlSurface::Impl::TakePixelSize(const RECT& pixels) {
    const int dpi = Context()->dpi;
    // A size that only rounding makes different is kept, or each round trip would lose a little.
    const SIZE size = PixelSizeOf(pixels);
    if (PixelsFromTwips(m_size.width, dpi) == size.cx && PixelsFromTwips(m_size.height, dpi) == size.cy) return;
    TakeSize(SizeOf(size, dpi));
}

void ControlSurface::Impl::TakeSize(const Size& size) {
    if (m_size == size) return;
    m_size = size;
    TellResize();
}

void ControlSurface::Impl::SetOwnSize(const Size& size) {
    if (m_size == size) return;
    m_size = size;
    if (SurfaceSite* const site = Context()->site) site->OnSizeChanged(size);
}

WidgetWindow& ControlSurface::Impl::ParentFor(Widget& parent) {
    const auto& children = Context()->children;
    const auto found = std::ranges::find_if(children, [&](ChildWidget* child) { return &child->Source() == &parent; });
    return found != children.end() ? static_cast<WidgetWindow&>(**found) : *this;
}

std::optional<LRESULT> ControlSurface::Impl::HandleInstead(const Message& message) {
    switch (message.id) {
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT:
        case WM_PRINTCLIENT: {
            const PaintScope scope(message);
            RECT area{};
            GetClientRect(message.window, &area);
            FillFace(scope.Dc(), area, m_back);
            return 0;
        }
        case WM_SYSCOLORCHANGE:
        case WM_SETTINGCHANGE:
            OnSystemColorsChanged(message);
            return 0;
        default:
            return std::nullopt;
    }
}

// Only top-level windows get the message; the native children need it passed on.
void ControlSurface::Impl::OnSystemColorsChanged(const Message& message) {
    for (ChildWidget* const child : Context()->children) {
        if (!child->Window()) continue;
        SendMessageW(child->Window(), message.id, message.wParam, message.lParam);
        child->OnSystemColorsChanged();
    }
    RedrawWindow(message.window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

LRESULT ControlSurface::Impl::RunNative(NativeWindow& native, const Message& message) {
    if (message.id == WM_LBUTTONDOWN || message.id == WM_LBUTTONDBLCLK) SetCapture(message.window);
    if (message.id == WM_LBUTTONUP && GetCapture() == message.window) ReleaseCapture();
    return native.CallNative(message);
}

void ControlSurface::Impl::AfterNative(const Message& message) {
    if (message.id == DpiChangedAfterParent) UseDpi(DpiOf(message.window));
}

}  // namespace kiv::win32
