// The child controls, as a control sees them.
//
// Each child keeps its own state (a check box its value, a frame its caption): a control that needs the state reads the
// child. A child exists, can be read and can be set from the moment it is created, whether or not the platform has made
// a window for it yet.
//
// Children tell their listener only what a user did: setting a value by program never calls back. Any call to a
// listener may end with the whole control destroyed; an implementation touches nothing of its own after such a call
// unless it has made sure that it still exists.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Color.h"
#include "platform/DateTime.h"
#include "platform/Font.h"
#include "platform/Geometry.h"

namespace kiv {

class Widget {
public:
    virtual ~Widget() = default;

    virtual Rect Bounds() const = 0;
    virtual void SetBounds(const Rect& bounds) = 0;
    virtual bool IsEnabled() const = 0;
    virtual void SetEnabled(bool enabled) = 0;
    virtual bool IsVisible() const = 0;
    virtual void SetVisible(bool visible) = 0;
    virtual OleColor BackColor() const = 0;
    virtual void SetBackColor(OleColor color) = 0;
    virtual OleColor ForeColor() const = 0;
    virtual void SetForeColor(OleColor color) = 0;
    /// Null means the platform's default font.
    virtual FontPtr GetFont() const = 0;
    virtual void SetFont(const FontPtr& font) = 0;
};

/// Help topics of a child; 0 is none.
struct WidgetHelp {
    std::int32_t contextID = 0;    ///< the topic that F1 shows
    std::int32_t whatsThisID = 0;  ///< the topic that pops up for a child pointed at
};

/// What all children have, but not the area that they lie in.
class ChildControl : public Widget {
public:
    virtual WidgetHelp Help() const = 0;
    virtual void SetHelp(const WidgetHelp& help) = 0;
};

class Frame : public ChildControl {
public:
    virtual std::u16string Caption() const = 0;
    virtual void SetCaption(std::u16string_view caption) = 0;
};

class CheckBox : public ChildControl {
public:
    virtual std::u16string Caption() const = 0;
    virtual void SetCaption(std::u16string_view caption) = 0;
    /// 0 unchecked, 1 checked. New check boxes are unchecked.
    virtual int Value() const = 0;
    virtual void SetValue(int value) = 0;
};

/// Month calendar. Its size follows from its font: SetBounds moves it and leaves the size alone. BackColor is the
/// surround of the months, ForeColor the text of the days. A new calendar shows the PC's present date.
class Calendar : public ChildControl {
public:
    static constexpr int MinYear = 1753;
    static constexpr int MaxYear = 9999;

    virtual CivilDate Value() const = 0;
    /// Throws HostError 380 for a date that does not exist or lies outside MinYear..MaxYear; the value stays.
    virtual void SetValue(const CivilDate& date) = 0;
    virtual OleColor MonthBackColor() const = 0;
    virtual void SetMonthBackColor(OleColor color) = 0;
    virtual OleColor TitleBackColor() const = 0;
    virtual void SetTitleBackColor(OleColor color) = 0;
    virtual OleColor TitleForeColor() const = 0;
    virtual void SetTitleForeColor(OleColor color) = 0;
    virtual OleColor TrailingForeColor() const = 0;
    virtual void SetTrailingForeColor(OleColor color) = 0;
    virtual bool ShowToday() const = 0;
    virtual void SetShowToday(bool show) = 0;
    /// 1 Sunday .. 7 Saturday.
    virtual int StartOfWeek() const = 0;
    /// Throws HostError 380 outside 1..7.
    virtual void SetStartOfWeek(int day) = 0;
    /// Takes the keyboard focus; does nothing while it cannot (without a window, hidden, disabled).
    virtual void TakeFocus() = 0;
};

/// Time of day with spin buttons. The value carries a date along that is not shown. A new field holds the PC's present
/// date and time.
class TimeField : public ChildControl {
public:
    virtual DateTime Value() const = 0;
    /// Throws HostError 380 for a date or time that does not exist, or a year below 1753; the value stays.
    virtual void SetValue(const DateTime& value) = 0;
    virtual std::u16string Format() const = 0;
    /// "hh:mm tt", "HH:mm:ss" and the like.
    virtual void SetFormat(std::u16string_view format) = 0;
    /// As for a calendar.
    virtual void TakeFocus() = 0;
};

/// Positions are twips from the source's top left corner.
struct MouseArgs {
    std::int16_t button = 0;  ///< 1 left, 2 right, 4 middle; in a move, all that are down
    std::int16_t shift = 0;   ///< 1 Shift, 2 Ctrl, 4 Alt
    Point position;
};

enum class MouseAction { Down, Move, Up };

/// What a user did. source is the surface itself or one of its children.
/// Handlers may alter key codes: what they leave is what the native control then gets; 0 swallows the key.
class WidgetListener {
public:
    virtual ~WidgetListener() = default;
    virtual void OnClick(Widget& source) = 0;
    virtual void OnDblClick(Widget& source) = 0;
    virtual void OnKeyDown(Widget& source, std::int16_t& keyCode, std::int16_t shift) = 0;
    virtual void OnKeyUp(Widget& source, std::int16_t& keyCode, std::int16_t shift) = 0;
    virtual void OnKeyPress(Widget& source, std::int16_t& keyAscii) = 0;
    virtual void OnMouse(Widget& source, MouseAction action, const MouseArgs& args) = 0;
    /// The user changed the value of a time field.
    virtual void OnChange(Widget& source) = 0;
    /// The surface's size was changed by the container.
    virtual void OnResize() = 0;
};

/// The control's own area, the parent of all children. Bounds() has its size; left and top are the container's
/// business.
class ControlArea : public Widget {
public:
    /// Sets the control's own size, as far as the container agrees. Does not call OnResize.
    virtual void SetSize(const Size& size) = 0;
    /// Size of one line of text in the area's font.
    virtual Size MeasureText(std::u16string_view text) const = 0;
    virtual double TwipsPerPixel() const = 0;
    /// The listener must outlive the area's use of it; null ends the notifications.
    virtual void SetListener(WidgetListener* listener) = 0;
};

/// The area of a control made of native children. Children are in the tab order of their creation; parent is the
/// surface or a frame; the children must be destroyed before it.
class Surface : public ControlArea {
public:
    /// Of the resolution that TwipsPerPixel tells: both change with the window that the surface lives in.
    virtual int ScrollBarWidthPixels() const = 0;
    virtual std::unique_ptr<Frame> CreateFrame(Widget& parent, std::u16string_view name) = 0;
    virtual std::unique_ptr<CheckBox> CreateCheckBox(Widget& parent, std::u16string_view name) = 0;
    virtual std::unique_ptr<Calendar> CreateCalendar(Widget& parent, std::u16string_view name) = 0;
    virtual std::unique_ptr<TimeField> CreateTimeField(Widget& parent, std::u16string_view name) = 0;
};

}  // namespace kiv
