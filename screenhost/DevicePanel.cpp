#include "screenhost/DevicePanel.h"

#include <commctrl.h>

#include <algorithm>

#include "screenhost/TextCursor.h"
#include "screenhost/Units.h"
#include "screenhost/WideText.h"
#include "screenhost/WindowSearch.h"

namespace screenhost {

namespace {

constexpr int PanelWidth = 288;
constexpr int TitleHeight = 22;
constexpr int RowHeight = 24;
constexpr int LeastListHeight = 120;
constexpr int ListHeight = 276;  // all variables without scrolling
constexpr int Gap = 6;
constexpr int SetWidth = 56;
constexpr int FirstSwitch = 20;
enum Part { ListPart = 1, FieldPart, SetPart };
enum Column { NameColumn, ValueColumn, KindColumn };

constexpr std::array<const wchar_t*, DeviceSwitches> SwitchTitles{L"Cloc&k paused", L"Offli&ne",
                                                                  L"S&low (one value a second)", L"Re&jects writes"};

const wchar_t* KindTitle(long type) noexcept {
    constexpr std::array<const wchar_t*, 3> Titles{L"input", L"output", L"configuration"};
    return type >= 0 && type < static_cast<long>(Titles.size()) ? Titles[static_cast<std::size_t>(type)] : L"";
}

void SetCell(HWND list, int row, Column column, const std::wstring& text) {
    LVITEMW item{};
    item.iSubItem = column;
    std::wstring copy = text;
    item.pszText = copy.data();
    SendMessageW(list, LVM_SETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

void MoveTo(HWND window, int x, int y, int width, int height) {
    SetWindowPos(window, nullptr, x, y, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

DevicePanel::DevicePanel(HWND parent, int id, HFONT font, DeviceLink& device) : m_device(device) {
    Create({L"ScreenHostDevice", L"", WS_CHILD | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT, COLOR_BTNFACE, nullptr}, parent);
    SetWindowLongPtrW(Handle(), GWLP_ID, id);
    m_title = MakeChild(Handle(), WC_STATICW, L"Device", SS_LEFT | SS_CENTERIMAGE, 0, font);
    m_list =
        MakeChild(Handle(), WC_LISTVIEWW, L"Variables of the device",
                  WS_BORDER | WS_TABSTOP | WS_GROUP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER,
                  ListPart, font);
    ListView_SetExtendedListViewStyle(m_list, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
    constexpr std::array<std::pair<const wchar_t*, int>, 3> Columns{
        {{L"Variable", 122}, {L"Value", 60}, {L"Kind", 90}}};
    for (std::size_t i = 0; i < Columns.size(); ++i) {
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.cx = Scaled(Columns[i].second);
        column.pszText = const_cast<wchar_t*>(Columns[i].first);  // read only, the declaration lacks a const
        SendMessageW(m_list, LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
    }
    m_label = MakeChild(Handle(), WC_STATICW, L"Chan&ge to:", SS_LEFT | SS_CENTERIMAGE, 0, font);
    m_field = MakeChild(Handle(), WC_EDITW, L"", WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL, FieldPart, font);
    m_set = MakeChild(Handle(), WC_BUTTONW, L"Se&t", WS_TABSTOP | BS_PUSHBUTTON, SetPart, font);
    for (std::size_t i = 0; i < m_switches.size(); ++i)
        m_switches[i] = MakeChild(Handle(), WC_BUTTONW, SwitchTitles[i], WS_TABSTOP | BS_CHECKBOX,
                                  FirstSwitch + static_cast<int>(i), font);
    Fill();
}

/// The rows stay the same as long as the device is there.
void DevicePanel::Fill() {
    if (!m_device.IsConnected()) return;
    for (const DeviceVariable& variable : m_device.Variables()) {
        std::wstring name = Wide(variable.name);
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = static_cast<int>(m_rows.size());
        item.pszText = name.data();
        SendMessageW(m_list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
        SetCell(m_list, item.iItem, KindColumn, KindTitle(variable.type));
        m_rows.push_back({variable.name, {}});
    }
}

void DevicePanel::Enable(bool enabled) {
    if ((IsWindowEnabled(m_field) != FALSE) == enabled) return;
    for (HWND window : {m_list, m_label, m_field, m_set}) EnableWindow(window, enabled);
    for (HWND window : m_switches) EnableWindow(window, enabled);
    SetWindowTextW(m_title, enabled ? L"Device" : L"There is no simulated device.");
}

void DevicePanel::Refresh() {
    try {
        for (std::size_t i = 0; i < m_rows.size(); ++i) ShowRow(static_cast<int>(i), m_device.Value(m_rows[i].name));
        for (std::size_t i = 0; i < m_switches.size(); ++i) {
            const WPARAM state = m_device.Switch(static_cast<DeviceSwitch>(i)) ? BST_CHECKED : BST_UNCHECKED;
            const auto shown = static_cast<WPARAM>(SendMessageW(m_switches[i], BM_GETCHECK, 0, 0));
            if (shown != state) SendMessageW(m_switches[i], BM_SETCHECK, state, 0);
        }
        Enable(true);
    } catch (const TextError&) {
        Enable(false);
    }
}

void DevicePanel::ShowRow(int row, const std::string& value) {
    Row& shown = m_rows[static_cast<std::size_t>(row)];
    if (shown.value == value) return;
    shown.value = value;
    SetCell(m_list, row, ValueColumn, Wide(value));
}

int DevicePanel::RowOf(const std::string& variable) const {
    const auto found = std::ranges::find(m_rows, variable, &Row::name);
    if (found == m_rows.end()) throw TextError("the device panel has no variable " + variable);
    return static_cast<int>(found - m_rows.begin());
}

std::string DevicePanel::ShownValue(const std::string& variable) const {
    std::array<wchar_t, 64> text{};
    LVITEMW item{};
    item.iSubItem = ValueColumn;
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    SendMessageW(m_list, LVM_GETITEMTEXTW, static_cast<WPARAM>(RowOf(variable)), reinterpret_cast<LPARAM>(&item));
    return Narrow(std::wstring_view(text.data()));
}

int DevicePanel::ChosenRow() const {
    return static_cast<int>(SendMessageW(m_list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

void DevicePanel::TakeIntoField() {
    const int row = ChosenRow();
    const std::string text = row < 0 ? std::string() : m_rows[static_cast<std::size_t>(row)].value;
    SetWindowTextW(m_field, Wide(text).c_str());
    SendMessageW(m_field, EM_SETSEL, 0, -1);
}

void DevicePanel::SetFromField() {
    const int row = ChosenRow();
    if (row < 0) return onMessage("Choose a variable of the device first.", false);
    const std::string& name = m_rows[static_cast<std::size_t>(row)].name;
    const std::string text = CaptionOf(m_field);
    try {
        m_device.SetValue(name, text);
        onMessage(name + " is set to " + text + " at the device.", false);
    } catch (const TextError& error) {
        onMessage(error.what(), true);
    }
    Refresh();
    SendMessageW(m_field, EM_SETSEL, 0, -1);
}

bool DevicePanel::Filter(const MSG& message) {
    if (message.message != WM_KEYDOWN) return false;
    const bool inField = message.hwnd == m_field;
    const bool inList = message.hwnd == m_list;
    if (inField && message.wParam == VK_RETURN) {
        SetFromField();
    } else if (inField && message.wParam == VK_ESCAPE) {
        TakeIntoField();
        SetFocus(m_list);
    } else if (inField && (message.wParam == VK_UP || message.wParam == VK_DOWN)) {
        SendMessageW(m_list, WM_KEYDOWN, message.wParam, message.lParam);
    } else if (inList && (message.wParam == VK_RETURN || message.wParam == VK_F2)) {
        SetFocus(m_field);
    } else {
        return false;
    }
    return true;
}

void DevicePanel::OnButton(int id) {
    if (id == SetPart) return SetFromField();
    const int index = id - FirstSwitch;
    if (index < 0 || index >= static_cast<int>(m_switches.size())) return;
    const auto which = static_cast<DeviceSwitch>(index);
    try {
        m_device.SetSwitch(which, !m_device.Switch(which));
    } catch (const TextError& error) {
        onMessage(error.what(), true);
    }
    Refresh();
}

void DevicePanel::OnNotify(const NMHDR& header) {
    if (header.hwndFrom != m_list) return;
    if (header.code == NM_DBLCLK) SetFocus(m_field);
    if (header.code != LVN_ITEMCHANGED) return;
    const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
    if ((change.uChanged & LVIF_STATE) && ((change.uNewState ^ change.uOldState) & LVIS_SELECTED)) TakeIntoField();
}

int DevicePanel::Width() const {
    return Scaled(PanelWidth);
}

int DevicePanel::LeastHeight() const {
    return Scaled(TitleHeight + ListHeight + 2 * Gap + static_cast<int>(m_switches.size() + 1) * RowHeight);
}

void DevicePanel::Layout() const {
    RECT client{};
    GetClientRect(Handle(), &client);
    const int width = WidthOf(client) - Scaled(Gap);
    const int row = Scaled(RowHeight);
    const int gap = Scaled(Gap);
    const int title = Scaled(TitleHeight);
    const int below = static_cast<int>(m_switches.size() + 1) * row + 2 * gap;
    const int list = std::max(Scaled(LeastListHeight), HeightOf(client) - title - below);
    MoveTo(m_title, 0, 0, width, title);
    MoveTo(m_list, 0, title, width, list);
    int y = title + list + gap;
    const int label = Scaled(70);
    const int set = Scaled(SetWidth);
    MoveTo(m_label, 0, y, label, row - Scaled(2));
    MoveTo(m_field, label, y, width - label - set - gap, row - Scaled(2));
    MoveTo(m_set, width - set, y, set, row - Scaled(2));
    y += row + gap;
    for (HWND window : m_switches) {
        MoveTo(window, 0, y, width, row - Scaled(4));
        y += row;
    }
}

LRESULT DevicePanel::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            if (m_set) Layout();
            return 0;
        case WM_COMMAND:
            if (HIWORD(wParam) == BN_CLICKED) OnButton(LOWORD(wParam));
            return 0;
        case WM_NOTIFY:
            OnNotify(*reinterpret_cast<const NMHDR*>(lParam));
            return 0;
        default:
            return Default(message, wParam, lParam);
    }
}

}  // namespace screenhost
