// Page "General" of KivSetDateTime.
#pragma once

#include "pages/PatternPage.h"

namespace kiv {

class SetDT_General final : public PlainPage {
public:
    static const PageDescription Page;
    explicit SetDT_General(const PageWorld& world) : PlainPage(Page, world) {}
};

}  // namespace kiv
