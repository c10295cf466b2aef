#include "screenhost/MainWindow.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <array>

#include "screenhost/ErrorText.h"
#include "screenhost/FontObject.h"
#include "screenhost/LateBound.h"
#include "screenhost/ResourceIds.h"
#include "screenhost/Units.h"
#include "screenhost/WideText.h"

namespace screenhost {

namespace {

constexpr UINT PollMilliseconds = 200;
constexpr ULONGLONG LongestAnswer = 2500;  // milliseconds; a slow device needs one second for each value
constexpr int FirstLogHeight = 210;
constexpr DWORD ButtonStyle = WS_TABSTOP | BS_PUSHBUTTON;
constexpr DWORD ToggleStyle = BS_AUTORADIOBUTTON | BS_PUSHLIKE;

HFONT MakeMessageFont() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof(metrics);
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0);
    return CreateFontIndirectW(&metrics.lfMessageFont);
}

}  // namespace

MainWindow::MainWindow(ScreenContext& context, ScreenFile file, std::string fileName)
    : m_context(context),
      m_fileName(std::move(fileName)),
      m_problems(file.Problems().size()),
      m_font(MakeMessageFont()),
      m_logHeight(Scaled(FirstLogHeight)) {
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    m_accelerators = LoadAcceleratorsW(instance, MAKEINTRESOURCEW(IDR_ACCELERATORS));
    m_designAccelerators = LoadAcceleratorsW(instance, MAKEINTRESOURCEW(IDR_DESIGN_ACCELERATORS));
    Create({L"ScreenHostMain", L"Screen Host", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT,
            COLOR_BTNFACE, LoadMenuW(instance, MAKEINTRESOURCEW(IDR_MENU))},
           nullptr);
    m_frame = comkit::MakeObject<InPlaceFrame>(Handle(), [this](const std::string& text) { ShowStatus(text); });
    m_context.frame = m_frame.Get();
    CreateParts();
    m_view = std::make_unique<ScreenView>(Handle(), m_context, std::move(file));
    SetWindowLongPtrW(m_view->Handle(), GWLP_ID, ID_VIEW);
    // Between the palette and the log in the order of the Tab key.
    SetWindowPos(m_view->Handle(), m_palette->List(), 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    ConnectDesign();
    UpdateTitle();
    UpdateCommands();
}

MainWindow::~MainWindow() {
    m_properties.reset();
    m_view.reset();
    m_frame->Close();
    m_context.frame = nullptr;
}

void MainWindow::CreateParts() {
    const HFONT font = m_font.Get();
    m_read = MakeChild(Handle(), WC_BUTTONW, L"&Read from device", ButtonStyle | WS_GROUP, CMD_READ, font);
    m_write = MakeChild(Handle(), WC_BUTTONW, L"&Write to device", ButtonStyle, CMD_WRITE, font);
    m_panelButton = MakeChild(Handle(), WC_BUTTONW, L"De&vice panel", WS_TABSTOP | BS_CHECKBOX | BS_PUSHLIKE,
                              CMD_DEVICE_PANEL, font);
    m_run = MakeChild(Handle(), WC_BUTTONW, L"Run", ToggleStyle | WS_GROUP | WS_TABSTOP, CMD_RUN, font);
    m_design = MakeChild(Handle(), WC_BUTTONW, L"Design", ToggleStyle, CMD_DESIGN, font);
    m_palette.emplace(Handle(), ID_PALETTE, font);
    m_devicePanel = std::make_unique<DevicePanel>(Handle(), ID_DEVICE, font, *m_context.device);
    m_logTitle = MakeChild(Handle(), WC_STATICW, L"Events and device log", SS_LEFT | SS_CENTERIMAGE | WS_GROUP,
                           ID_LOG_TITLE, font);
    m_filterLabel = MakeChild(Handle(), WC_STATICW, L"F&ilter:", SS_RIGHT | SS_CENTERIMAGE, ID_FILTER_LABEL, font);
    m_filter = MakeChild(Handle(), WC_EDITW, L"", WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL, ID_FILTER, font);
    m_copy = MakeChild(Handle(), WC_BUTTONW, L"Co&py", ButtonStyle, CMD_COPY_LOG, font);
    m_clear = MakeChild(Handle(), WC_BUTTONW, L"&Clear", ButtonStyle, CMD_CLEAR_LOG, font);
    m_logPanel.emplace(Handle(), ID_LOG, font, *m_context.log);
    m_logPanel->onCopy = [this] { CopyLog(); };
    m_devicePanel->onMessage = [this](const std::string& text, bool failed) {
        if (failed) m_context.log->Add("error", text);
        ShowStatus(text);
        Poll();
    };
    m_status = MakeChild(Handle(), STATUSCLASSNAMEW, L"", SBARS_SIZEGRIP, ID_STATUS, font);
}

void MainWindow::Open() {
    m_view->OpenControls();
    m_bOpen = true;
    FitToContents();
    ShowAsRemembered();
    SetForegroundWindow(Handle());
    m_context.userMode ? static_cast<void>(SetFocus(m_read)) : m_view->Design().Focus();
    UpdateCommands();
    Poll();
    SetTimer(Handle(), PollTimer, PollMilliseconds, nullptr);
    UpdateWindow(Handle());
    TellProblems(m_problems);
}

bool MainWindow::Filter(MSG& message) {
    if (m_properties && m_properties->IsOpen() && m_properties->Filter(message)) return true;
    // A window of somebody else's, such as an about box, has its own keys.
    if (GetAncestor(message.hwnd, GA_ROOT) != Handle()) return false;
    if (m_devicePanel->Filter(message)) return true;
    if (message.hwnd == m_filter && message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE) {
        SetWindowTextW(m_filter, L"");
        return true;
    }
    const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
    if (isKey && m_context.userMode) {
        const comkit::ComPtr<IOleInPlaceActiveObject> active(m_frame->Active());
        const bool inView = IsChild(m_view->Handle(), message.hwnd) != FALSE;
        if (active && inView && active->TranslateAccelerator(&message) == S_OK) return true;
    }
    if (isKey && TranslateAcceleratorW(Handle(), m_accelerators, &message)) return true;
    if (isKey && !m_context.userMode && TranslateAcceleratorW(Handle(), m_designAccelerators, &message)) return true;
    if (message.message == WM_SYSCHAR && m_context.userMode)
        for (const auto& control : m_view->Controls())
            if (control->OnMnemonic(message)) return true;
    return IsDialogMessageW(Handle(), &message) != FALSE;
}

void MainWindow::SwitchMode(bool userMode) {
    if (userMode != m_context.userMode) {
        if (m_properties) m_properties->Close();
        SetFocus(Handle());
        m_view->SwitchMode(userMode);
        m_palette->ChoosePointer();
        Layout();
        FitToContents();
        userMode ? static_cast<void>(SetFocus(m_read)) : m_view->Design().Focus();
        m_context.log->Add("host", userMode ? "the screen runs" : "the screen is being laid out");
    }
    UpdateCommands();
    Poll();
}

void MainWindow::OnExchange(bool upload) {
    if (!m_context.userMode) return;
    EndExchange();
    Poll();
    m_context.log->Add("host", upload ? "reading from the device" : "writing to the device");
    m_exchange.emplace(upload ? ExchangeOutcome::Kind::Read : ExchangeOutcome::Kind::Write);
    m_exchangeLog = m_context.log->End();
    m_exchangeEnd = GetTickCount64() + LongestAnswer;
    if (upload) ShowStatus("Reading from the device...");
    for (const auto& control : m_view->Controls()) {
        IDispatch* const members = control->ControlDispatch();
        wchar_t name[] = L"DataInUpload";
        LPOLESTR names = name;
        DISPID id = DISPID_UNKNOWN;
        // Other controls than set controls may be on the screen.
        if (!members || FAILED(members->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id))) continue;
        try {
            PutMember(*members, "DataInUpload", upload);
        } catch (const TextError& error) {
            Report(control->Name() + ": " + error.what());
        }
    }
    Poll();
    // What is written is written at once; values that are read come by and by.
    if (!upload) EndExchange();
}

/// Tells how far reading has come, and that it is over once nothing more has come for a while.
void MainWindow::FollowExchange() {
    if (!m_exchange) return;
    bool isNew = false;
    for (; m_exchangeLog < m_context.log->End(); ++m_exchangeLog) {
        if (m_exchangeLog < m_context.log->Begin()) continue;
        const LogEntry& entry = m_context.log->At(m_exchangeLog);
        if (entry.source == "device" && m_exchange->Take(entry.text)) isNew = true;
    }
    if (isNew) {
        ShowStatus(m_exchange->Text());
        m_exchangeEnd = GetTickCount64() + LongestAnswer;
    } else if (m_exchange->What() == ExchangeOutcome::Kind::Read && GetTickCount64() >= m_exchangeEnd) {
        EndExchange();
    }
}

void MainWindow::EndExchange() {
    if (!m_exchange) return;
    const std::string text = m_exchange->Text();
    const bool isGood = m_exchange->Done() > 0 && m_exchange->Refused() == 0;
    m_exchange.reset();
    m_context.log->Add(isGood ? "host" : "error", text);
    ShowStatus(text);
}

void MainWindow::Report(const std::string& text) {
    m_context.log->Add("error", text);
    ShowStatus(text);
    ShowInBox(Handle(), text);
}

void MainWindow::ShowInBox(HWND over, const std::string& text) const {
    if (!m_bQuiet) MessageBoxW(over, Wide(text).c_str(), L"Screen Host", MB_ICONWARNING);
}

std::string MainWindow::StatusText() const {
    std::wstring text(LOWORD(SendMessageW(m_status, SB_GETTEXTLENGTHW, TextPart, 0)) + std::size_t{1}, L'\0');
    SendMessageW(m_status, SB_GETTEXTW, TextPart, reinterpret_cast<LPARAM>(text.data()));
    text.pop_back();
    return Narrow(std::wstring_view(text));
}

void MainWindow::ShowStatus(const std::string& text) {
    SendMessageW(m_status, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(Wide(text).c_str()));
}

void MainWindow::ShowClock() {
    std::string text = "No device";
    try {
        if (m_context.device->IsConnected()) {
            const auto now = CivilFromOle(m_context.device->Now());
            text = "Device clock  " + (now ? Describe(*now) : "?");
        }
    } catch (const TextError&) {
        text = "Device does not answer";
    }
    std::array<wchar_t, 128> shown{};
    SendMessageW(m_status, SB_GETTEXTW, ClockPart, reinterpret_cast<LPARAM>(shown.data()));
    // Only when it changed, or the bar flickers.
    if (Narrow(std::wstring_view(shown.data())) != text)
        SendMessageW(m_status, SB_SETTEXTW, ClockPart, reinterpret_cast<LPARAM>(Wide(text).c_str()));
}

void MainWindow::Poll() {
    m_context.device->CollectLog(*m_context.log);
    FollowExchange();
    m_logPanel->Refresh();
    ShowLogTitle();
    if (IsWindowVisible(m_devicePanel->Handle())) m_devicePanel->Refresh();
    ShowClock();
}

void MainWindow::UpdateTitle() {
    std::string name = m_view->Title();
    if (name.empty()) name = m_fileName.substr(m_fileName.find_last_of("/\\") + 1);
    if (name.empty()) name = "New screen";
    const char* const mark = m_view->Design().History().IsChanged() ? "*" : "";
    SetWindowTextW(Handle(), Wide(mark + name + " - Screen Host").c_str());
}

void MainWindow::EnableCommands(std::initializer_list<UINT> commands, bool enabled) {
    const HMENU menu = GetMenu(Handle());
    for (const UINT command : commands)
        EnableMenuItem(menu, command, MF_BYCOMMAND | static_cast<UINT>(enabled ? MF_ENABLED : MF_GRAYED));
}

void MainWindow::UpdateCommands() {
    const bool runs = m_context.userMode;
    DesignSession& design = m_view->Design();
    const std::size_t selected = design.Selection().size();
    for (HWND button : {m_read, m_write}) EnableWindow(button, runs);
    SendMessageW(m_run, BM_SETCHECK, runs ? BST_CHECKED : BST_UNCHECKED, 0);
    SendMessageW(m_design, BM_SETCHECK, runs ? BST_UNCHECKED : BST_CHECKED, 0);
    EnableCommands({CMD_READ, CMD_WRITE}, runs);
    EnableCommands({CMD_PASTE, CMD_SELECT_ALL, CMD_SNAP}, !runs);
    EnableCommands({CMD_CUT, CMD_COPY, CMD_DELETE, CMD_PROPERTIES}, selected > 0);
    EnableCommands({CMD_ABOUT_CONTROL}, selected == 1);
    EnableCommands({CMD_ALIGN_LEFT, CMD_ALIGN_RIGHT, CMD_ALIGN_TOP, CMD_ALIGN_BOTTOM, CMD_SAME_WIDTH, CMD_SAME_HEIGHT},
                   selected > 1);
    EnableCommands({CMD_UNDO}, !runs && design.History().CanUndo());
    EnableCommands({CMD_REDO}, !runs && design.History().CanRedo());
    const HMENU menu = GetMenu(Handle());
    CheckMenuItem(menu, CMD_SNAP,
                  MF_BYCOMMAND | static_cast<UINT>(design.Model().SnapsToGrid() ? MF_CHECKED : MF_UNCHECKED));
    CheckMenuRadioItem(menu, CMD_DESIGN, CMD_RUN, static_cast<UINT>(runs ? CMD_RUN : CMD_DESIGN), MF_BYCOMMAND);
    SendMessageW(m_status, SB_SETTEXTW, ModePart, reinterpret_cast<LPARAM>(runs ? L"Run" : L"Design"));
    ShowPlace();
}

void MainWindow::OnCommand(int command) {
    if (OnFileCommand(command) || OnDesignCommand(command)) return;
    switch (command) {
        case CMD_READ:
        case CMD_WRITE:
            return OnExchange(command == CMD_READ);
        case CMD_RUN:
        case CMD_DESIGN:
            return SwitchMode(command == CMD_RUN);
        case CMD_TOGGLE_MODE:
            return SwitchMode(!m_context.userMode);
        case CMD_NEXT_PANE:
            return FocusNextPane();
        case CMD_DEVICE_PANEL:
            return ShowDevicePanel(!IsWindowVisible(m_devicePanel->Handle()));
        case CMD_CLEAR_LOG:
            m_logPanel->Clear();
            return ShowLogTitle();
        case CMD_COPY_LOG:
            return CopyLog();
        case CMD_FILTER_LOG:
            SetFocus(m_filter);
            SendMessageW(m_filter, EM_SETSEL, 0, -1);
            return;
        case CMD_ABOUT:
            MessageBoxW(Handle(), L"Screen Host 1.0\n\nShows a screen of device controls, for use or for design.",
                        L"About Screen Host", MB_ICONINFORMATION);
            return;
        case ID_VIEW:
            return FitToContents();
        default:
            return;
    }
}

/// A plain window does not remember its focus by itself.
void MainWindow::OnActivate(bool active) {
    if (!active)
        m_lastFocus = GetFocus();
    else if (m_lastFocus && IsChild(Handle(), m_lastFocus) && IsWindowVisible(m_lastFocus))
        SetFocus(m_lastFocus);
}

bool MainWindow::OnSplitterCursor(LPARAM lParam) const {
    if (LOWORD(lParam) != HTCLIENT) return false;
    POINT at{};
    GetCursorPos(&at);
    ScreenToClient(Handle(), &at);
    if (at.y <= BarHeight() + 2) return false;
    SetCursor(LoadCursorW(nullptr, IDC_SIZENS));
    return true;
}

LRESULT MainWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            Layout();
            return 0;
        case WM_PAINT:
            PaintLines();
            return 0;
        case WM_GETFONT:
            return reinterpret_cast<LRESULT>(m_font.Get());
        case WM_TIMER:
            Poll();
            return 0;
        case WM_GETMINMAXINFO:
            reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {Scaled(SmallestWidth), Scaled(320)};
            return 0;
        case WM_COMMAND:
            try {
                if (LOWORD(wParam) == ID_PALETTE && m_palette)
                    m_palette->OnCommand(HIWORD(wParam));
                else if (LOWORD(wParam) == ID_FILTER && HIWORD(wParam) == EN_CHANGE)
                    OnFilterChange();
                else
                    OnCommand(LOWORD(wParam));
            } catch (const TextError& error) {
                Report(error.what());
            }
            return 0;
        case WM_NOTIFY:
            if (wParam == ID_LOG && m_logPanel) return m_logPanel->OnNotify(*reinterpret_cast<NMHDR*>(lParam));
            return 0;
        case WM_LBUTTONDOWN:
        case WM_MOUSEMOVE:
        case WM_LBUTTONUP:
            if (m_view && OnSplitter(message, lParam)) return 0;
            break;
        case WM_DRAWITEM:
            if (wParam != ID_PALETTE || !m_palette) break;
            m_palette->OnDraw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
            return TRUE;
        case FrameClosedMessage:
            if (!Frame()) m_properties.reset();  // another one may be open by now
            return 0;
        case WM_ACTIVATE:
            OnActivate(LOWORD(wParam) != WA_INACTIVE);
            return 0;
        case WM_SETCURSOR:
            if (reinterpret_cast<HWND>(wParam) == Handle() && OnSplitterCursor(lParam)) return TRUE;
            break;
        case WM_CLOSE:
            OnClose();
            return 0;
        default:
            break;
    }
    return Default(message, wParam, lParam);
}

}  // namespace screenhost
