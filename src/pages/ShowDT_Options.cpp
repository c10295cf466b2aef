#include "pages/ShowDT_Options.h"

#include "common/ResourceStrings.h"
#include "platform/HostError.h"

namespace kiv {

namespace {

using enum FieldKind;

constexpr std::int32_t ModeDate = 1;
constexpr std::int32_t ModeTime = 2;

constexpr FieldDescription PageFields[] = {
    {.name = u"fraOptions(0)", .kind = Frame, .bounds = {7, 7, 266, 44}, .caption = u"Mode"},
    {.name = u"optMode(0)",
     .kind = OptionButton,
     .bounds = {15, 20, 250, 10},
     .captionId = residShowDateInformation,
     .bit = 1,
     .property = u"Mode",
     .choice = ModeDate},
    {.name = u"optMode(1)",
     .kind = OptionButton,
     .bounds = {15, 34, 250, 10},
     .captionId = residShowTimeInformation,
     .bit = 1,
     .property = u"Mode",
     .choice = ModeTime},
    {.name = u"fraOptions(1)",
     .kind = Frame,
     .bounds = {7, 57, 266, 44},
     .caption = u"Date/Time Options",
     .captionId = residDateTimeOptions},
    {.name = u"chkShowLeadingZeros",
     .kind = CheckBox,
     .bounds = {15, 70, 250, 10},
     .caption = u"ShowLeading&Zeros",
     .bit = 2,
     .property = u"ShowLeadingZeros"},
    {.name = u"chkUpperCase",
     .kind = CheckBox,
     .bounds = {15, 84, 250, 10},
     .caption = u"&UpperCase",
     .bit = 4,
     .property = u"UpperCase"},
    {.name = u"fraOptions(2)",
     .kind = Frame,
     .bounds = {7, 107, 130, 72},
     .caption = u"Date Options",
     .captionId = residDateOptions},
    {.name = u"lblDateDelimiter", .bounds = {15, 122, 60, 8}, .caption = u"Dat&eDelimiter:"},
    {.name = u"txtDateDelimiter",
     .kind = TextBox,
     .bounds = {79, 120, 50, 14},
     .bit = 256,
     .property = u"DateDelimiter"},
    {.name = u"chkShowCentury",
     .kind = CheckBox,
     .bounds = {15, 142, 114, 10},
     .caption = u"Show&Century",
     .bit = 512,
     .property = u"ShowCentury"},
    {.name = u"fraOptions(3)",
     .kind = Frame,
     .bounds = {143, 107, 130, 72},
     .caption = u"Time Options",
     .captionId = residTimeOptions},
    {.name = u"lblTimeDelimiter", .bounds = {151, 122, 60, 8}, .caption = u"Ti&meDelimiter:"},
    {.name = u"txtTimeDelimiter",
     .kind = TextBox,
     .bounds = {215, 120, 50, 14},
     .bit = 65536,
     .property = u"TimeDelimiter"},
    {.name = u"lblAMPMFormat", .bounds = {151, 142, 60, 8}, .caption = u"AM&PMFormat:"},
    {.name = u"txtAMPMFormat", .kind = TextBox, .bounds = {215, 140, 50, 14}, .bit = 131072, .property = u"AMPMFormat"},
    {.name = u"chkShowSeconds",
     .kind = CheckBox,
     .bounds = {151, 162, 114, 10},
     .caption = u"Show&Seconds",
     .bit = 262144,
     .property = u"ShowSeconds"},
};

std::u16string DescriptionOfCurrentException() {
    try {
        throw;
    } catch (const HostError& error) {
        return error.Description();
    } catch (...) {
        return {};
    }
}

}  // namespace

const PageDescription ShowDT_Options::Page{PageId::ShowDT_Options, u"ShowDT_Options", u"Options", ControlKind::Show,
                                           PageFields};

void ShowDT_Options::FillOptions(const PageField& first, std::int32_t value) {
    ChooseValue(first, value == ModeDate ? ModeDate : ModeTime);
}

std::int32_t ShowDT_Options::ValueOfNoOption() const {
    return ModeTime;
}

void ShowDT_Options::ApplyChanges() {
    const PageField* textBox = nullptr;
    try {
        for (const auto& object : OwnObjects()) {
            for (const PageField& field : Fields()) {
                if (field.IsTextBox() && IsChanged(field.Description().bit)) textBox = &field;
                Write(field, *object);
            }
        }
    } catch (...) {
        ReportRefusal(textBox);
        return;
    }
    ClearMask();
}

void ShowDT_Options::ReportRefusal(const PageField* textBox) {
    const std::u16string description = DescriptionOfCurrentException();
    // There is no such string: that failure, not the refusal, is what leaves the page.
    const std::u16string title = LoadResString(residPageErrorTitle);
    World().view.ShowWarning(description, title);
    SetChanged(true);
    if (textBox) World().view.FocusField(*textBox);
}

}  // namespace kiv
