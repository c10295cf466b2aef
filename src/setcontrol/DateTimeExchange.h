// Where the shown date, time and daylight-saving flag come from (the device, the host, the PC's clock) and how they
// reach the device. What the user edited wins over what the device says, until the control reads from the device anew.
//
// Failures of device, host and time zone are swallowed step by step.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "common/FrameworkLink.h"
#include "platform/System.h"
#include "setcontrol/ArrivingDate.h"
#include "setcontrol/SetControlContext.h"

namespace kiv {

class DateTimeExchange {
public:
    DateTimeExchange(SetControlContext& context, FrameworkLink& framework)
        : m_context(context), m_framework(framework) {}

    /// timer is Timer1; it calls OnTimer.
    void UseTimer(std::unique_ptr<Timer> timer) { m_pTimer = std::move(timer); }

    /// A number arrived for an element 1..7 whose slot is in use.
    void OnDeviceNumber(std::int16_t element, std::int32_t number);

    /// Once a second while the PC's clock is followed.
    void OnTimer();

    /// Enables the children and colours the calendar as the check box and the control's own state say; at run time,
    /// then follows the PC's clock or asks the host for the device's.
    void ApplyUseSystemState();

    /// Unless the PC's clock is followed: asks the host for the device's date and time, and shows them.
    void LoadDeviceDateTime();

    /// Month, day, year, hour, minute, second, daylight-saving flag, as far as the mode shows them.
    void WriteDateTimeToDevice();

    /// The user chose a day; what was on its way from the device counts no more.
    void MarkDateEdited();

    void StopTimer() noexcept;
    void EndTimer() noexcept { m_pTimer.reset(); }

private:
    bool FollowsPC() const;
    void ShowDaylightSaving(bool enabled);
    void ApplyEnabledState();
    void ApplyCalendarColors();
    void OnTimePart(int TimeOfDay::*part, std::int32_t number);
    void OnDatePart(DatePart part, std::int32_t number);
    void WriteNumber(std::int16_t element, std::int32_t number);

    SetControlContext& m_context;
    FrameworkLink& m_framework;
    std::unique_ptr<Timer> m_pTimer;
    ArrivingDate m_arriving;
};

}  // namespace kiv
