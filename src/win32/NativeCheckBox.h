// Check box: a native one without theme, whose text and background therefore have the widget's colours. The native box
// does not check itself: a click comes here, and the value changes before anybody is told.
#pragma once

#include "win32/ChildWidget.h"

namespace kiv::win32 {

class NativeCheckBox final : public WidgetOf<CheckBox> {
public:
    using WidgetOf::WidgetOf;

    std::u16string Caption() const override { return m_strCaption; }
    void SetCaption(std::u16string_view caption) override;
    int Value() const override;
    void SetValue(int value) override;

    bool AnswersMnemonic(wchar_t key) const override;
    /// As a click with the mouse would. *this may be gone afterwards.
    void Press() override;

private:
    WindowDescription Describe() const override;
    bool NeedsThemeOff() const noexcept override { return true; }
    void OnOpened() override;
    void KeepState() override;
    void OnCommand(WORD code) override;
    HBRUSH OnControlColor(HDC dc) override;
    AccessibleFacts Access() const override;

    std::u16string m_strCaption;
    int m_lValue = 0;
};

}  // namespace kiv::win32
