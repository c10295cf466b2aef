// The surface as a window: what ControlSurface keeps behind its interface.
#pragma once

#include <windows.h>

#include <memory>
#include <string_view>

#include "comkit/Handle.h"
#include "win32/ControlSurface.h"
#include "win32/GdiFont.h"
#include "win32/WidgetWindow.h"

namespace kiv::win32 {

class ControlSurface::Impl final : public WidgetWindow, public std::enable_shared_from_this<ControlSurface::Impl> {
public:
    Impl(ControlSurface& surface, SurfaceSite& site);
    ~Impl() override { Close(); }

    /// The surface itself is going.
    void Detach() noexcept;

    void Open(HWND parent, const RECT& pixels);
    void Close() noexcept;
    void TakePixelSize(const RECT& pixels);
    void TakeSize(const Size& size);
    void SetOwnSize(const Size& size);
    void UseDpi(int dpi);
    void Draw(HDC dc, const RECT& bounds);
    WidgetWindow& ParentFor(Widget& parent);

    Size m_size;
    bool m_bEnabled = true;
    bool m_bVisible = true;
    OleColor m_back = SystemColor::ButtonFace;
    OleColor m_fore = SystemColor::ButtonText;
    FontPtr m_pFont;

private:
    Widget& Source() noexcept override { return *m_pSurface; }
    std::optional<LRESULT> HandleInstead(const Message& message) override;
    LRESULT RunNative(NativeWindow& native, const Message& message) override;
    void AfterNative(const Message& message) override;
    bool IsParent() const noexcept override { return true; }
    bool ClicksByMouse() const noexcept override { return true; }

    void OpenWindows(HWND parent, const RECT& pixels);
    void TellResize();
    void OnSystemColorsChanged(const Message& message);

    ControlSurface* m_pSurface;
};

}  // namespace kiv::win32
