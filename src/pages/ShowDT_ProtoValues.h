// Page "Proto Values" of KivShowDateTime: the format that is shown while no device has told one. A format is stored as
// the device's value that means it, and what that is each control knows for itself.
#pragma once

#include "pages/PropertyPage.h"

namespace kiv {

class ShowDT_ProtoValues final : public PropertyPage {
public:
    static const PageDescription Page;
    explicit ShowDT_ProtoValues(const PageWorld& world) : PropertyPage(Page, world) {}

protected:
    void SelectionChanged() override;
    /// Reaches every control; what one of them failed with is thrown at the end, and the marks stay.
    void ApplyChanges() override;

private:
    struct Format;
    void Fill(const Format& format, EditedObject& object);
    void Write(const Format& format, EditedObject& object);
};

}  // namespace kiv
