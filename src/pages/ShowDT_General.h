// Page "General" of KivShowDateTime.
#pragma once

#include "pages/PatternPage.h"

namespace kiv {

class ShowDT_General final : public PlainPage {
public:
    static const PageDescription Page;
    explicit ShowDT_General(const PageWorld& world) : PlainPage(Page, world) {}

protected:
    /// Adds to the caption of the border's label, each time the page is filled.
    void Prepare() override;
};

}  // namespace kiv
