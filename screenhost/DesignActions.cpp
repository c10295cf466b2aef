#include "screenhost/DesignActions.h"

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <string_view>

#include "screenhost/Units.h"
#include "screenhost/WideText.h"
#include "screenhost/WindowSearch.h"

namespace screenhost {

namespace {

constexpr int MostEntries = 1000;

POINT PixelsAt(int x, int y) {
    return {PixelsFromTwips(x), PixelsFromTwips(y)};
}

POINT MiddleOf(const RECT& place) {
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

bool IsButton(HWND window) {
    return IsOfClass(window, WC_BUTTONW);
}

bool IsGroupBox(HWND window) {
    return IsButton(window) && (GetWindowLongPtrW(window, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX;
}

std::string EntryText(HWND combo, int index) {
    const auto entry = static_cast<WPARAM>(index);
    const LRESULT length = SendMessageW(combo, CB_GETLBTEXTLEN, entry, 0);
    if (length < 0) return {};
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    SendMessageW(combo, CB_GETLBTEXT, entry, reinterpret_cast<LPARAM>(text.data()));
    text.pop_back();
    return Narrow(std::wstring_view(text));
}

/// -1 for the left or upper side, 1 for the other one.
int SideOf(const std::string& handle, char low, char high) {
    return handle.find(low) != std::string::npos ? -1 : handle.find(high) != std::string::npos ? 1 : 0;
}

}  // namespace

HWND DesignActions::Glass() {
    const HWND glass = m_window.View().Design().InputWindow();
    if (!IsWindowVisible(glass)) throw TextError("the screen is not being laid out");
    return glass;
}

PropertyFrame& DesignActions::Frame() {
    PropertyFrame* const frame = m_window.Frame();
    if (!frame) throw TextError("no property frame is open");
    return *frame;
}

void DesignActions::Choose(const std::string& name) {
    PalettePanel& palette = m_window.Palette();
    const int row = palette.RowOf(name);
    RECT place{};
    SendMessageW(palette.List(), LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
    m_user.Click(palette.List(), MiddleOf(place));
    const auto chosen = static_cast<int>(SendMessageW(palette.List(), LB_GETCURSEL, 0, 0));
    if (chosen != row) throw TextError("the click chose another row");
}

void DesignActions::Draw(const Box& box) {
    m_user.Drag(Glass(), PixelsAt(box.left, box.top), PixelsAt(box.Right(), box.Bottom()));
}

void DesignActions::Select(const std::string& name, bool also) {
    m_user.Click(Glass(), MiddleOf(m_window.View().Find(name).PixelRect()), also ? MK_CONTROL : 0);
    if (!m_window.View().Design().Model().IsSelected(name)) throw TextError(name + " is covered by another control");
}

void DesignActions::Drag(const std::string& name, int dx, int dy) {
    const POINT from = MiddleOf(m_window.View().Find(name).PixelRect());
    m_user.Drag(Glass(), from, {from.x + PixelsFromTwips(dx), from.y + PixelsFromTwips(dy)});
}

void DesignActions::DragHandle(const std::string& name, const std::string& handle, int dx, int dy) {
    if (!m_window.View().Design().Model().IsSelected(name)) throw TextError(name + " is not selected");
    const RECT place = m_window.View().Find(name).PixelRect();
    // A handle lies outside of its control.
    const auto at = [](LONG low, LONG high, int side) {
        return side < 0 ? low - Scaled(3) : side > 0 ? high + Scaled(3) : (low + high) / 2;
    };
    const POINT from{at(place.left, place.right, SideOf(handle, 'W', 'E')),
                     at(place.top, place.bottom, SideOf(handle, 'N', 'S'))};
    m_user.Drag(Glass(), from, {from.x + PixelsFromTwips(dx), from.y + PixelsFromTwips(dy)});
}

void DesignActions::TurnToPage(const std::string& title) {
    const std::vector<std::wstring> titles = Frame().Titles();
    const auto found = std::ranges::find(titles, Wide(title));
    if (found == titles.end()) throw TextError("there is no page \"" + title + "\"");
    RECT place{};
    const auto index = static_cast<std::size_t>(found - titles.begin());
    SendMessageW(Frame().Tabs(), TCM_GETITEMRECT, index, reinterpret_cast<LPARAM>(&place));
    m_user.Click(Frame().Tabs(), MiddleOf(place));
    if (Frame().Current() != index) throw TextError("the click does not turn to the page");
}

void DesignActions::PressInFrame(const std::string& caption) {
    std::vector<HWND> buttons = Descendants(Frame().Handle());
    std::erase_if(buttons, [](HWND window) { return !IsButton(window) || IsGroupBox(window); });
    m_user.ClickText(FindCaption(buttons, caption));
}

void DesignActions::ChooseVariable(const std::string& variable) {
    const DevicePanel& panel = m_window.Device();
    const int row = panel.RowOf(variable);
    SendMessageW(panel.List(), LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
    RECT place{LVIR_LABEL, 0, 0, 0};
    SendMessageW(panel.List(), LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
    m_user.Click(panel.List(), MiddleOf(place));
    const LRESULT chosen = SendMessageW(panel.List(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED);
    if (chosen != row) throw TextError("the click chose another row");
}

std::vector<HWND> DesignActions::WindowsBesideTheScreen() {
    const PropertyFrame* const frame = m_window.Frame();
    std::vector<HWND> windows = Descendants(frame ? frame->Handle() : m_window.Handle());
    const HWND screen = m_window.View().Handle();
    std::erase_if(windows, [screen](HWND window) { return IsChild(screen, window) != FALSE; });
    return windows;
}

HWND DesignActions::FindField(const std::string& label) {
    std::vector<HWND> named = WindowsBesideTheScreen();
    std::erase_if(
        named, [](HWND window) { return IsGroupBox(window) || (!IsButton(window) && !IsOfClass(window, WC_STATICW)); });
    const HWND found = FindCaption(named, label);
    if (IsButton(found)) return found;
    for (HWND next = GetWindow(found, GW_HWNDNEXT); next; next = GetWindow(next, GW_HWNDNEXT))
        if (IsWindowVisible(next) && (GetWindowLongPtrW(next, GWL_STYLE) & WS_TABSTOP)) return next;
    throw TextError("no field follows " + DescribeWindow(found));
}

void DesignActions::TypeField(const std::string& label, const std::string& text) {
    const HWND field = FindField(label);
    m_user.ClickText(field);
    SendMessageW(field, EM_SETSEL, 0, -1);
    if (text.empty()) m_user.Tap(VK_DELETE);
    for (const wchar_t c : Wide(text)) {
        PostMessageW(field, WM_CHAR, c, 1);
        m_pump.RunFor(std::chrono::milliseconds(0));
    }
    m_pump.Settle();
    const std::string shown = FieldText(label);
    if (shown != text) throw TextError(label + " shows \"" + shown + "\" instead");
}

void DesignActions::ChooseField(const std::string& label, const std::string& entry) {
    const HWND list = FindField(label);
    if (!IsReallyEnabled(list)) throw TextError(label + " is disabled");
    const auto found =
        SendMessageW(list, CB_FINDSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(Wide(entry).c_str()));
    if (found < 0) throw TextError(label + " has no entry \"" + entry + "\"");
    SetFocus(list);
    for (int steps = 0; SendMessageW(list, CB_GETCURSEL, 0, 0) != found; ++steps) {
        if (steps > MostEntries) throw TextError("the keys do not reach \"" + entry + "\"");
        m_user.Tap(SendMessageW(list, CB_GETCURSEL, 0, 0) < found ? VK_DOWN : VK_UP);
    }
    m_pump.Settle();
}

std::string DesignActions::FieldText(const std::string& label) {
    const HWND field = FindField(label);
    if (IsButton(field)) return SendMessageW(field, BM_GETCHECK, 0, 0) == BST_CHECKED ? "True" : "False";
    if (!IsOfClass(field, WC_COMBOBOXW)) {
        std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(field)) + 1, L'\0');
        text.resize(static_cast<std::size_t>(GetWindowTextW(field, text.data(), static_cast<int>(text.size()))));
        return Narrow(std::wstring_view(text));
    }
    return EntryText(field, static_cast<int>(SendMessageW(field, CB_GETCURSEL, 0, 0)));
}

}  // namespace screenhost
