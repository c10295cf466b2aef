// The set and get operations of KivShowDateTime's properties: what is compared, checked, stored, announced and shown.
//
// For use inside the control only; ShowControl is what others call. Errors to the caller are HostError.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Color.h"
#include "platform/Font.h"
#include "showcontrol/ShowControlBindings.h"
#include "showcontrol/ShowControlContext.h"
#include "showcontrol/ShowControlLayout.h"
#include "showcontrol/ShowDisplay.h"

namespace kiv {

// What a property takes.
bool IsShowMode(std::int32_t mode) noexcept;
bool IsBorderStyle(std::int32_t style) noexcept;
bool IsDelimiter(std::u16string_view text) noexcept;
/// Two fields, either of which may be empty.
bool IsAMPMFormat(std::u16string_view text) noexcept;

class ShowControlProperties {
public:
    ShowControlProperties(ShowControlContext& context, ShowDisplay& display, ShowControlLayout& layout,
                          ShowControlBindings& bindings)
        : m_context(context), m_display(display), m_layout(layout), m_bindings(bindings) {}

    OleColor BackColor() const;
    void SetBackColor(OleColor color);
    OleColor ForeColor() const;
    void SetForeColor(OleColor color);
    std::int32_t BorderStyle() const;
    void SetBorderStyle(std::int32_t style);
    std::u16string Caption() const;
    void SetCaption(std::u16string_view caption);
    bool Enabled() const;
    void SetEnabled(bool enabled);
    FontPtr GetFont() const;
    void SetFont(const FontPtr& font);

    std::int16_t CaptionHeight() const;
    void SetCaptionHeight(std::int16_t twips);
    std::int16_t CaptionWidth() const;
    void SetCaptionWidth(std::int16_t twips);
    std::int16_t ValueHeight() const;
    void SetValueHeight(std::int16_t twips);
    std::int16_t ValueWidth() const;
    void SetValueWidth(std::int16_t twips);
    bool LockCaptionWidth() const noexcept { return State().m_bLockCaptionWidth; }
    void SetLockCaptionWidth(bool lock);
    bool LockValueWidth() const noexcept { return State().m_bLockValueWidth; }
    void SetLockValueWidth(bool lock);

    std::int32_t Mode() const noexcept { return State().m_lMode; }
    void SetMode(std::int32_t mode);
    /// As a load stores it: at run time too, and without rebuilding the text.
    void StoreMode(std::int32_t mode) noexcept { m_context.State().m_lMode = mode; }

    std::u16string AMPMFormat() const { return State().m_strAMPMFormat; }
    void SetAMPMFormat(std::u16string_view format);
    std::u16string DateDelimiter() const { return State().m_strDateDelimiter; }
    void SetDateDelimiter(std::u16string_view delimiter);
    std::u16string TimeDelimiter() const { return State().m_strTimeDelimiter; }
    void SetTimeDelimiter(std::u16string_view delimiter);
    std::int32_t DateFormat() const noexcept { return State().m_lDateFormat; }
    void SetDateFormat(std::int32_t format);
    std::int32_t TimeFormat() const noexcept { return State().m_lTimeFormat; }
    void SetTimeFormat(std::int32_t format);
    bool ShowCentury() const noexcept { return State().m_bShowCentury; }
    void SetShowCentury(bool show);
    bool ShowLeadingZeros() const noexcept { return State().m_bShowLeadingZeros; }
    void SetShowLeadingZeros(bool show);
    bool ShowLongDay() const noexcept { return State().m_bShowLongDay; }
    void SetShowLongDay(bool show);
    bool ShowSeconds() const noexcept { return State().m_bShowSeconds; }
    void SetShowSeconds(bool show);
    bool UpperCase() const noexcept { return State().m_bUpperCase; }
    void SetUpperCase(bool upper);

    std::int32_t Data12HrValue() const noexcept { return State().m_lData12HrValue; }
    void SetData12HrValue(std::int32_t value);
    std::int32_t Data24HrValue() const noexcept { return State().m_lData24HrValue; }
    void SetData24HrValue(std::int32_t value);
    std::int32_t DataDMYValue() const noexcept { return State().m_lDataDMYValue; }
    void SetDataDMYValue(std::int32_t value);
    std::int32_t DataMDYValue() const noexcept { return State().m_lDataMDYValue; }
    void SetDataMDYValue(std::int32_t value);

    /// The records of a slot, its index checked.
    DataBindings& Slot(std::int32_t index);
    /// The only operation that leaves the check of its index to the records themselves: error 9.
    void SetDataLMObject(std::int32_t index, std::int32_t value) { m_bindings.Slots().SetLMObject(index, value); }

    std::u16string Value() { return m_display.Value(); }

private:
    /// When a new value of a setting shows in the text.
    enum class Shows { Never, WithTheNextText, Always, InDateMode, InTimeMode };

    const ShowControlState& State() const noexcept { return m_context.State(); }
    template <typename Field>
    void Store(Field ShowControlState::*field, const Field& value, std::u16string_view key, Shows shows);
    void StoreText(std::u16string ShowControlState::*field, std::u16string_view value, bool valid,
                   std::u16string_view defaultValue, std::int32_t resId, std::u16string_view key, Shows shows);
    [[noreturn]] void RaiseInvalidValue(std::int32_t resId) const;

    ShowControlContext& m_context;
    ShowDisplay& m_display;
    ShowControlLayout& m_layout;
    ShowControlBindings& m_bindings;
};

}  // namespace kiv
