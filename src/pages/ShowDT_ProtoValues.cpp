#include "pages/ShowDT_ProtoValues.h"

#include <exception>

#include "common/Attempt.h"
#include "common/KivDateTimeResID.h"
#include "common/ValueConversion.h"

namespace kiv {

namespace {

using enum FieldKind;

constexpr FieldDescription PageFields[] = {
    {.name = u"lblHelp", .bounds = {7, 7, 266, 68}, .captionId = residProtoValuesHelp},
    {.name = u"fraOptions(0)", .kind = Frame, .bounds = {7, 81, 266, 44}, .caption = u"DateFormat:"},
    {.name = u"optDateFormat(0)",
     .kind = OptionButton,
     .bounds = {15, 94, 250, 10},
     .captionId = residProtoMonthFirst,
     .bit = 1,
     .property = u"DateFormat"},
    {.name = u"optDateFormat(1)",
     .kind = OptionButton,
     .bounds = {15, 108, 250, 10},
     .captionId = residProtoDayFirst,
     .bit = 1,
     .property = u"DateFormat"},
    {.name = u"fraOptions(1)", .kind = Frame, .bounds = {7, 131, 266, 44}, .caption = u"Show24Hour:"},
    {.name = u"optTimeFormat(0)",
     .kind = OptionButton,
     .bounds = {15, 144, 250, 10},
     .captionId = residProto12Hour,
     .bit = 2,
     .property = u"TimeFormat"},
    {.name = u"optTimeFormat(1)",
     .kind = OptionButton,
     .bounds = {15, 158, 250, 10},
     .captionId = residProto24Hour,
     .bit = 2,
     .property = u"TimeFormat"},
};

}  // namespace

const PageDescription ShowDT_ProtoValues::Page{PageId::ShowDT_ProtoValues, u"ShowDT_ProtoValues", u"Proto Values",
                                               ControlKind::Show, PageFields};

/// A property, and for each of its two buttons the property whose value it stands for.
struct ShowDT_ProtoValues::Format {
    std::int32_t bit;
    std::u16string_view property;
    std::u16string_view buttons[2];
    std::u16string_view meanings[2];
    static const Format All[2];
};

const ShowDT_ProtoValues::Format ShowDT_ProtoValues::Format::All[2] = {
    {1, u"DateFormat", {u"optDateFormat(0)", u"optDateFormat(1)"}, {u"DataMDYValue", u"DataDMYValue"}},
    {2, u"TimeFormat", {u"optTimeFormat(0)", u"optTimeFormat(1)"}, {u"Data12HrValue", u"Data24HrValue"}},
};

void ShowDT_ProtoValues::SelectionChanged() {
    LoadCaptions();
    const auto first = FirstObject();
    if (first && IsOwn(*first)) {
        for (const Format& format : Format::All) Attempt([&] { Fill(format, *first); });
    }
    ClearMask();
    SetChanged(false);
}

void ShowDT_ProtoValues::Fill(const Format& format, EditedObject& object) {
    const bool isFirst = ToLong(object.Get(format.property)) == ToLong(object.Get(format.meanings[0]));
    ChooseOption(Field(format.buttons[isFirst ? 0 : 1]));
}

void ShowDT_ProtoValues::ApplyChanges() {
    std::exception_ptr failure;
    for (const auto& object : OwnObjects()) {
        for (const Format& format : Format::All) {
            try {
                Write(format, *object);
            } catch (...) {
                if (!failure) failure = std::current_exception();
            }
        }
    }
    if (failure) std::rethrow_exception(failure);
    ClearMask();
}

void ShowDT_ProtoValues::Write(const Format& format, EditedObject& object) {
    if (!IsChanged(format.bit)) return;
    const bool isFirst = Field(format.buttons[0]).Value() == 1;
    object.Put(format.property, object.Get(format.meanings[isFirst ? 0 : 1]));
}

}  // namespace kiv
