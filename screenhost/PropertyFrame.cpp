#include "screenhost/PropertyFrame.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <utility>

#include "comkit/Errors.h"
#include "comkit/Handle.h"
#include "screenhost/ErrorText.h"
#include "screenhost/Units.h"
#include "screenhost/WideText.h"

namespace screenhost {

namespace {

constexpr int Margin = 7;
constexpr int ButtonGap = 6;
constexpr int SmallestPageWidth = 320;
constexpr int SmallestPageHeight = 160;
constexpr int TabsId = 10;
constexpr UINT StatusMessage = WM_APP + 1;  ///< page, flags
constexpr DWORD FrameStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
constexpr DWORD FrameExtended = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;

std::vector<CLSID> PagesOf(IUnknown& object) {
    std::vector<CLSID> result;
    const auto specify = comkit::ComPtr<ISpecifyPropertyPages>::From(&object);
    CAUUID pages{};
    if (!specify || FAILED(specify->GetPages(&pages))) return result;
    result.assign(pages.pElems, pages.pElems + pages.cElems);
    CoTaskMemFree(pages.pElems);
    return result;
}

bool Has(const std::vector<CLSID>& list, const CLSID& clsid) {
    return std::ranges::any_of(list, [&](const CLSID& each) { return IsEqualCLSID(each, clsid) != FALSE; });
}

std::string TextOf(REFCLSID clsid) {
    std::array<wchar_t, 40> text{};
    StringFromGUID2(clsid, text.data(), static_cast<int>(text.size()));
    return Narrow(std::wstring_view(text.data()));
}

bool IsDown(int key) noexcept {
    return GetKeyState(key) < 0;
}

}  // namespace

std::vector<CLSID> CommonPages(const std::vector<comkit::ComPtr<IUnknown>>& objects) {
    if (objects.empty()) return {};
    std::vector<CLSID> result = PagesOf(*objects.front());
    for (const auto& object : objects) {
        const std::vector<CLSID> others = PagesOf(*object);
        std::erase_if(result, [&](const CLSID& clsid) { return !Has(others, clsid); });
    }
    return result;
}

/// Where the pages' windows live: before everything else in the order of the Tab key.
class PropertyFrame::Panel final : public WindowBase {
public:
    explicit Panel(HWND frame) {
        Create({L"ScreenHostPages", L"", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, WS_EX_CONTROLPARENT,
                COLOR_BTNFACE, nullptr},
               frame);
    }

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override { return Default(message, wParam, lParam); }
};

PropertyFrame::PropertyFrame(PropertyFrameRequest request) : m_request(std::move(request)) {
    Create({L"ScreenHostProperties", m_request.title.c_str(), FrameStyle, FrameExtended, COLOR_BTNFACE, nullptr},
           m_request.owner);
    MakePages();
    if (m_pages.empty()) throw TextError("there are no property pages that can be shown");
    MakeParts();
    Layout();
}

PropertyFrame::~PropertyFrame() {
    Close();
    m_pages.clear();
}

std::string PropertyFrame::NameOf(const HostedPage& page) const {
    return "page \"" + Narrow(std::wstring_view(page.Title())) + "\"";
}

void PropertyFrame::MakePages() {
    for (const CLSID& clsid : m_request.pages) {
        try {
            auto page = m_request.create(clsid);
            if (!page) throw comkit::ComError(E_NOINTERFACE);
            m_pages.push_back(
                std::make_unique<HostedPage>(std::move(page), static_cast<PageOwner&>(*this), m_request.objects));
        } catch (const comkit::ComError& error) {
            // Without a window in the user's way: the other pages are there.
            m_request.report(nullptr, "property page " + TextOf(clsid) + " is left out: " + ErrorText(error));
        }
    }
}

void PropertyFrame::MakeParts() {
    const HFONT font = m_request.font;
    m_panel = std::make_unique<Panel>(Handle());
    m_ok = MakeChild(Handle(), WC_BUTTONW, L"OK", WS_TABSTOP | WS_GROUP | BS_DEFPUSHBUTTON, IDOK, font);
    m_cancel = MakeChild(Handle(), WC_BUTTONW, L"Cancel", WS_TABSTOP, IDCANCEL, font);
    m_apply = MakeChild(Handle(), WC_BUTTONW, L"&Apply", WS_TABSTOP, ApplyButton, font);
    m_help = MakeChild(Handle(), WC_BUTTONW, L"Help", WS_TABSTOP, IDHELP, font);
    m_tabs =
        MakeChild(Handle(), WC_TABCONTROLW, L"", WS_TABSTOP | WS_GROUP | WS_CLIPSIBLINGS | TCS_MULTILINE, TabsId, font);
    for (int i = 0; const auto& page : m_pages) {
        std::wstring title = page->Title();
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = title.data();
        SendMessageW(m_tabs, TCM_INSERTITEMW, static_cast<WPARAM>(i++), reinterpret_cast<LPARAM>(&item));
    }
    EnableWindow(m_apply, FALSE);
}

void PropertyFrame::Layout() {
    SIZE page{Scaled(SmallestPageWidth), Scaled(SmallestPageHeight)};
    for (const auto& each : m_pages) {
        page.cx = std::max(page.cx, each->Size().cx);
        page.cy = std::max(page.cy, each->Size().cy);
    }
    const int margin = Scaled(Margin);
    // The tabs may need several rows, which depends on their width.
    RECT tabs{0, 0, page.cx, page.cy};
    SendMessageW(m_tabs, TCM_ADJUSTRECT, TRUE, reinterpret_cast<LPARAM>(&tabs));
    const int width = WidthOf(tabs);
    SetWindowPos(m_tabs, nullptr, margin, margin, width, HeightOf(tabs), SWP_NOZORDER | SWP_NOACTIVATE);
    tabs = {0, 0, page.cx, page.cy};
    SendMessageW(m_tabs, TCM_ADJUSTRECT, TRUE, reinterpret_cast<LPARAM>(&tabs));
    const int height = HeightOf(tabs);
    SetWindowPos(m_tabs, nullptr, margin, margin, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    RECT inside{margin, margin, margin + width, margin + height};
    SendMessageW(m_tabs, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&inside));
    SetWindowPos(m_panel->Handle(), HWND_TOP, static_cast<int>(inside.left), static_cast<int>(inside.top),
                 WidthOf(inside), HeightOf(inside), SWP_NOACTIVATE);
    const int buttonWidth = Scaled(75);
    const int buttonHeight = Scaled(23);
    const int gap = Scaled(ButtonGap);
    const std::array<HWND, 4> buttons{m_ok, m_cancel, m_apply, m_help};
    int x = margin + width - 4 * buttonWidth - 3 * gap;
    for (HWND button : buttons) {
        SetWindowPos(button, nullptr, x, 2 * margin + height, buttonWidth, buttonHeight, SWP_NOZORDER | SWP_NOACTIVATE);
        x += buttonWidth + gap;
    }
    RECT frame{0, 0, width + 2 * margin, height + buttonHeight + 3 * margin};
    AdjustWindowRectEx(&frame, FrameStyle, FALSE, FrameExtended);
    RECT over{};
    RECT work{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    if (!m_request.owner || !GetWindowRect(m_request.owner, &over)) over = work;
    const auto centred = [](LONG low, LONG high, int length, LONG least, LONG most) {
        return static_cast<int>(std::max(least, std::min((low + high - length) / 2, most - length)));
    };
    SetWindowPos(Handle(), nullptr, centred(over.left, over.right, WidthOf(frame), work.left, work.right),
                 centred(over.top, over.bottom, HeightOf(frame), work.top, work.bottom), WidthOf(frame),
                 HeightOf(frame), SWP_NOZORDER | SWP_NOACTIVATE);
}

void PropertyFrame::Open() {
    m_bOpen = true;
    if (m_request.owner) EnableWindow(m_request.owner, FALSE);
    ShowPage(0);
    ShowWindow(Handle(), SW_SHOWNORMAL);
    SetForegroundWindow(Handle());
    FocusPage();
    UpdateButtons();
    UpdateWindow(Handle());
}

void PropertyFrame::Close() {
    if (m_bApplying || !std::exchange(m_bOpen, false)) return;
    // The owner first, or the system would give another program's window the front.
    if (m_request.owner) EnableWindow(m_request.owner, TRUE);
    ShowWindow(Handle(), SW_HIDE);
    if (m_request.owner) SetForegroundWindow(m_request.owner);
    if (m_request.closed) m_request.closed();
}

std::vector<std::wstring> PropertyFrame::Titles() const {
    std::vector<std::wstring> result;
    for (const auto& page : m_pages) result.push_back(page->Title());
    return result;
}

void PropertyFrame::ShowPage(std::size_t index) {
    if (index >= m_pages.size()) return;
    if (index != m_current) m_pages[m_current]->Hide();
    m_current = index;
    SendMessageW(m_tabs, TCM_SETCURSEL, index, 0);
    RECT place{};
    GetClientRect(m_panel->Handle(), &place);
    try {
        m_pages[index]->Show(m_panel->Handle(), place);
    } catch (const comkit::ComError& error) {
        m_request.report(Handle(), NameOf(*m_pages[index]) + " cannot be shown: " + ErrorText(error));
    }
    // Without this style the Tab key would pass the page's fields by.
    for (HWND child = GetWindow(m_panel->Handle(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        SetWindowLongPtrW(child, GWL_EXSTYLE, GetWindowLongPtrW(child, GWL_EXSTYLE) | WS_EX_CONTROLPARENT);
    UpdateButtons();
}

void PropertyFrame::FocusPage() {
    const HWND first = GetNextDlgTabItem(m_panel->Handle(), nullptr, FALSE);
    SetFocus(first && IsChild(m_panel->Handle(), first) ? first : m_tabs);
}

bool PropertyFrame::Filter(MSG& message) {
    if (!m_bOpen || (message.hwnd != Handle() && !IsChild(Handle(), message.hwnd))) return false;
    const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
    if (isKey && IsChild(m_panel->Handle(), message.hwnd) && m_pages[m_current]->TranslateKey(message)) return true;
    if (!m_bOpen) return true;
    return OnPageKey(message);
}

bool PropertyFrame::OnPageKey(MSG& message) {
    if (!m_bOpen) return false;
    return TurnPage(message) || IsDialogMessageW(Handle(), &message) != FALSE;
}

/// Ctrl+Tab and Ctrl+Page Down to the next page, with Shift or Page Up to the one before, F1 for help.
bool PropertyFrame::TurnPage(const MSG& message) {
    if (message.message != WM_KEYDOWN) return false;
    if (message.wParam == VK_F1) {
        ShowHelp();
        return true;
    }
    const bool forth = message.wParam == VK_NEXT || (message.wParam == VK_TAB && !IsDown(VK_SHIFT));
    const bool back = message.wParam == VK_PRIOR || (message.wParam == VK_TAB && IsDown(VK_SHIFT));
    if (!IsDown(VK_CONTROL) || (!forth && !back)) return false;
    const bool wasInPage = IsChild(m_panel->Handle(), GetFocus()) != FALSE;
    ShowPage((m_current + (forth ? 1 : m_pages.size() - 1)) % m_pages.size());
    if (wasInPage) FocusPage();
    return true;
}

/// Only notes it: the page is in the middle of something.
void PropertyFrame::OnPageStatus(HostedPage& page, DWORD flags) {
    const auto found = std::ranges::find_if(m_pages, [&](const auto& each) { return each.get() == &page; });
    if (found != m_pages.end())
        PostMessageW(Handle(), StatusMessage, static_cast<WPARAM>(found - m_pages.begin()), static_cast<LPARAM>(flags));
}

void PropertyFrame::UpdateButtons() {
    const bool dirty = std::ranges::any_of(m_pages, [](const auto& page) { return page->IsDirty(); });
    // A button that goes grey under the focus would leave the keyboard nowhere.
    if (!dirty && GetFocus() == m_apply) SetFocus(m_ok);
    EnableWindow(m_apply, dirty);
}

bool PropertyFrame::ApplyPage(std::size_t index) {
    HostedPage& page = *m_pages[index];
    if (m_bApplying || !page.IsDirty()) return true;
    m_bApplying = true;
    std::string failure;
    try {
        page.Apply();
    } catch (const comkit::ComError& error) {
        failure = ErrorText(error);
    }
    m_bApplying = false;
    m_bApplied = true;
    if (failure.empty()) return true;
    if (index != m_current) ShowPage(index);
    m_request.report(Handle(), NameOf(page) + " cannot be applied: " + failure);
    return false;
}

bool PropertyFrame::ApplyAll() {
    bool good = true;
    for (std::size_t i = 0; i < m_pages.size() && good; ++i) good = ApplyPage(i);
    TellApplied();
    UpdateButtons();
    return good;
}

/// Once for all pages that were applied together; a page that failed may have written something, too.
void PropertyFrame::TellApplied() {
    if (std::exchange(m_bApplied, false) && m_request.applied) m_request.applied();
}

void PropertyFrame::ShowHelp() {
    HostedPage& page = *m_pages[m_current];
    if (!page.Help()) m_request.report(Handle(), NameOf(page) + " has no help");
}

void PropertyFrame::OnCommand(int command) {
    switch (command) {
        case IDOK:
            if (ApplyAll()) Close();
            return;
        case IDCANCEL:
            return Close();
        case ApplyButton:
            ApplyAll();
            return;
        case IDHELP:
            return ShowHelp();
        default:
            return;
    }
}

/// A plain window does not remember its focus by itself.
void PropertyFrame::OnActivate(bool active) {
    if (!active) {
        m_focus = GetFocus();
        return;
    }
    if (m_focus && IsChild(Handle(), m_focus)) SetFocus(m_focus);
}

LRESULT PropertyFrame::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            if (m_bOpen && !m_bApplying) OnCommand(LOWORD(wParam));
            return 0;
        case WM_NOTIFY:
            if (wParam == TabsId && reinterpret_cast<NMHDR*>(lParam)->code == TCN_SELCHANGE)
                ShowPage(static_cast<std::size_t>(SendMessageW(m_tabs, TCM_GETCURSEL, 0, 0)));
            return 0;
        case StatusMessage:
            if (!m_bOpen || wParam >= m_pages.size()) return 0;
            if (static_cast<DWORD>(lParam) & PROPPAGESTATUS_VALIDATE) {
                ApplyPage(wParam);
                TellApplied();
            }
            UpdateButtons();
            return 0;
        case DM_GETDEFID:
            return MAKELRESULT(IDOK, DC_HASDEFID);
        case WM_GETFONT:
            return reinterpret_cast<LRESULT>(m_request.font);
        case WM_ACTIVATE:
            OnActivate(LOWORD(wParam) != WA_INACTIVE);
            return 0;
        case WM_CLOSE:
            Close();
            return 0;
        default:
            return Default(message, wParam, lParam);
    }
}

}  // namespace screenhost
