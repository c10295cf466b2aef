// What the general and options pages have in common: a field edits one property, is filled from the first selected
// control, and is written to all of them when it was edited. A step that fails is skipped.
#pragma once

#include "pages/PropertyPage.h"

namespace kiv {

class PatternPage : public PropertyPage {
public:
    using PropertyPage::PropertyPage;

protected:
    void SelectionChanged() override;
    void ApplyChanges() override;

    /// What a page does before its fields are filled.
    virtual void Prepare() {}
    /// Chooses the button of a group that stands for the property's value; the group's first button is given.
    virtual void FillOptions(const PageField& first, std::int32_t value) = 0;
    /// The value that the group's choice stands for, where no button is chosen.
    virtual std::int32_t ValueOfNoOption() const { return 0; }

    /// Writes one field to one control if it was edited. Throws what the control throws.
    void Write(const PageField& field, EditedObject& object);
    bool IsFirstOption(const PageField& field) const;
    void ChooseValue(const PageField& first, std::int32_t value);

private:
    void Fill(PageField& field, EditedObject& object);
    std::int32_t ChosenValue(const PageField& first) const;
};

/// For pages without option buttons.
class PlainPage : public PatternPage {
public:
    using PatternPage::PatternPage;

protected:
    void FillOptions(const PageField&, std::int32_t) final {}
};

/// The number in a text as a property of 16 bits takes it. Throws HostError 6 where it does not fit.
std::int16_t ShortOf(std::u16string_view text);

}  // namespace kiv
