#include "pages/SetDT_General.h"

namespace kiv {

namespace {

using enum FieldKind;

constexpr FieldDescription PageFields[] = {
    {.name = u"lblCaption", .bounds = {7, 9, 56, 8}, .caption = u"&Caption:"},
    {.name = u"txtCaption",
     .kind = TextBox,
     .bounds = {66, 7, 207, 14},
     .bit = 1,
     .property = u"Caption",
     .ofOneControl = true},
    {.name = u"lblTimeHeight", .bounds = {7, 29, 56, 8}, .caption = u"Time&Height:"},
    {.name = u"txtNumeric(0)", .kind = NumericBox, .bounds = {66, 27, 50, 14}, .bit = 16, .property = u"TimeHeight"},
    {.name = u"lblTimeWidth", .bounds = {7, 49, 56, 8}, .caption = u"Time&Width:"},
    {.name = u"txtNumeric(1)", .kind = NumericBox, .bounds = {66, 47, 50, 14}, .bit = 32, .property = u"TimeWidth"},
};

}  // namespace

const PageDescription SetDT_General::Page{PageId::SetDT_General, u"SetDT_General", u"General", ControlKind::Set,
                                          PageFields};

}  // namespace kiv
