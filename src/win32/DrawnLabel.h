// A label that is drawn by the area that it lies in. It keeps its state and tells its owner what became out of date.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "platform/Labels.h"
#include "win32/GdiFont.h"
#include "win32/LabelPainter.h"

namespace kiv::win32 {

class DrawnLabel final : public Label {
public:
    class Owner {
    public:
        virtual void Invalidate(const Rect& bounds) = 0;
        virtual int ResolutionForLabels() const noexcept = 0;
        virtual void Forget(const DrawnLabel& label) noexcept = 0;
        /// Of a label that is shown: its picture is out of date.
        virtual void OnCaptionChanged(const DrawnLabel& label) = 0;

    protected:
        ~Owner() = default;
    };

    explicit DrawnLabel(std::shared_ptr<Owner> owner) : m_pOwner(std::move(owner)) {}
    ~DrawnLabel() override { m_pOwner->Forget(*this); }
    DrawnLabel(const DrawnLabel&) = delete;
    DrawnLabel& operator=(const DrawnLabel&) = delete;

    /// Fills the label's whole rectangle.
    void Draw(LabelPainter& painter) const;
    RECT PixelRect() const noexcept;

    Rect Bounds() const override { return m_bounds; }
    void SetBounds(const Rect& bounds) override;
    bool IsEnabled() const override { return m_bEnabled; }
    void SetEnabled(bool enabled) override { Change(m_bEnabled, enabled); }
    bool IsVisible() const override { return m_bVisible; }
    void SetVisible(bool visible) override;
    OleColor BackColor() const override { return m_back; }
    void SetBackColor(OleColor color) override { Change(m_back, color); }
    OleColor ForeColor() const override { return m_fore; }
    void SetForeColor(OleColor color) override { Change(m_fore, color); }
    FontPtr GetFont() const override { return m_pFont; }
    /// A font that was changed in place is taken over when it is set again.
    void SetFont(const FontPtr& font) override;

    WidgetHelp Help() const override { return m_help; }
    void SetHelp(const WidgetHelp& help) override { m_help = help; }

    std::u16string Caption() const override { return m_strCaption; }
    bool SetCaption(std::u16string_view caption) override;
    bool HasSunkenBorder() const override { return m_bSunken; }
    void SetSunkenBorder(bool sunken) override { Change(m_bSunken, sunken); }

private:
    template <class T>
    void Change(T& field, const T& value) {
        if (field == value) return;
        field = value;
        InvalidateIfShown();
    }
    void InvalidateIfShown() {
        if (m_bVisible) m_pOwner->Invalidate(m_bounds);
    }
    const GdiFont& DrawingFont() const;

    std::shared_ptr<Owner> m_pOwner;
    Rect m_bounds;
    mutable RECT m_pixels{};       ///< the same at m_lPixelsDpi
    mutable int m_lPixelsDpi = 0;  ///< 0: not worked out yet
    bool m_bEnabled = true;
    bool m_bVisible = true;
    bool m_bSunken = false;
    OleColor m_back = SystemColor::ButtonFace;
    OleColor m_fore = SystemColor::ButtonText;
    FontPtr m_pFont;
    std::u16string m_strCaption;
    WidgetHelp m_help;
    mutable GdiFontPtr m_pGdiFont;  ///< made at the first drawing
    mutable int m_lFontDpi = 0;
};

}  // namespace kiv::win32
