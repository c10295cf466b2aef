// Page "Options" of KivSetDateTime. What the chosen mode does not show cannot be edited.
#pragma once

#include "pages/PatternPage.h"

namespace kiv {

class SetDT_Options final : public PatternPage {
public:
    static const PageDescription Page;
    explicit SetDT_Options(const PageWorld& world) : PatternPage(Page, world) {}

protected:
    void OnEdited(PageField& field) override;
    void FillOptions(const PageField& first, std::int32_t value) override { ChooseValue(first, value); }

private:
    void EnableByMode();
};

}  // namespace kiv
