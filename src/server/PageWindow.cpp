#include "server/PageWindow.h"

#include <commctrl.h>

#include <algorithm>
#include <cwctype>
#include <string>

#include "comkit/Bstr.h"
#include "comkit/ComPtr.h"
#include "comkit/Errors.h"
#include "comkit/WindowNumber.h"
#include "win32/DialogTemplate.h"
#include "win32/EditText.h"
#include "win32/ModuleInstance.h"

namespace kiv::server {

namespace {

using win32::DialogTemplate;

constexpr WORD FirstId = 100;
constexpr int MaxTextLength = 255;

struct Look {
    const wchar_t* className;
    DWORD style;
    DWORD extendedStyle;
};

Look LookOf(FieldKind kind) noexcept {
    switch (kind) {
        case FieldKind::Label:
            return {L"STATIC", SS_LEFT, 0};
        case FieldKind::Frame:
            return {L"BUTTON", BS_GROUPBOX, 0};
        case FieldKind::TextBox:
        case FieldKind::NumericBox:
            return {L"EDIT", ES_AUTOHSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE};
        case FieldKind::CheckBox:
            return {L"BUTTON", BS_AUTOCHECKBOX | WS_TABSTOP, 0};
        case FieldKind::OptionButton:
            return {L"BUTTON", BS_AUTORADIOBUTTON, 0};
        case FieldKind::DropDown:
            break;
    }
    return {L"COMBOBOX", CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP, 0};
}

/// Option buttons that follow one another are a group: the arrows walk it, Tab goes past it.
bool StartsGroup(const FieldDescription& field, const FieldDescription* previous) noexcept {
    if (field.kind != FieldKind::OptionButton) return true;
    return !previous || previous->kind != FieldKind::OptionButton || previous->property != field.property;
}

DialogTemplate TemplateOf(PropertyPage& page) {
    DialogTemplate dialog(WS_CHILD | DS_CONTROL, WS_EX_CONTROLPARENT, {0, 0, PageWidth, PageHeight});
    const FieldDescription* previous = nullptr;
    WORD id = FirstId;
    for (const PageField& field : page.Fields()) {
        const FieldDescription& description = field.Description();
        Look look = LookOf(description.kind);
        if (StartsGroup(description, previous)) {
            look.style |= WS_GROUP;
            if (description.kind == FieldKind::OptionButton) look.style |= WS_TABSTOP;
        }
        const DialogRect& bounds = description.bounds;
        dialog.Add(look.className, {}, look.style, look.extendedStyle,
                   {bounds.x, bounds.y, bounds.width, bounds.height}, id++);
        previous = &description;
    }
    return dialog;
}

class FlagScope {
public:
    explicit FlagScope(bool& flag) noexcept : m_flag(flag), m_former(flag) { flag = true; }
    FlagScope(const FlagScope&) = delete;
    FlagScope& operator=(const FlagScope&) = delete;
    ~FlagScope() { m_flag = m_former; }

private:
    bool& m_flag;
    bool m_former;
};

PageWindow* SelfOf(HWND window) noexcept {
    return reinterpret_cast<PageWindow*>(GetWindowLongPtrW(window, DWLP_USER));
}

bool IsDown(int key) noexcept {
    return GetKeyState(key) < 0;
}

}  // namespace

SIZE PageWindow::NormalSize() {
    return win32::DialogPixels(PageWidth, PageHeight);
}

PageWindow::PageWindow(PropertyPage& page, IUnknown& owner, HWND parent) : m_page(page), m_owner(owner) {
    const DialogTemplate dialog = TemplateOf(page);
    m_window.Reset(CreateDialogIndirectParamW(win32::ModuleInstance(), dialog.Get(), parent, &Procedure,
                                              reinterpret_cast<LPARAM>(this)));
    if (!m_window) throw comkit::ComError(comkit::LastErrorResult());
    if (!m_failure) return;
    Leave();
    std::rethrow_exception(m_failure);
}

PageWindow::~PageWindow() {
    Leave();
}

// What the window says while it goes is for nobody any more.
void PageWindow::Leave() const noexcept {
    if (m_window) SetWindowLongPtrW(m_window.Get(), DWLP_USER, 0);
}

INT_PTR CALLBACK PageWindow::Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) noexcept {
    try {
        if (id == WM_INITDIALOG) {
            auto* const self = reinterpret_cast<PageWindow*>(lParam);
            try {
                self->OnInit(window);
            } catch (...) {
                self->m_failure = std::current_exception();
            }
            return FALSE;  // the frame decides who gets the focus
        }
        PageWindow* const self = SelfOf(window);
        if (!self || id != WM_COMMAND || lParam == 0) return FALSE;
        self->OnNotify(static_cast<std::size_t>(LOWORD(wParam)) - FirstId, HIWORD(wParam));
        return TRUE;
    } catch (...) {
        return FALSE;
    }
}

void PageWindow::OnInit(HWND window) {
    m_dialog = window;
    SetLastError(ERROR_SUCCESS);
    SetWindowLongPtrW(window, DWLP_USER, reinterpret_cast<LONG_PTR>(this));
    if (SelfOf(window) != this) throw comkit::ComError(comkit::LastErrorResult());
    for (std::size_t i = 0; i < m_page.Fields().size(); ++i) {
        const PageField& field = m_page.Fields()[i];
        const HWND control = ControlOf(field);
        if (field.IsTextBox()) SendMessageW(control, EM_LIMITTEXT, MaxTextLength, 0);
        if (field.Description().kind == FieldKind::NumericBox)
            SetWindowSubclass(control, &BoxProcedure, i, reinterpret_cast<DWORD_PTR>(this));
        ShowField(field);
    }
}

HWND PageWindow::ControlOf(const PageField& field) const noexcept {
    int id = FirstId;
    for (const PageField& each : m_page.Fields()) {
        if (&each == &field) break;
        ++id;
    }
    return GetDlgItem(m_dialog, id);
}

void PageWindow::OnNotify(std::size_t index, WORD code) {
    if (m_bShowing || index >= m_page.Fields().size()) return;
    // Nothing of the window is touched once the page has been told.
    const comkit::ComPtr<IUnknown> keepAlive(&m_owner);
    PropertyPage& page = m_page;
    PageField& field = page.Fields()[index];
    const HWND control = ControlOf(field);
    switch (field.Description().kind) {
        case FieldKind::TextBox:
        case FieldKind::NumericBox:
            if (code == EN_CHANGE) {
                page.Type(field, win32::WindowTextOf(control));
            } else if (code == EN_SETFOCUS) {
                win32::EditText text(control);
                page.GotFocus(text);
            }
            break;
        case FieldKind::CheckBox:
            if (code == BN_CLICKED) page.Check(field, static_cast<int>(SendMessageW(control, BM_GETCHECK, 0, 0)));
            break;
        case FieldKind::OptionButton:
            if (code == BN_CLICKED) page.Choose(field);
            break;
        case FieldKind::DropDown:
            if (code == CBN_SELCHANGE) page.Pick(field, static_cast<int>(SendMessageW(control, CB_GETCURSEL, 0, 0)));
            break;
        case FieldKind::Label:
        case FieldKind::Frame:
            break;
    }
}

LRESULT CALLBACK PageWindow::BoxProcedure(HWND box, UINT id, WPARAM wParam, LPARAM lParam, UINT_PTR index,
                                          DWORD_PTR self) noexcept {
    try {
        if (id == WM_NCDESTROY) {
            RemoveWindowSubclass(box, &BoxProcedure, index);
        } else if (id == WM_CHAR && SelfOf(GetParent(box))) {
            wParam = reinterpret_cast<PageWindow*>(self)->Filter(index, wParam);
            if (wParam == 0) return 0;
        }
    } catch (...) {
        return 0;
    }
    return DefSubclassProc(box, id, wParam, lParam);
}

WPARAM PageWindow::Filter(std::size_t index, WPARAM character) {
    auto key = static_cast<std::int16_t>(character);
    m_page.KeyPress(m_page.Fields()[index], key);
    return static_cast<WPARAM>(static_cast<std::uint16_t>(key));
}

void PageWindow::ShowField(const PageField& field) {
    const FlagScope showing(m_bShowing);
    const HWND control = ControlOf(field);
    switch (field.Description().kind) {
        case FieldKind::CheckBox:
        case FieldKind::OptionButton:
            SendMessageW(control, BM_SETCHECK, static_cast<WPARAM>(field.Value()), 0);
            [[fallthrough]];
        case FieldKind::TextBox:
        case FieldKind::NumericBox:
        case FieldKind::Label:
        case FieldKind::Frame:
            if (win32::WindowTextOf(control) != field.Text())
                SetWindowTextW(control, std::wstring(comkit::ToWide(field.Text())).c_str());
            break;
        case FieldKind::DropDown:
            ShowEntries(control, field);
            break;
    }
    SetEnabled(control, field.IsEnabled());
}

void PageWindow::ShowEntries(HWND list, const PageField& field) {
    // A list keeps its length for as long as it has anything in it.
    if (static_cast<std::size_t>(SendMessageW(list, CB_GETCOUNT, 0, 0)) != field.Entries().size()) {
        SendMessageW(list, CB_RESETCONTENT, 0, 0);
        for (const PageEntry& entry : field.Entries()) {
            const std::wstring text(comkit::ToWide(entry.text));
            SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
        }
    }
    SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(field.ListIndex()), 0);
}

void PageWindow::SetEnabled(HWND control, bool enabled) {
    if ((IsWindowEnabled(control) != FALSE) == enabled) return;
    // A disabled window would keep the keyboard, and nobody would get it.
    if (!enabled && GetFocus() == control) SendMessageW(m_dialog, WM_NEXTDLGCTL, 0, FALSE);
    EnableWindow(control, enabled);
}

void PageWindow::FocusField(const PageField& field) {
    SendMessageW(m_dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(ControlOf(field)), TRUE);
}

void PageWindow::Move(const RECT& place) const noexcept {
    SetWindowPos(Handle(), nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

bool PageWindow::LeavesWithTab(bool back) const noexcept {
    const HWND focus = GetFocus();
    if (!focus || !IsChild(m_dialog, focus)) return false;
    const HWND first = GetNextDlgTabItem(m_dialog, nullptr, FALSE);
    const HWND next = GetNextDlgTabItem(m_dialog, focus, back);
    // Going round means to come to the first on the way forward, and from it on the way back.
    using comkit::IsSameWindow;
    return back ? IsSameWindow(focus, first) || IsSameWindow(next, focus) : IsSameWindow(next, first);
}

bool PageWindow::IsListOpen() const noexcept {
    const HWND focus = GetFocus();
    return focus && IsChild(m_dialog, focus) && SendMessageW(focus, CB_GETDROPPEDSTATE, 0, 0) != FALSE;
}

bool PageWindow::HasAccessKey(wchar_t character) const {
    const auto wanted = std::towupper(static_cast<wint_t>(character));
    return std::ranges::any_of(m_page.Fields(), [wanted](const PageField& field) {
        if (field.IsTextBox()) return false;
        const std::u16string& text = field.Text();
        const auto mark = text.find(u'&');
        return mark != std::u16string::npos && mark + 1 < text.size() && std::towupper(text[mark + 1]) == wanted;
    });
}

bool PageWindow::TranslateKey(MSG& message) {
    const bool isOurs = message.hwnd == m_dialog || IsChild(m_dialog, message.hwnd);
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
    if (message.message == WM_SYSCHAR) {
        return HasAccessKey(static_cast<wchar_t>(message.wParam)) && IsDialogMessageW(m_dialog, &message);
    }
    if (!isOurs) return false;
    if (message.message == WM_KEYDOWN) {
        switch (message.wParam) {
            case VK_TAB:
                if (IsDown(VK_CONTROL) || LeavesWithTab(IsDown(VK_SHIFT))) return false;
                break;
            case VK_RETURN:
            case VK_ESCAPE:
            case VK_CANCEL:
                // The frame's buttons, unless a list is open, which takes them to close.
                if (!IsListOpen()) return false;
                break;
            default:
                break;
        }
    }
    return IsDialogMessageW(m_dialog, &message) != FALSE;
}

}  // namespace kiv::server
