// Where the children of KivSetDateTime stand, and how large the control must be so that nothing is clipped.
//
// ComputeSetControlLayout is plain arithmetic over measured sizes; SetControlLayout measures, computes and moves. All
// lengths are twips.
#pragma once

#include <string>

#include "platform/Geometry.h"
#include "setcontrol/SetControlContext.h"

namespace kiv {

inline constexpr Twips MinTimeWidth = 1080;
inline constexpr Twips MinTimeHeight = 315;

struct SetControlMeasures {
    std::int32_t mode = 0;
    bool showDate = true;
    bool showTime = true;
    bool showDst = true;
    Size control;
    Size calendar;
    Size time;
    double textHeight = 0;     ///< of one line
    double timeTextWidth = 0;  ///< of the longest time text
    double spinWidth = 0;      ///< room for the time field's spin buttons
};

struct SetControlPlaces {
    Size control;
    Rect fraOuter;
    Rect chkUseSystem;
    Rect fraInner;
    Rect chkUseDaylightSavings;
    Rect mvDate;
    Rect dtpTimeSP;
};

SetControlPlaces ComputeSetControlLayout(const SetControlMeasures& measures);

/// "  00:00:00 PM" and the like: the text that the time field must be able to show.
std::u16string TimeSampleText(bool showSeconds, bool is12Hour);

/// "hh:mm:ss tt" and the like.
std::u16string TimeFieldFormat(bool showSeconds, bool is12Hour);

class SetControlLayout {
public:
    explicit SetControlLayout(SetControlContext& context) : m_context(context) {}

    /// Visibility and captions for the mode, then Resize.
    void ApplyMode();
    /// Gives the time field its display format, then Resize.
    void ApplyTimeFormat();
    /// Gives the children the surface's font, then Resize.
    void ApplyFont();
    /// Moves the children and makes the control as large as they need. It grows and never shrinks itself. While
    /// properties are loaded nothing is moved: the end of the load does it once, with everything known.
    void Resize();

private:
    SetControlMeasures Measure() const;
    void Place(const SetControlPlaces& places);

    SetControlContext& m_context;
};

}  // namespace kiv
