// Child controls in memory. They hold state as native ones do, and let a test act as the user.
//
// A user's action goes to the listener only where the child and all that contains it are enabled and visible; the
// action's function returns whether it did. The listener may destroy the child: after such a call nothing of it is
// touched.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "platform/Widgets.h"

namespace kiv::headless {

class HeadlessSurface;
class WidgetState;

/// The part of an area that its children know.
class HeadlessRoot {
public:
    WidgetListener* Listener() const noexcept { return m_listener; }

    /// A living child. Throws std::out_of_range where there is none of that name.
    template <typename Child>
    Child& Find(std::u16string_view name) const {
        return dynamic_cast<Child&>(*m_children.at(std::u16string(name)).widget);
    }
    std::size_t ChildCount() const noexcept { return m_children.size(); }

    std::u16string focused;           ///< the child that has the keyboard focus
    std::function<void()> onFocus;    ///< runs when a child got it
    std::function<void()> onSetHelp;  ///< runs before a child takes help topics; may throw

protected:
    ~HeadlessRoot() = default;

    WidgetListener* m_listener = nullptr;

private:
    friend class WidgetState;
    struct Entry {
        Widget* widget;
        const WidgetState* state;
    };
    std::map<std::u16string, Entry, std::less<>> m_children;
};

/// The part that is the same for all children. parent is null for the area itself.
class WidgetState {
public:
    WidgetState(HeadlessRoot& root, const WidgetState* parent, std::u16string_view name, Widget& self);
    ~WidgetState();
    WidgetState(const WidgetState&) = delete;
    WidgetState& operator=(const WidgetState&) = delete;

    /// Enabled and visible, with all parents.
    bool IsReachable() const;

    /// Takes over what shows; another value is a repaint.
    template <typename T>
    bool Change(T& field, const T& value) {
        if (field == value) return false;
        field = value;
        ++repaints;
        return true;
    }

    HeadlessRoot& root;
    const WidgetState* parent;
    std::u16string name;
    Rect bounds;
    bool enabled = true;
    bool visible = true;
    OleColor backColor = SystemColor::ButtonFace;
    OleColor foreColor = SystemColor::ButtonText;
    FontPtr font;
    int repaints = 0;
};

/// Realises the common part of an interface derived from Widget, and the user's actions that every child knows.
template <typename Interface>
class HeadlessWidget : public Interface {
public:
    HeadlessWidget(HeadlessRoot& root, const WidgetState* parent, std::u16string_view name)
        : m_state(root, parent, name, *this) {}

    Rect Bounds() const override { return m_state.bounds; }
    void SetBounds(const Rect& bounds) override { m_state.Change(m_state.bounds, bounds); }
    bool IsEnabled() const override { return m_state.enabled; }
    void SetEnabled(bool enabled) override { m_state.Change(m_state.enabled, enabled); }
    bool IsVisible() const override { return m_state.visible; }
    void SetVisible(bool visible) override { m_state.Change(m_state.visible, visible); }
    OleColor BackColor() const override { return m_state.backColor; }
    void SetBackColor(OleColor color) override { m_state.Change(m_state.backColor, color); }
    OleColor ForeColor() const override { return m_state.foreColor; }
    void SetForeColor(OleColor color) override { m_state.Change(m_state.foreColor, color); }
    FontPtr GetFont() const override { return m_state.font; }
    void SetFont(const FontPtr& font) override { m_state.Change(m_state.font, font); }

    const WidgetState& State() const noexcept { return m_state; }

    bool UserClicks();
    bool UserDblClicks();
    bool UserMoves(MouseAction action, const MouseArgs& args);
    /// What the handlers leave of the key code; 0 where they swallow it.
    std::int16_t UserPressesKey(std::int16_t keyCode, std::int16_t shift = 0);
    std::int16_t UserReleasesKey(std::int16_t keyCode, std::int16_t shift = 0);
    std::int16_t UserTypes(std::int16_t keyAscii);

protected:
    WidgetState m_state;
};

/// What the children have beyond that.
template <typename Interface>
class HeadlessChild : public HeadlessWidget<Interface> {
public:
    using HeadlessWidget<Interface>::HeadlessWidget;

    WidgetHelp Help() const override { return m_help; }
    void SetHelp(const WidgetHelp& help) override {
        if (this->m_state.root.onSetHelp) this->m_state.root.onSetHelp();
        m_help = help;
    }

protected:
    void PutFocus() {
        HeadlessRoot& root = this->m_state.root;
        if (!this->m_state.IsReachable()) return;
        root.focused = this->m_state.name;
        // The hook may destroy the child, but not the area.
        if (root.onFocus) root.onFocus();
    }

private:
    WidgetHelp m_help;
};

class HeadlessFrame final : public HeadlessChild<Frame> {
public:
    using HeadlessChild::HeadlessChild;
    std::u16string Caption() const override { return m_caption; }
    void SetCaption(std::u16string_view caption) override { m_caption = caption; }

private:
    std::u16string m_caption;
};

class HeadlessCheckBox final : public HeadlessChild<CheckBox> {
public:
    using HeadlessChild::HeadlessChild;
    std::u16string Caption() const override { return m_caption; }
    void SetCaption(std::u16string_view caption) override { m_caption = caption; }
    int Value() const override { return m_value; }
    void SetValue(int value) override { m_value = value; }

    /// Toggles the box, then tells the listener.
    bool UserToggles();

private:
    std::u16string m_caption;
    int m_value = 0;
};

class HeadlessCalendar final : public HeadlessChild<Calendar> {
public:
    HeadlessCalendar(HeadlessSurface& surface, const WidgetState* parent, std::u16string_view name);
    void SetBounds(const Rect& bounds) override;
    void SetFont(const FontPtr& font) override;

    CivilDate Value() const override { return m_value; }
    void SetValue(const CivilDate& date) override;
    OleColor MonthBackColor() const override { return m_monthBack; }
    void SetMonthBackColor(OleColor color) override { m_monthBack = color; }
    OleColor TitleBackColor() const override { return m_titleBack; }
    void SetTitleBackColor(OleColor color) override { m_titleBack = color; }
    OleColor TitleForeColor() const override { return m_titleFore; }
    void SetTitleForeColor(OleColor color) override { m_titleFore = color; }
    OleColor TrailingForeColor() const override { return m_trailingFore; }
    void SetTrailingForeColor(OleColor color) override { m_trailingFore = color; }
    bool ShowToday() const override { return m_showToday; }
    void SetShowToday(bool show) override { m_showToday = show; }
    int StartOfWeek() const override { return m_startOfWeek; }
    void SetStartOfWeek(int day) override;
    void TakeFocus() override { PutFocus(); }

    /// Chooses a day, then tells the listener.
    bool UserPicks(const CivilDate& date);

private:
    void FitToFont();

    CivilDate m_value;
    OleColor m_monthBack = SystemColor::WindowBackground;
    OleColor m_titleBack = SystemColor::ActiveCaption;
    OleColor m_titleFore = SystemColor::CaptionText;
    OleColor m_trailingFore = SystemColor::GreyText;
    bool m_showToday = true;
    int m_startOfWeek = 1;
};

class HeadlessTimeField final : public HeadlessChild<TimeField> {
public:
    HeadlessTimeField(HeadlessSurface& surface, const WidgetState* parent, std::u16string_view name);

    DateTime Value() const override { return m_value; }
    void SetValue(const DateTime& value) override;
    std::u16string Format() const override { return m_format; }
    void SetFormat(std::u16string_view format) override { m_format = format; }
    void TakeFocus() override { PutFocus(); }

    /// Changes the time of day, then tells the listener.
    bool UserEnters(const TimeOfDay& time);

private:
    DateTime m_value;
    std::u16string m_format;
};

}  // namespace kiv::headless
