// The two labels of KivShowDateTime: the description on the left, the date or time on the right.
#pragma once

#include <memory>

#include "platform/Labels.h"

namespace kiv {

struct ShowControlLabels {
    explicit ShowControlLabels(LabelArea& area)
        : lblCaption(area.CreateLabel(u"lblCaption")), lblValue(area.CreateLabel(u"lblValue")) {}

    std::unique_ptr<Label> lblCaption;
    std::unique_ptr<Label> lblValue;
};

}  // namespace kiv
