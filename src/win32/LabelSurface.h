// The area of a control made of labels, on the Windows API. It draws its labels itself: in a window of its own, in a
// place of the container's window, or, inactive, wherever the container wants a picture; all three by the same code.
//
// The state (size, captions, colours, font) is here, whether there is a window or not. One thread. A listener or site
// call may destroy the surface or end its activity.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string_view>

#include "platform/Labels.h"
#include "win32/ControlSurface.h"

namespace kiv::win32 {

/// Who sites the surface; outlives it. Every call may destroy the surface.
class LabelSite : public SurfaceSite {
public:
    /// A part of the picture is out of date, and there is no window of the surface's own to invalidate. Pixels from the
    /// surface's top left corner.
    virtual void OnInvalidate(const RECT& pixels) = 0;
    /// Without a window of its own the surface wants the mouse, or no longer does.
    virtual void OnCapture(bool wanted) = 0;
};

class LabelSurface final : public LabelArea {
public:
    /// The surface starts inactive, enabled, visible, with no size and the default font and colours.
    explicit LabelSurface(LabelSite& site);
    ~LabelSurface() override;
    LabelSurface(const LabelSurface&) = delete;
    LabelSurface& operator=(const LabelSurface&) = delete;

    /// Makes a window of its own; the listener's OnResize is called before, where pixels means another size than the
    /// present one. Does nothing while active. Throws comkit::ComError when there can be no window.
    void Activate(HWND parent, const RECT& pixels);
    /// The same in a place of the container's window.
    void ActivateWindowless(HWND containerWindow, const RECT& pixels);
    void Deactivate() noexcept;
    bool IsActive() const noexcept;
    /// Null while there is none of its own.
    HWND Window() const noexcept;
    /// In the parent's or the container's window.
    RECT PixelRect() const noexcept;

    void SetPixelRect(const RECT& pixels);
    void SetSizeFromContainer(const Size& twips);
    int Dpi() const noexcept;

    /// Draws everything into a rectangle of a device context, scaled where it has another size.
    void Draw(HDC dc, const RECT& bounds) const;

    /// A message that the container passes on while there is no window of its own; mouse positions are in the
    /// container's window. No value: not handled.
    std::optional<LRESULT> OnWindowMessage(UINT id, WPARAM wParam, LPARAM lParam);

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

    // ControlArea, LabelArea
    void SetSize(const Size& size) override;
    Size MeasureText(std::u16string_view text) const override;
    double TwipsPerPixel() const override;
    void SetListener(WidgetListener* listener) override;
    std::unique_ptr<Label> CreateLabel(std::u16string_view name) override;

private:
    class Impl;
    std::shared_ptr<Impl> m_pImpl;
};

}  // namespace kiv::win32
