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
#include "win32/HostedSurface.h"
#include "win32/LabelAccess.h"

namespace kiv::win32 {

class LabelSurface final : public LabelArea, public HostedSurface {
public:
    /// The surface starts inactive, enabled, visible, with no size and the default font and colours.
    explicit LabelSurface(WindowlessSite& site);
    ~LabelSurface() override;
    LabelSurface(const LabelSurface&) = delete;
    LabelSurface& operator=(const LabelSurface&) = delete;

    bool IsActive() const noexcept;
    /// In the parent's or the container's window.
    RECT PixelRect() const noexcept;

    // HostedSurface
    ControlArea& Area() noexcept override { return *this; }
    void Activate(HWND parent, const RECT& pixels) override;
    void Deactivate() noexcept override;
    HWND Window() const noexcept override;
    void SetPixelRect(const RECT& pixels) override;
    void SetSizeFromContainer(const Size& twips) override;
    int Dpi() const noexcept override;
    void Draw(HDC dc, const RECT& bounds) override;
    bool CanBeWindowless() const noexcept override { return true; }
    void ActivateWindowless(HWND containerWindow, const RECT& pixels) override;
    std::optional<RECT> WindowlessPlace() const noexcept override;
    std::optional<LRESULT> OnWindowMessage(UINT id, WPARAM wParam, LPARAM lParam) override;

    /// For a container that asks the control itself, as it must where there is no window. Outlives the surface.
    comkit::ComPtr<IAccessible> Access() const;

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
