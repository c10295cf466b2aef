// A property page as data: which controls lie on it, where, and which property each of them edits.
//
// Places and sizes are dialog units from the page's top left corner, so that a page grows with the font and resolution
// it is shown in. Fields are listed in tab order, a label right before the field that it belongs to; marked fields are
// applied in the same order.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace kiv {

enum class PageId {
    SetDT_General,
    SetDT_Options,
    SetDT_VexaData,
    DT_VexaValues,
    ShowDT_General,
    ShowDT_Options,
    ShowDT_VexaData,
    ShowDT_ProtoValues,
};

/// The classes of controls that pages tell apart.
enum class ControlKind { Set, Show, Other };

enum class FieldKind { Label, Frame, TextBox, NumericBox, CheckBox, OptionButton, DropDown };

struct DialogRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// An entry of a drop-down list. The number is the entry's item data.
struct FieldEntry {
    std::u16string_view text;
    std::int32_t data = 0;
};

// In the order in which a field reads: there are some seventy of them, padding and all.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding)
struct FieldDescription {
    std::u16string_view name;  ///< with its index where there are several of the name: "txtNumeric(0)"
    FieldKind kind = FieldKind::Label;
    DialogRect bounds;
    std::u16string_view caption{};   ///< of text boxes and lists: what a screen reader calls them, if no label does
    std::int16_t captionId = 0;      ///< string that the caption becomes when the page is filled; 0: it stays
    std::int32_t bit = 0;            ///< in the page's mask of changed fields; the same for all buttons of a group
    std::u16string_view property{};  ///< what it edits; option buttons of the same property exclude one another
    std::int32_t choice = 0;         ///< of an option button: the property's value that it stands for
    bool ofOneControl = false;       ///< can be edited only while a single control is selected
    std::span<const FieldEntry> entries{};
};

struct PageDescription {
    PageId id = PageId::SetDT_General;
    std::u16string_view name;
    std::u16string_view caption;         ///< on the page's tab
    std::optional<ControlKind> control;  ///< nothing: any control that has the properties
    std::span<const FieldDescription> fields;
};

/// All pages are of one size: a property frame does not jump from tab to tab.
inline constexpr int PageWidth = 280;
inline constexpr int PageHeight = 204;

}  // namespace kiv
