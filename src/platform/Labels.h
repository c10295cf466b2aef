// Labels: children that only show a text, and the area of a control that is made of nothing else. Labels need no
// windows of their own, so that such a control may live without a window altogether.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/Widgets.h"

namespace kiv {

/// One line of text, clipped at the label's edge. A disabled label is drawn greyed.
class Label : public ChildControl {
public:
    virtual std::u16string Caption() const = 0;
    /// True when the caption changed. Setting the text that it has already repaints and allocates nothing.
    virtual bool SetCaption(std::u16string_view caption) = 0;
    /// Whether a sunken edge is drawn inside the bounds.
    virtual bool HasSunkenBorder() const = 0;
    virtual void SetSunkenBorder(bool sunken) = 0;
};

class LabelArea : public ControlArea {
public:
    /// The label must be destroyed before the area. New labels are visible, enabled, empty, without a border.
    virtual std::unique_ptr<Label> CreateLabel(std::u16string_view name) = 0;
};

}  // namespace kiv
