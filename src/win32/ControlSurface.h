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
#include "win32/HostedSurface.h"

namespace kiv::win32 {

class ControlSurface final : public Surface, public HostedSurface {
public:
    /// The surface starts without a window, enabled, visible, with no size and the default font and colours.
    explicit ControlSurface(SurfaceSite& site);
    ~ControlSurface() override;
    ControlSurface(const ControlSurface&) = delete;
    ControlSurface& operator=(const ControlSurface&) = delete;

    // HostedSurface
    ControlArea& Area() noexcept override { return *this; }
    void Activate(HWND parent, const RECT& pixels) override;
    void Deactivate() noexcept override;
    HWND Window() const noexcept override;
    void SetPixelRect(const RECT& pixels) override;
    void SetSizeFromContainer(const Size& twips) override;
    int Dpi() const noexcept override;
    void Draw(HDC dc, const RECT& bounds) override;
    /// The first and last visible, enabled child that the Tab key stops at; null where there is none.
    HWND FirstTabStop() const noexcept override;
    HWND LastTabStop() const noexcept;
    /// Walks the children with Tab and Shift+Tab. False: the key is not for the surface, or the walk leaves it.
    bool TranslateKey(const MSG& message) override;
    /// Carries out the access key of a child's caption: false where no visible, enabled child has it.
    bool PressMnemonic(wchar_t key) override;

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
