#include "pages/ShowDT_General.h"

#include "common/ResourceStrings.h"

namespace kiv {

namespace {

using enum FieldKind;

constexpr FieldEntry BorderStyles[] = {{u"0 - sdtNone", 0}, {u"1 - sdtSunken", 1}};

constexpr FieldDescription PageFields[] = {
    {.name = u"lblCaption", .bounds = {7, 9, 62, 8}, .caption = u"&Caption:"},
    {.name = u"txtCaption",
     .kind = TextBox,
     .bounds = {72, 7, 201, 14},
     .bit = 1,
     .property = u"Caption",
     .ofOneControl = true},
    {.name = u"lblCaptionHeight", .bounds = {7, 29, 62, 8}, .caption = u"Caption&Height:"},
    {.name = u"txtNumeric(0)", .kind = NumericBox, .bounds = {72, 27, 50, 14}, .bit = 16, .property = u"CaptionHeight"},
    {.name = u"lblCaptionWidth", .bounds = {144, 29, 62, 8}, .caption = u"Caption&Width:"},
    {.name = u"txtNumeric(1)", .kind = NumericBox, .bounds = {223, 27, 50, 14}, .bit = 32, .property = u"CaptionWidth"},
    {.name = u"chkLockCaptionWidth",
     .kind = CheckBox,
     .bounds = {144, 47, 129, 10},
     .caption = u"&LockCaptionWidth",
     .bit = 64,
     .property = u"LockCaptionWidth"},
    // A line of its own: each filling of the page makes it longer.
    {.name = u"lblBorderStyle", .bounds = {7, 67, 266, 8}, .caption = u"&BorderStyle:"},
    {.name = u"cboBorderStyle",
     .kind = DropDown,
     .bounds = {7, 78, 115, 60},
     .bit = 256,
     .property = u"BorderStyle",
     .entries = BorderStyles},
    {.name = u"lblValueHeight", .bounds = {7, 102, 62, 8}, .caption = u"&ValueHeight:"},
    {.name = u"txtNumeric(2)",
     .kind = NumericBox,
     .bounds = {72, 100, 50, 14},
     .bit = 4096,
     .property = u"ValueHeight"},
    {.name = u"lblValueWidth", .bounds = {144, 102, 62, 8}, .caption = u"Val&ueWidth:"},
    {.name = u"txtNumeric(3)",
     .kind = NumericBox,
     .bounds = {223, 100, 50, 14},
     .bit = 8192,
     .property = u"ValueWidth"},
    {.name = u"chkLockValueWidth",
     .kind = CheckBox,
     .bounds = {144, 120, 129, 10},
     .caption = u"Loc&kValueWidth",
     .bit = 16384,
     .property = u"LockValueWidth"},
};

}  // namespace

const PageDescription ShowDT_General::Page{PageId::ShowDT_General, u"ShowDT_General", u"General", ControlKind::Show,
                                           PageFields};

void ShowDT_General::Prepare() {
    PageField& label = Field(u"lblBorderStyle");
    label.SetText(label.Text() + u"  " + LoadResString(residValueFieldOnly));
}

}  // namespace kiv
