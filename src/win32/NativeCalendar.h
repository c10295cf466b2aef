// Month calendar: the native one, without theme (a themed one ignores most of its colours), as large as it needs.
//
// The listener hears one click for each choice of the user: a day (also the one that is chosen already), the today
// line, another month by the title's arrows or menus, a key. The native notifications for these differ between
// Windows versions and Wine.
#pragma once

#include "win32/ChildWidget.h"

namespace kiv::win32 {

class NativeCalendar final : public WidgetOf<Calendar> {
public:
    NativeCalendar(std::shared_ptr<SurfaceContext> context, WidgetWindow& parent);

    CivilDate Value() const override;
    void SetValue(const CivilDate& date) override;
    OleColor MonthBackColor() const override { return m_monthBack; }
    void SetMonthBackColor(OleColor color) override;
    OleColor TitleBackColor() const override { return m_titleBack; }
    void SetTitleBackColor(OleColor color) override;
    OleColor TitleForeColor() const override { return m_titleFore; }
    void SetTitleForeColor(OleColor color) override;
    OleColor TrailingForeColor() const override { return m_trailingFore; }
    void SetTrailingForeColor(OleColor color) override;
    bool ShowToday() const override { return m_bShowToday; }
    void SetShowToday(bool show) override;
    int StartOfWeek() const override { return m_lStartOfWeek; }
    void SetStartOfWeek(int day) override;
    void TakeFocus() override { PutFocus(); }

    void OnSystemColorsChanged() override { OnColorChanged(); }

private:
    WindowDescription Describe() const override;
    bool NeedsThemeOff() const noexcept override { return true; }
    void OnOpened() override;
    void KeepState() override;
    Rect EffectiveBounds() const override;
    void OnColorChanged() override;
    void OnFontChanged() override { MoveWindowToBounds(); }
    void OnEnabledChanged() override { OnColorChanged(); }
    AccessibleFacts Access() const override;
    void OnNotify(const NMHDR& header) override;
    LRESULT RunNative(NativeWindow& native, const Message& message) override;
    void AfterNative(const Message& message) override;

    void ApplyColor(WPARAM part, COLORREF wanted) const;
    void ApplyStartOfWeek() const;
    void ApplyValue() const;
    void ShowHiddenParts(const Message& message) const;
    void NoteSelectionChange();
    void ChooseByKey(const Message& message);

    CivilDate m_value;  ///< while there is a window: what it was when somebody was told or told us last
    OleColor m_monthBack = SystemColor::WindowBackground;
    OleColor m_titleBack = SystemColor::ActiveCaption;
    OleColor m_titleFore = SystemColor::CaptionText;
    OleColor m_trailingFore = SystemColor::GreyText;
    bool m_bShowToday = true;
    int m_lStartOfWeek = 1;
    bool m_bPressingDay = false;          ///< the left button is down on a day or the today line
    bool m_bChangedWhilePressed = false;  ///< and the selection has moved already
};

}  // namespace kiv::win32
