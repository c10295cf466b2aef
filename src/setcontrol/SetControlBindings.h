// The fourteen data element slots of KivSetDateTime over the eight elements of the hidden control, and the switch
// between reading the device's clock (DataInUpload True) and addressing its set values (False).
#pragma once

#include <cstdint>
#include <functional>

#include "common/DataBindings.h"
#include "common/FrameworkLink.h"
#include "setcontrol/SetControlContext.h"

namespace kiv {

namespace SetSlot {
inline constexpr std::int32_t Count = 14;
inline constexpr std::int32_t FirstGet = 2;  ///< hour, minute, second, month, day, year as the device shows them
inline constexpr std::int32_t FirstSet = 8;  ///< the same, as the device is to take them over
}  // namespace SetSlot

/// Elements of the hidden control.
namespace SetElement {
inline constexpr std::int16_t Count = 8;
inline constexpr std::int16_t ClockFormat = 0;
inline constexpr std::int16_t DaylightSaving = 1;
inline constexpr std::int16_t Hour = 2;
inline constexpr std::int16_t Minute = 3;
inline constexpr std::int16_t Second = 4;
inline constexpr std::int16_t Month = 5;
inline constexpr std::int16_t Day = 6;
inline constexpr std::int16_t Year = 7;
}  // namespace SetElement

/// Slot of an element 2..7 under a value of DataInUpload.
constexpr std::int32_t SlotForTimeElement(std::int32_t element, bool upload) noexcept {
    return upload ? element : element + SetSlot::FirstSet - SetSlot::FirstGet;
}

class SetControlBindings final : private BindingRules {
public:
    SetControlBindings(SetControlContext& context, FrameworkLink& framework);

    /// For slots that are known to exist; the public properties check the index first.
    DataBindings& Slots() noexcept { return m_slots; }

    bool DataInUpload() const noexcept { return m_context.State().m_bDataInUpload; }
    /// Takes the records over from the framework, changes direction, binds the time elements anew.
    void SwitchDirection(bool upload);

    /// Gives every active slot's record to the framework: the control entered run mode after its properties were set.
    void PushAll();

private:
    bool IsUserMode() const override;
    bool IsActive(std::int32_t slot) const override;
    std::int16_t ElementIndexForSlot(std::int32_t slot) const override;
    void OnBadDataType() override {}  // ignored
    void OnBindingChanged(std::u16string_view key) override;

    void RefreshActiveBindings();
    void RebindTimeElements();
    void Rebind(std::int16_t element, bool upload);

    SetControlContext& m_context;
    FrameworkLink& m_framework;
    DataBindings m_slots;
};

}  // namespace kiv
