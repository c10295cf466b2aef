// Page "Options" of KivShowDateTime. Unlike its siblings it stops at the first value that a control refuses.
#pragma once

#include "pages/PatternPage.h"

namespace kiv {

class ShowDT_Options final : public PatternPage {
public:
    static const PageDescription Page;
    explicit ShowDT_Options(const PageWorld& world) : PatternPage(Page, world) {}

protected:
    void ApplyChanges() override;
    void FillOptions(const PageField& first, std::int32_t value) override;
    std::int32_t ValueOfNoOption() const override;

private:
    /// To be called in a catch block only.
    void ReportRefusal(const PageField* textBox);
};

}  // namespace kiv
