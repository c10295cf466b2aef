// The state that every child keeps whether it has a window or not, and its transfer to the window.
//
// WidgetOf<Interface> puts it under one of the core's child interfaces.
#pragma once

#include <windows.h>

#include <memory>

#include "platform/Widgets.h"
#include "win32/AccessibleChild.h"
#include "win32/GdiFont.h"
#include "win32/WidgetWindow.h"

namespace kiv::win32 {

class ChildWidget : public WidgetWindow, public AccessibleSubject {
public:
    /// Makes the window inside the parent's, at its final size and in its final state. Throws comkit::ComError.
    void Open();
    /// Keeps what lives in the window; ends it at once only where that must not wait for the surface's end.
    void PrepareToClose() noexcept;
    void DropWindow() noexcept { CloseWindow(); }
    /// The surface's resolution is another one now.
    void OnDpiChanged();
    virtual void OnSystemColorsChanged() {}

    bool IsTabStop() const noexcept;
    /// The access key of the child's caption is the given one (upper case), and it can be pressed now.
    virtual bool AnswersMnemonic(wchar_t /*key*/) const { return false; }
    virtual void Press() {}
    const AccessibleSubject* Accessible() const noexcept override { return this; }

protected:
    ChildWidget(std::shared_ptr<SurfaceContext> context, WidgetWindow& parent);
    ~ChildWidget() override;

    const Rect& GetBounds() const noexcept { return m_bounds; }
    void PutBounds(const Rect& bounds);
    bool GetEnabled() const noexcept { return m_bEnabled; }
    void PutEnabled(bool enabled);
    bool GetVisible() const noexcept { return m_bVisible; }
    void PutVisible(bool visible);
    OleColor GetBack() const noexcept { return m_back; }
    void PutBack(OleColor color);
    OleColor GetFore() const noexcept { return m_fore; }
    void PutFore(OleColor color);
    const FontPtr& GetFontObject() const noexcept { return m_pFont; }
    void PutFont(const FontPtr& font);
    const WidgetHelp& GetHelp() const noexcept { return m_help; }
    void PutHelp(const WidgetHelp& help);
    /// *this may be gone afterwards.
    void PutFocus();

    /// Class, text and the styles beyond those of visibility, enabling and tab stop.
    virtual WindowDescription Describe() const = 0;
    /// The window was just made, with its font: give it the rest of the state.
    virtual void OnOpened() {}
    /// The present size, where it is not the one that was put.
    virtual Rect EffectiveBounds() const { return m_bounds; }
    virtual void OnColorChanged();
    virtual void OnFontChanged() {}
    virtual bool WantsTabStop() const noexcept { return true; }
    /// The native class ignores the widget's colours while it is themed.
    virtual bool NeedsThemeOff() const noexcept { return false; }
    virtual void OnEnabledChanged() {}
    std::optional<LRESULT> HandleInstead(const Message& message) override;

    bool AnswersHelp(const HELPINFO& help) override;
    void MoveWindowToBounds();
    HFONT FontHandle() const noexcept { return m_pGdiFont ? m_pGdiFont->Handle() : nullptr; }

private:
    void ApplyFont(bool redraw);
    void UpdateFont();

    WidgetWindow& m_parent;
    Rect m_bounds;
    bool m_bEnabled = true;
    bool m_bVisible = true;
    OleColor m_back = SystemColor::ButtonFace;
    OleColor m_fore = SystemColor::ButtonText;
    FontPtr m_pFont;
    GdiFontPtr m_pGdiFont;  ///< what the window has
    WidgetHelp m_help;
};

template <class Interface>
class WidgetOf : public Interface, public ChildWidget {
public:
    WidgetOf(std::shared_ptr<SurfaceContext> context, WidgetWindow& parent) : ChildWidget(std::move(context), parent) {}
    Rect Bounds() const override { return EffectiveBounds(); }
    void SetBounds(const Rect& bounds) override { PutBounds(bounds); }
    bool IsEnabled() const override { return GetEnabled(); }
    void SetEnabled(bool enabled) override { PutEnabled(enabled); }
    bool IsVisible() const override { return GetVisible(); }
    void SetVisible(bool visible) override { PutVisible(visible); }
    OleColor BackColor() const override { return GetBack(); }
    void SetBackColor(OleColor color) override { PutBack(color); }
    OleColor ForeColor() const override { return GetFore(); }
    void SetForeColor(OleColor color) override { PutFore(color); }
    FontPtr GetFont() const override { return GetFontObject(); }
    void SetFont(const FontPtr& font) override { PutFont(font); }
    WidgetHelp Help() const override { return GetHelp(); }
    void SetHelp(const WidgetHelp& help) override { PutHelp(help); }
    Widget& Source() noexcept override { return *this; }
};

}  // namespace kiv::win32
