// What a control's surface offers to those who embed it, whatever it is made of: it comes up in a place that a
// container gives it, follows that place, takes keys and can be drawn at any time.
//
// The state of a surface does not depend on whether it is active. One thread: the one that calls Activate. Any call to
// the site may destroy the surface or end its activity.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>

#include "platform/Widgets.h"

namespace kiv::win32 {

/// Who sites a surface; outlives it. Every call may destroy the surface.
class SurfaceSite {
public:
    virtual ~SurfaceSite() = default;
    /// The control changed its own size through SetSize; Bounds() has the new size already, the window has not. A
    /// container that agrees answers with SetPixelRect (at once or later).
    virtual void OnSizeChanged(const Size& twips) = 0;
    /// The keyboard focus came to the surface or one of its children from outside, or left them all.
    virtual void OnFocus(bool gained) = 0;
    /// A mouse button went down on the surface or one of its children, before anybody handles it.
    virtual void OnMouseActivate() = 0;
};

/// The site of a surface that can do without a window of its own.
class WindowlessSite : public SurfaceSite {
public:
    /// A part of the picture is out of date, and there is no window of the surface's own to invalidate. Pixels from the
    /// surface's top left corner.
    virtual void OnInvalidate(const RECT& pixels) = 0;
    /// What draws a part of the picture: with the place of the surface's top left corner in the device context.
    using Drawing = std::function<void(HDC dc, POINT origin)>;
    /// The same part can be drawn at once, if the container has a device context to give. False: it was not drawn.
    virtual bool OnDraw(const RECT& pixels, const Drawing& draw) = 0;
    /// Without a window of its own the surface wants the mouse, or no longer does.
    virtual void OnCapture(bool wanted) = 0;
    /// The surface was told that the user's settings are other ones.
    virtual void OnSettingsChanged() = 0;
};

class HostedSurface {
public:
    /// Size, colours, font, units.
    virtual ControlArea& Area() noexcept = 0;
    const ControlArea& Area() const noexcept { return const_cast<HostedSurface*>(this)->Area(); }

    /// Makes the windows; the listener's OnResize is called before, where pixels means another size than the present
    /// one. Does nothing while active. Throws comkit::ComError when a window cannot be made; then there is none.
    virtual void Activate(HWND parent, const RECT& pixels) = 0;
    virtual void Deactivate() noexcept = 0;
    /// Null while there is none of its own.
    virtual HWND Window() const noexcept = 0;

    /// The container gave the surface this place in its parent window. Moves the window; where the size in pixels is
    /// another than that of the area, takes it over and calls the listener's OnResize.
    virtual void SetPixelRect(const RECT& pixels) = 0;
    /// The container gave a size while there may be no window: as SetPixelRect, without moving anything.
    virtual void SetSizeFromContainer(const Size& twips) = 0;
    /// Dots per inch of the window that the surface lives in; before the first activation those of the screen.
    virtual int Dpi() const noexcept = 0;

    /// Draws everything, as it stands, into a rectangle of a device context; also while inactive.
    virtual void Draw(HDC dc, const RECT& bounds) = 0;

    /// Children that the Tab key stops at, and access keys in captions. A surface that has none leaves these alone.
    virtual HWND FirstTabStop() const noexcept { return nullptr; }
    virtual bool TranslateKey(const MSG& /*message*/) { return false; }
    virtual bool PressMnemonic(wchar_t /*key*/) { return false; }

    /// Life in a place of the container's window. A surface that needs a window of its own leaves these alone.
    virtual bool CanBeWindowless() const noexcept { return false; }
    /// As Activate, without a window.
    virtual void ActivateWindowless(HWND /*containerWindow*/, const RECT& /*pixels*/) {}
    /// Where it lives in the container's window; no value while it is inactive or has a window.
    virtual std::optional<RECT> WindowlessPlace() const noexcept { return std::nullopt; }
    /// A message that the container passes on; mouse positions are in the container's window. No value: not handled.
    virtual std::optional<LRESULT> OnWindowMessage(UINT /*id*/, WPARAM /*wParam*/, LPARAM /*lParam*/) {
        return std::nullopt;
    }

protected:
    ~HostedSurface() = default;
};

}  // namespace kiv::win32
