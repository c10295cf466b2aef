// The seven data element slots of KivShowDateTime. Each is bound to the element of its own number, always.
#pragma once

#include <cstdint>

#include "common/DataBindings.h"
#include "common/FrameworkLink.h"
#include "showcontrol/ShowControlContext.h"

namespace kiv {

/// Slots, and elements of the hidden control.
namespace ShowSlot {
inline constexpr std::int32_t Count = 7;
inline constexpr std::int32_t Format = 0;  ///< order of a date or kind of clock, by the mode
inline constexpr std::int32_t Hour = 1;
inline constexpr std::int32_t Minute = 2;
inline constexpr std::int32_t Second = 3;
inline constexpr std::int32_t Month = 4;
inline constexpr std::int32_t Day = 5;
inline constexpr std::int32_t Year = 6;
}  // namespace ShowSlot

class ShowControlBindings final : private BindingRules {
public:
    ShowControlBindings(ShowControlContext& context, FrameworkLink& framework)
        : m_context(context), m_slots(ShowSlot::Count, framework, *this) {}

    /// For slots that are known to exist, or where error 9 is the answer to others.
    DataBindings& Slots() noexcept { return m_slots; }

    /// Gives every record to the framework: the control entered run mode after its properties were set.
    void PushAll() {
        for (std::int32_t slot = 0; slot < ShowSlot::Count; ++slot) m_slots.Push(slot);
    }

private:
    // Asked anew at each call: this control remembers no mode.
    bool IsUserMode() const override { return m_context.IsUserModeNow(); }
    bool IsActive(std::int32_t) const override { return true; }
    std::int16_t ElementIndexForSlot(std::int32_t slot) const override { return static_cast<std::int16_t>(slot); }
    void OnBadDataType() override;
    void OnBindingChanged(std::u16string_view key) override { m_context.Announce(key); }

    ShowControlContext& m_context;
    DataBindings m_slots;
};

}  // namespace kiv
