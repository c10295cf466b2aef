#include "pages/SetDT_Options.h"

#include "common/KivDateTimeResID.h"

namespace kiv {

namespace {

using enum FieldKind;

constexpr FieldEntry Weekdays[] = {
    {u"1 - mvwSunday", 1},   {u"2 - mvwMonday", 2}, {u"3 - mvwTuesday", 3},  {u"4 - mvwWednesday", 4},
    {u"5 - mvwThursday", 5}, {u"6 - mvwFriday", 6}, {u"7 - mvwSaturday", 7},
};

constexpr FieldDescription PageFields[] = {
    {.name = u"fraOptions(0)", .kind = Frame, .bounds = {7, 7, 266, 58}, .caption = u"Mode"},
    {.name = u"optMode(0)",
     .kind = OptionButton,
     .bounds = {15, 20, 250, 10},
     .captionId = residSetModeOptions,
     .bit = 1,
     .property = u"Mode",
     .choice = 0},
    {.name = u"optMode(1)",
     .kind = OptionButton,
     .bounds = {15, 34, 250, 10},
     .captionId = residSetModeOptions + 1,
     .bit = 1,
     .property = u"Mode",
     .choice = 1},
    {.name = u"optMode(2)",
     .kind = OptionButton,
     .bounds = {15, 48, 250, 10},
     .captionId = residSetModeOptions + 2,
     .bit = 1,
     .property = u"Mode",
     .choice = 2},
    {.name = u"fraOptions(1)",
     .kind = Frame,
     .bounds = {7, 71, 266, 30},
     .caption = u"Date/Time Options",
     .captionId = residDateTimeOptions},
    {.name = u"chkUsePCDateTime",
     .kind = CheckBox,
     .bounds = {15, 84, 250, 10},
     .caption = u"&UsePCDateTime",
     .bit = 2,
     .property = u"UsePCDateTime"},
    {.name = u"fraOptions(2)",
     .kind = Frame,
     .bounds = {7, 107, 130, 64},
     .caption = u"Date Options",
     .captionId = residDateOptions},
    {.name = u"chkShowToday",
     .kind = CheckBox,
     .bounds = {15, 120, 114, 10},
     .caption = u"ShowToday",
     .bit = 16,
     .property = u"ShowToday"},
    {.name = u"lblStartOfWeek", .bounds = {15, 137, 114, 8}, .caption = u"StartOf&Week:"},
    {.name = u"cboStartOfWeek",
     .kind = DropDown,
     .bounds = {15, 148, 114, 110},
     .bit = 32,
     .property = u"StartOfWeek",
     .entries = Weekdays},
    {.name = u"fraOptions(3)",
     .kind = Frame,
     .bounds = {143, 107, 130, 64},
     .caption = u"Time Options",
     .captionId = residTimeOptions},
    {.name = u"chkShowDST",
     .kind = CheckBox,
     .bounds = {151, 120, 114, 10},
     .caption = u"Sh&owDST",
     .bit = 512,
     .property = u"ShowDST"},
    {.name = u"chkShowSeconds",
     .kind = CheckBox,
     .bounds = {151, 135, 114, 10},
     .caption = u"Show&Seconds",
     .bit = 1024,
     .property = u"ShowSeconds"},
};

}  // namespace

const PageDescription SetDT_Options::Page{PageId::SetDT_Options, u"SetDT_Options", u"Options", ControlKind::Set,
                                          PageFields};

void SetDT_Options::OnEdited(PageField& field) {
    PatternPage::OnEdited(field);
    if (field.Description().kind == OptionButton) EnableByMode();
}

void SetDT_Options::EnableByMode() {
    const bool both = Field(u"optMode(0)").Value() == 1;
    const bool date = both || Field(u"optMode(1)").Value() == 1;
    const bool time = both || Field(u"optMode(2)").Value() == 1;
    for (const auto* name : {u"fraOptions(2)", u"cboStartOfWeek", u"chkShowToday", u"lblStartOfWeek"})
        Field(name).SetEnabled(date);
    for (const auto* name : {u"fraOptions(3)", u"chkShowSeconds", u"chkShowDST"}) Field(name).SetEnabled(time);
}

}  // namespace kiv
