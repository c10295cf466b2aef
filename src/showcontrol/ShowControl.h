// KivShowDateTime: shows a device's date or time beside a caption, by display rules of its own.
//
// The properties' values live in the labels wherever a label shows them; there are no copies. Setters announce a change
// to the container only when the value really changed, and never while properties are being loaded. Errors to the
// caller are HostError; whatever happens on behalf of device and framework is swallowed.
//
// Lengths are twips. One thread. Events may re-enter any member, and may destroy the control.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "common/VexaSupport.h"
#include "platform/Color.h"
#include "platform/Font.h"
#include "platform/PropertyBag.h"
#include "platform/ShowPlatform.h"
#include "platform/VariableObject.h"
#include "showcontrol/DisplayFormatter.h"
#include "showcontrol/ShowControlEvents.h"

namespace kiv {

class ShowControlCore;

class ShowControl final : public VexaSupport {
public:
    static constexpr std::u16string_view ClassName = u"KivShowDateTime";

    ShowControl(const ShowPlatform& platform, ShowControlEvents& events);
    ~ShowControl() override;
    ShowControl(const ShowControl&) = delete;
    ShowControl& operator=(const ShowControl&) = delete;

    // Life cycle.
    void InitProperties();
    void ReadProperties(const PropertyBag& bag);
    void WriteProperties(PropertyBag& bag) const;
    /// The container's ambient UserMode may have changed.
    void OnUserModeChanged();
    /// The user's regional settings changed: the next text takes its names from the new ones.
    void OnRegionalSettingsChanged();
    /// Lets go of the framework. Safe to call twice; the destructor calls it.
    void Terminate() noexcept;

    /// Takes hour, minute, second, month, day and year from the variable's elements, by the element paths of slots 1 to
    /// 6, and shows them. Stops at the first failure without reporting it; what was taken stays.
    void RefreshDisplay(VariableObject& variable);

    /// The text that is shown, border blanks included.
    std::u16string Value() const;

    // Properties that live in the labels.
    OleColor BackColor() const;
    void SetBackColor(OleColor color);
    /// BorderStyleConstants, otherwise HostError 380. The border's blanks come or go with the next text.
    std::int32_t BorderStyle() const;
    void SetBorderStyle(std::int32_t style);
    std::u16string Caption() const;
    void SetCaption(std::u16string_view caption);
    bool Enabled() const;
    void SetEnabled(bool enabled);
    FontPtr GetFont() const;
    /// HostError 380 for null. The layout follows with the next resize.
    void SetFont(const FontPtr& font);
    OleColor ForeColor() const;
    void SetForeColor(OleColor color);

    // Sizes of the labels; too small ones are raised to what the text needs. They never fail.
    std::int16_t CaptionHeight() const;
    void SetCaptionHeight(std::int16_t twips);
    std::int16_t CaptionWidth() const;
    void SetCaptionWidth(std::int16_t twips);
    std::int16_t ValueHeight() const;
    void SetValueHeight(std::int16_t twips);
    std::int16_t ValueWidth() const;
    void SetValueWidth(std::int16_t twips);
    /// A locked label keeps its width when the container resizes the control.
    bool LockCaptionWidth() const;
    void SetLockCaptionWidth(bool lock);
    bool LockValueWidth() const;
    void SetLockValueWidth(bool lock);

    // Mode and format.
    /// ModeShowConstants, otherwise HostError 380; HostError 382 at run time.
    std::int32_t Mode() const;
    void SetMode(std::int32_t mode);
    /// Two fields separated by a comma, otherwise HostError 380.
    std::u16string AMPMFormat() const;
    void SetAMPMFormat(std::u16string_view format);
    /// A single UTF-16 unit, otherwise HostError 380.
    std::u16string DateDelimiter() const;
    void SetDateDelimiter(std::u16string_view delimiter);
    std::u16string TimeDelimiter() const;
    void SetTimeDelimiter(std::u16string_view delimiter);
    std::int32_t DateFormat() const;
    void SetDateFormat(std::int32_t format);
    std::int32_t TimeFormat() const;
    void SetTimeFormat(std::int32_t format);
    bool ShowCentury() const;
    void SetShowCentury(bool show);
    bool ShowLeadingZeros() const;
    void SetShowLeadingZeros(bool show);
    bool ShowLongDay() const;
    void SetShowLongDay(bool show);
    bool ShowSeconds() const;
    void SetShowSeconds(bool show);
    bool UpperCase() const;
    void SetUpperCase(bool upper);

    // What the device's values mean; a change shows with the next text.
    std::int32_t Data12HrValue() const;
    void SetData12HrValue(std::int32_t value);
    std::int32_t Data24HrValue() const;
    void SetData24HrValue(std::int32_t value);
    std::int32_t DataDMYValue() const;
    void SetDataDMYValue(std::int32_t value);
    std::int32_t DataMDYValue() const;
    void SetDataMDYValue(std::int32_t value);

    // Device data. index 0..6, otherwise HostError 381 (SetDataLMObject: 9). A data type outside 0..3: HostError 380.
    std::int32_t DataLMObject(std::int32_t index);
    void SetDataLMObject(std::int32_t index, std::int32_t value);
    std::int32_t DataType(std::int32_t index);
    void SetDataType(std::int32_t index, std::int32_t value);
    std::u16string DataVariableName(std::int32_t index);
    void SetDataVariableName(std::int32_t index, std::u16string_view value);
    std::u16string DataElementPath(std::int32_t index);
    void SetDataElementPath(std::int32_t index, std::u16string_view value);

    // For the framework; see VexaSupport.
    FrameworkObjectPtr VexaHelpObject() const override;
    std::u16string_view VexaDescription() const noexcept override { return ClassName; }
    FrameworkObjectPtr VexaSubElements() const override;
    /// There is nothing to focus.
    void VexaSetControlFocus() override {}

private:
    std::shared_ptr<ShowControlCore> m_pCore;
};

}  // namespace kiv
