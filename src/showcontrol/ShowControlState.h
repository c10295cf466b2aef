// The fields that KivShowDateTime has of its own. What a label shows is not here: it lives in the label.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "common/ControlState.h"
#include "showcontrol/DisplayFormatter.h"

namespace kiv {

enum BorderStyleConstants : std::int32_t { sdtNone = 0, sdtSunken = 1 };

namespace ShowDefault {
inline constexpr std::u16string_view DateDelimiter = u"-";
inline constexpr std::u16string_view TimeDelimiter = u":";
inline constexpr std::u16string_view AMPMFormat = u"AM,PM";
}  // namespace ShowDefault

struct ShowControlState : ControlState {
    bool m_bLoaded = false;             ///< properties were loaded at least once
    bool m_bRunning = false;            ///< the run-time start-up was done
    bool m_bSizeSetExplicitly = false;  ///< a size was set by program; the next layout pass honours it
    std::int32_t m_lMode = sdtShowDateOnly;

    // The device's values for the order of a date and for its clock.
    std::int32_t m_lData12HrValue = 0;
    std::int32_t m_lData24HrValue = 1;  ///< kept, never consulted
    std::int32_t m_lDataDMYValue = 1;
    std::int32_t m_lDataMDYValue = 0;  ///< kept, never consulted
    std::int32_t m_lDateFormat = 0;
    std::int32_t m_lTimeFormat = 0;

    // Delimiters are single units and there are two AM/PM fields at any time: setters refuse everything else.
    std::u16string m_strDateDelimiter{ShowDefault::DateDelimiter};
    std::u16string m_strTimeDelimiter{ShowDefault::TimeDelimiter};
    std::u16string m_strAMPMFormat{ShowDefault::AMPMFormat};
    bool m_bShowCentury = true;
    bool m_bShowLeadingZeros = true;
    bool m_bShowLongDay = false;
    bool m_bShowSeconds = false;
    bool m_bUpperCase = true;

    bool m_bLockCaptionWidth = false;
    bool m_bLockValueWidth = false;

    DateTimeNumbers m_numbers;  ///< as they arrived, until a text is built from them
};

}  // namespace kiv
