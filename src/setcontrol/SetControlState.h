// The fields that KivSetDateTime has of its own. What a child control shows is not here: it lives in the child.
#pragma once

#include <cstdint>
#include <string>

#include "common/ControlState.h"
#include "platform/Color.h"

namespace kiv {

/// The calendar's colours while it is enabled and while it is not.
struct CalendarColors {
    OleColor back = 0;
    OleColor backDisabled = 0;
    OleColor foreDisabled = 0;
    OleColor titleBack = 0;
    OleColor titleFore = 0;
    OleColor titleBackDisabled = 0;
    OleColor titleForeDisabled = 0;
    OleColor trailingFore = 0;
};

/// What the user has changed and the device may not overwrite.
struct EditedParts {
    bool dst = false;
    bool date = false;
    bool time = false;
};

struct SetControlState : ControlState {
    bool m_bUserMode = false;  ///< the ambient UserMode when properties were last loaded, or when it last changed
    bool m_bFirstShowPending = true;
    bool m_bLoaded = false;              ///< properties were loaded at least once
    std::int32_t m_lScrollBarWidth = 0;  ///< pixels
    std::u16string m_strRegistryKeyPath;

    CalendarColors m_colors;
    std::int32_t m_lMode = 0;
    bool m_bShowDate = true;  ///< derived from the mode
    bool m_bShowTime = true;  ///< derived from the mode
    bool m_bShowDST = false;
    bool m_bShowSeconds = false;
    std::int32_t m_lTimeFormat = 0;
    std::int32_t m_lData12HrValue = 0;
    std::int32_t m_lData24HrValue = 0;
    bool m_bDataInUpload = true;
    EditedParts m_edited;
    std::int32_t m_lHelpContextID = 0;    ///< what the framework sent last
    std::int32_t m_lWhatsThisHelpID = 0;  ///< the same, of the control as a whole

    bool Is12Hour() const noexcept { return m_lTimeFormat == m_lData12HrValue; }
    /// Whether timer, framework and settings may be used, as far as the control itself knows.
    bool IsRunning() const noexcept { return m_bUserMode && !m_bTerminated; }
};

}  // namespace kiv
