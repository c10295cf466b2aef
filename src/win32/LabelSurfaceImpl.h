// What LabelSurface consists of; for its own source files.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "win32/Dpi.h"
#include "win32/DrawnLabel.h"
#include "win32/GdiFont.h"
#include "win32/InputMessages.h"
#include "win32/LabelSurface.h"
#include "win32/NativeWindow.h"

namespace kiv::win32 {

class LabelSurface::Impl final : public DrawnLabel::Owner,
                                 public NativeWindow::Owner,
                                 public LabelAccessSource,
                                 public std::enable_shared_from_this<LabelSurface::Impl> {
public:
    Impl(LabelSurface& surface, WindowlessSite& site) : m_pSurface(&surface), m_pSite(&site), m_dpi(DpiOf(nullptr)) {}
    ~Impl() { Close(); }

    void Detach() noexcept {
        m_pListener = nullptr;
        Close();
        m_pSite = nullptr;
        m_pSurface = nullptr;
    }

    void Open(HWND parent, const RECT& pixels, bool windowless);
    void Close() noexcept;
    HWND Window() const noexcept { return m_pNative ? m_pNative->Handle() : nullptr; }
    void UseDpi(int dpi);
    void MoveTo(const RECT& pixels);
    void TakePixelRect(const RECT& pixels);
    void TakeSize(const Size& size);
    void SetOwnSize(const Size& size);
    RECT OwnArea() const noexcept { return PixelEdges({0, 0, m_size.width, m_size.height}, m_dpi); }
    void InvalidateAll() { Invalidate({0, 0, m_size.width, m_size.height}); }
    void DrawAt(HDC dc, POINT origin) const;
    /// For the parameter of WM_HELP, which any program may send without a structure, too.
    bool ShowHelpFor(LPARAM lParam) const;
    /// Colours or other settings of the system are other ones.
    void TakeSettings(UINT id);
    std::optional<LRESULT> HandleInput(UINT id, WPARAM wParam, LPARAM lParam);

    // DrawnLabel::Owner
    void Invalidate(const Rect& bounds) override;
    int ResolutionForLabels() const noexcept override { return m_dpi; }
    void Forget(const DrawnLabel& label) noexcept override {
        std::erase(m_labels, &label);
        if (m_pPressed == &label) m_pPressed = nullptr;
    }

    void OnCaptionChanged(const DrawnLabel& label) override;

    // NativeWindow::Owner
    LRESULT OnMessage(NativeWindow& native, const Message& message) override;

    // LabelAccessSource
    std::vector<Facts> LabelsForAccess() const override;
    Place PlaceForAccess() const noexcept override;

    LabelSurface* m_pSurface;
    WindowlessSite* m_pSite;
    WidgetListener* m_pListener = nullptr;
    Size m_size;
    int m_dpi;
    RECT m_place{};
    bool m_bActive = false;
    bool m_bEnabled = true;
    bool m_bVisible = true;
    OleColor m_back = SystemColor::ButtonFace;
    OleColor m_fore = SystemColor::ButtonText;
    FontPtr m_pFont;
    GdiFontPtr m_pGdiFont;  ///< for measuring, in this resolution; made when it is needed
    std::vector<DrawnLabel*> m_labels;

private:
    bool DrawAtOnce(const DrawnLabel& label);
    bool IsOverlapped(const DrawnLabel& label) const noexcept;
    void TellNameChanged(const DrawnLabel& label) const noexcept;
    void TellMouse(const MouseInput& input);
    std::optional<LRESULT> TellKey(UINT id, WPARAM wParam);
    Widget& SourceAt(POINT position) noexcept;
    bool IsPresent(const Widget* source) const noexcept;
    void Capture(bool wanted);

    std::shared_ptr<NativeWindow> m_pNative;
    HWND m_container = nullptr;    ///< where it lives while it has no window of its own
    Widget* m_pPressed = nullptr;  ///< where the left button went down: it gets the mouse until the button is up again
    bool m_bSecondPress = false;
    bool m_bSwallowCharacter = false;
    bool m_bCaptured = false;
};

}  // namespace kiv::win32
