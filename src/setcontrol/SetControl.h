// KivSetDateTime: lets a technician set a device's date and time, or have them follow the PC's clock.
//
// The properties' values live in the child controls wherever a child shows them; there are no copies. Setters announce
// a change to the container only when the value really changed, and never while properties are being loaded. Errors to
// the caller are HostError; everything that happens on behalf of device, framework, registry or time zone is swallowed
// step by step.
//
// One thread. Events may re-enter any member, and may destroy the control.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "common/VexaSupport.h"
#include "platform/Color.h"
#include "platform/ControlPlatform.h"
#include "platform/DateTime.h"
#include "platform/Font.h"
#include "platform/PropertyBag.h"
#include "setcontrol/SetControlEvents.h"

namespace kiv {

class SetControlCore;

enum ModeSetConstants : std::int32_t { sdtSetDateTime = 0, sdtSetDateOnly = 1, sdtSetTimeOnly = 2 };

/// What GetDateTimeInfo hands out.
struct DateTimeInfo {
    CivilDate date;
    DateTime time;  ///< the time field's value, with the date that it carries along
    bool enableDst = false;
};

class SetControl final : public VexaSupport {
public:
    static constexpr std::u16string_view ClassName = u"KivSetDateTime";

    SetControl(const ControlPlatform& platform, SetControlEvents& events);
    ~SetControl() override;
    SetControl(const SetControl&) = delete;
    SetControl& operator=(const SetControl&) = delete;

    // Life cycle.
    void InitProperties();
    void ReadProperties(const PropertyBag& bag);
    void WriteProperties(PropertyBag& bag) const;
    /// The control became visible. The first time, outside design mode and unless the PC clock is used, the host is
    /// asked for the device's date and time.
    void OnShown();
    /// The container's ambient UserMode may have changed.
    void OnUserModeChanged();
    /// Stops the timer, stores the remembered choice, lets go of the framework. Safe to call twice; the destructor
    /// calls it.
    void Terminate() noexcept;

    // Properties that live in the surface and the children.
    OleColor BackColor() const;
    void SetBackColor(OleColor color);
    OleColor ForeColor() const;
    void SetForeColor(OleColor color);
    std::u16string Caption() const;
    void SetCaption(std::u16string_view caption);
    bool Enabled() const;
    void SetEnabled(bool enabled);
    FontPtr GetFont() const;
    void SetFont(const FontPtr& font);
    bool ShowToday() const;
    void SetShowToday(bool show);
    std::int32_t StartOfWeek() const;
    void SetStartOfWeek(std::int32_t day);
    std::int32_t TimeHeight() const;
    void SetTimeHeight(std::int32_t twips);
    std::int32_t TimeWidth() const;
    void SetTimeWidth(std::int32_t twips);
    bool UsePCDateTime() const;
    void SetUsePCDateTime(bool use);

    // Calendar colours.
    OleColor CalBackColor() const;
    void SetCalBackColor(OleColor color);
    OleColor CalBackColorDisabled() const;
    void SetCalBackColorDisabled(OleColor color);
    OleColor CalForeColorDisabled() const;
    void SetCalForeColorDisabled(OleColor color);
    OleColor CalTitleBackColor() const;
    void SetCalTitleBackColor(OleColor color);
    OleColor CalTitleBackColorDisabled() const;
    void SetCalTitleBackColorDisabled(OleColor color);
    OleColor CalTitleForeColor() const;
    void SetCalTitleForeColor(OleColor color);
    OleColor CalTitleForeColorDisabled() const;
    void SetCalTitleForeColorDisabled(OleColor color);
    OleColor CalTrailingForeColor() const;
    void SetCalTrailingForeColor(OleColor color);

    // Mode and format.
    std::int32_t Mode() const;
    void SetMode(std::int32_t mode);
    bool ShowDST() const;
    void SetShowDST(bool show);
    bool ShowSeconds() const;
    void SetShowSeconds(bool show);
    std::int32_t TimeFormat() const;
    void SetTimeFormat(std::int32_t format);
    std::int32_t Data12HrValue() const;
    void SetData12HrValue(std::int32_t value);
    std::int32_t Data24HrValue() const;
    void SetData24HrValue(std::int32_t value);

    // Device data. index 0..13, otherwise HostError 381.
    std::int32_t DataLMObject(std::int32_t index);
    void SetDataLMObject(std::int32_t index, std::int32_t value);
    std::int32_t DataType(std::int32_t index);
    void SetDataType(std::int32_t index, std::int32_t value);
    std::u16string DataVariableName(std::int32_t index);
    void SetDataVariableName(std::int32_t index, std::u16string_view value);
    std::u16string DataElementPath(std::int32_t index);
    void SetDataElementPath(std::int32_t index, std::u16string_view value);
    bool DataInUpload() const;
    void SetDataInUpload(bool upload);

    DateTimeInfo GetDateTimeInfo() const;

    // For the framework; see VexaSupport.
    FrameworkObjectPtr VexaHelpObject() const override;
    std::u16string_view VexaDescription() const noexcept override { return ClassName; }
    FrameworkObjectPtr VexaSubElements() const override;
    void VexaSetControlFocus() override;

private:
    // Shared, because a call in progress keeps the core alive when this object is destroyed meanwhile.
    std::shared_ptr<SetControlCore> m_pCore;
};

}  // namespace kiv
