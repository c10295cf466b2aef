// The control's surface and its children on the Windows API.
//
// Surface and children hold their whole state themselves (bounds, captions, values, colours, fonts, enabled, visible)
// from the moment they are created. Activate() makes one window for the surface and one for each child, each created
// once, at its final size and in its final state; Deactivate() ends the windows, and the state stays. While a window
// exists, each change reaches it at once, and what a user may have changed is read from it.
//
// One thread: the one that calls Activate. A listener or site call may destroy the surface or end its windows.
#pragma once

#include <windows.h>

#include <memory>
#include <string_view>

#include "platform/Widgets.h"

namespace kiv::win32 {

/// Who sites the surface; outlives it. Every call may destroy the surface.
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

class ControlSurface final : public Surface {
public:
    /// The surface starts without a window, enabled, visible, with no size and the default font and colours.
    explicit ControlSurface(SurfaceSite& site);
    ~ControlSurface() override;
    ControlSurface(const ControlSurface&) = delete;
    ControlSurface& operator=(const ControlSurface&) = delete;

    /// Makes the windows; the listener's OnResize is called before, where pixels means another size than the present
    /// one. Does nothing while active. Throws comkit::ComError when a window cannot be made; then there is none.
    void Activate(HWND parent, const RECT& pixels);
    void Deactivate() noexcept;
    /// Null while not active.
    HWND Window() const noexcept;

    /// The container gave the surface this place in its parent window. Moves the window; where the size in pixels is
    /// another than that of Bounds(), takes it over and calls the listener's OnResize.
    void SetPixelRect(const RECT& pixels);
    /// The container gave a size while there may be no window: as SetPixelRect, without moving anything.
    void SetSizeFromContainer(const Size& twips);
    /// Dots per inch of the window that the surface lives in; before the first activation those of the screen.
    int Dpi() const noexcept;

    /// The first and last visible, enabled child that the Tab key stops at; null where there is none.
    HWND FirstTabStop() const noexcept;
    HWND LastTabStop() const noexcept;
    /// Walks the children with Tab and Shift+Tab. False: the key is not for the surface, or the walk leaves it.
    bool TranslateKey(const MSG& message);
    /// Carries out the access key of a child's caption: false where no visible, enabled child has it.
    bool PressMnemonic(wchar_t key);

    /// Draws surface and children, as they stand, into a rectangle of a device context; also without windows.
    void Draw(HDC dc, const RECT& bounds);

    // Widget
    Rect Bounds() const override;
    void SetBounds(const Rect& bounds) override;
    bool IsEnabled() const override;
    void SetEnabled(bool enabled) override;
    bool IsVisible() const override;
    void SetVisible(bool visible) override;
    OleColor BackColor() const override;
    void SetBackColor(OleColor color) override;
    OleColor ForeColor() const override;
    void SetForeColor(OleColor color) override;
    FontPtr GetFont() const override;
    void SetFont(const FontPtr& font) override;

    // Surface
    void SetSize(const Size& size) override;
    Size MeasureText(std::u16string_view text) const override;
    double TwipsPerPixel() const override;
    int ScrollBarWidthPixels() const override;
    std::unique_ptr<Frame> CreateFrame(Widget& parent, std::u16string_view name) override;
    std::unique_ptr<CheckBox> CreateCheckBox(Widget& parent, std::u16string_view name) override;
    std::unique_ptr<Calendar> CreateCalendar(Widget& parent, std::u16string_view name) override;
    std::unique_ptr<TimeField> CreateTimeField(Widget& parent, std::u16string_view name) override;
    void SetListener(WidgetListener* listener) override;

private:
    class Impl;
    std::shared_ptr<Impl> m_pImpl;
};

}  // namespace kiv::win32
