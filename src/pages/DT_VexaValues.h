// Page "Vexa Values" of both controls: the device's values that mean a format. It knows them by the names of their
// properties only; a control that lacks one is left as it is.
#pragma once

#include "pages/PropertyPage.h"

namespace kiv {

class DT_VexaValues final : public PropertyPage {
public:
    static const PageDescription Page;
    explicit DT_VexaValues(const PageWorld& world) : PropertyPage(Page, world) {}

protected:
    void SelectionChanged() override;
    void ApplyChanges() override;
};

}  // namespace kiv
