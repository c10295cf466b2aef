// The child controls of KivSetDateTime. They are created in tab order; the frames outlive what they contain.
#pragma once

#include <memory>

#include "platform/Widgets.h"

namespace kiv {

struct SetControlChildren {
    explicit SetControlChildren(Surface& surface)
        : fraOuter(surface.CreateFrame(surface, u"fraOuter")),
          chkUseSystem(surface.CreateCheckBox(*fraOuter, u"chkUseSystem")),
          fraInner(surface.CreateFrame(*fraOuter, u"fraInner")),
          chkUseDaylightSavings(surface.CreateCheckBox(*fraInner, u"chkUseDaylightSavings")),
          mvDate(surface.CreateCalendar(*fraInner, u"mvDate")),
          dtpTimeSP(surface.CreateTimeField(*fraInner, u"dtpTimeSP")) {}

    std::unique_ptr<Frame> fraOuter;
    std::unique_ptr<CheckBox> chkUseSystem;
    std::unique_ptr<Frame> fraInner;
    std::unique_ptr<CheckBox> chkUseDaylightSavings;
    std::unique_ptr<Calendar> mvDate;
    std::unique_ptr<TimeField> dtpTimeSP;
};

}  // namespace kiv
