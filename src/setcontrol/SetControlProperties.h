// The set and get operations of KivSetDateTime's properties: what is compared, checked, stored and announced.
//
// For use inside the control only; SetControl is what others call. Errors to the caller are HostError.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "setcontrol/DateTimeExchange.h"
#include "setcontrol/SetControl.h"
#include "setcontrol/SetControlBindings.h"
#include "setcontrol/SetControlContext.h"
#include "setcontrol/SetControlLayout.h"

namespace kiv {

class SetControlProperties {
public:
    SetControlProperties(SetControlContext& context, SetControlLayout& layout, SetControlBindings& bindings,
                         DateTimeExchange& exchange)
        : m_context(context), m_layout(layout), m_bindings(bindings), m_exchange(exchange) {}

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

    const CalendarColors& Colors() const noexcept { return m_context.State().m_colors; }
    void SetCalBackColor(OleColor color);
    void SetCalBackColorDisabled(OleColor color);
    void SetCalForeColorDisabled(OleColor color);
    void SetCalTitleBackColor(OleColor color);
    void SetCalTitleBackColorDisabled(OleColor color);
    void SetCalTitleForeColor(OleColor color);
    void SetCalTitleForeColorDisabled(OleColor color);
    void SetCalTrailingForeColor(OleColor color);

    std::int32_t Mode() const noexcept { return m_context.State().m_lMode; }
    void SetMode(std::int32_t mode);
    bool ShowDST() const noexcept { return m_context.State().m_bShowDST; }
    void SetShowDST(bool show);
    bool ShowSeconds() const noexcept { return m_context.State().m_bShowSeconds; }
    void SetShowSeconds(bool show);
    std::int32_t TimeFormat() const noexcept { return m_context.State().m_lTimeFormat; }
    void SetTimeFormat(std::int32_t format);
    std::int32_t Data12HrValue() const noexcept { return m_context.State().m_lData12HrValue; }
    void SetData12HrValue(std::int32_t value);
    std::int32_t Data24HrValue() const noexcept { return m_context.State().m_lData24HrValue; }
    void SetData24HrValue(std::int32_t value);
    /// As a load stores them: without announcement and without applying the time format.
    void StoreData12HrValue(std::int32_t value) noexcept { m_context.State().m_lData12HrValue = value; }
    void StoreData24HrValue(std::int32_t value) noexcept { m_context.State().m_lData24HrValue = value; }

    /// The records of a slot, its index checked.
    DataBindings& Slot(std::int32_t index);
    bool DataInUpload() const;
    void SetDataInUpload(bool upload);

    /// The check box was clicked, or set by program.
    void OnUseSystemClick();

private:
    void RaiseIfRunning() const;
    void SetCalendarColor(OleColor CalendarColors::*field, OleColor color, std::u16string_view key, bool whileEnabled,
                          void (Calendar::*show)(OleColor));
    void SetTimeExtent(Twips Rect::*extent, std::int32_t twips, Twips minimum, std::u16string_view key);

    SetControlContext& m_context;
    SetControlLayout& m_layout;
    SetControlBindings& m_bindings;
    DateTimeExchange& m_exchange;
};

}  // namespace kiv
