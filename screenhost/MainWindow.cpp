#include "screenhost/MainWindow.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <array>

#include "screenhost/Dialogs.h"
#include "screenhost/ErrorText.h"
#include "screenhost/FontObject.h"
#include "screenhost/LateBound.h"
#include "screenhost/ResourceIds.h"
#include "screenhost/TextFile.h"
#include "screenhost/Units.h"
#include "screenhost/WideText.h"
#include "screenhost/WindowPicture.h"

namespace screenhost {

namespace {

constexpr UINT_PTR PollTimer = 1;
constexpr UINT PollMilliseconds = 200;
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
      m_font(MakeMessageFont()),
      m_logHeight(Scaled(FirstLogHeight)) {
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    m_accelerators = LoadAcceleratorsW(instance, MAKEINTRESOURCEW(IDR_ACCELERATORS));
    Create({L"ScreenHostMain", L"Screen Host", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT,
            COLOR_BTNFACE, LoadMenuW(instance, MAKEINTRESOURCEW(IDR_MENU))},
           nullptr);
    m_frame = comkit::MakeObject<InPlaceFrame>(Handle(), [this](const std::string& text) { ShowStatus(text); });
    m_context.frame = m_frame.Get();
    CreateParts();
    m_view = std::make_unique<ScreenView>(Handle(), m_context, std::move(file));
    SetWindowLongPtrW(m_view->Handle(), GWLP_ID, ID_VIEW);
    // Between the buttons and the log in the order of the Tab key.
    SetWindowPos(m_view->Handle(), m_design, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    UpdateTitle();
    UpdateCommands();
}

MainWindow::~MainWindow() {
    m_view.reset();
    m_frame->Close();
    m_context.frame = nullptr;
}

void MainWindow::CreateParts() {
    const HFONT font = m_font.Get();
    m_read = MakeChild(Handle(), WC_BUTTONW, L"&Read from device", ButtonStyle | WS_GROUP, CMD_READ, font);
    m_write = MakeChild(Handle(), WC_BUTTONW, L"&Write to device", ButtonStyle, CMD_WRITE, font);
    m_run = MakeChild(Handle(), WC_BUTTONW, L"Run", ToggleStyle | WS_GROUP | WS_TABSTOP, CMD_RUN, font);
    m_design = MakeChild(Handle(), WC_BUTTONW, L"Design", ToggleStyle, CMD_DESIGN, font);
    m_logTitle = MakeChild(Handle(), WC_STATICW, L"Events and device log", SS_LEFT | SS_CENTERIMAGE | WS_GROUP,
                           ID_LOG_TITLE, font);
    m_clear = MakeChild(Handle(), WC_BUTTONW, L"&Clear", ButtonStyle, CMD_CLEAR_LOG, font);
    m_logPanel.emplace(Handle(), ID_LOG, font, *m_context.log);
    m_status = MakeChild(Handle(), STATUSCLASSNAMEW, L"", SBARS_SIZEGRIP, ID_STATUS, font);
}

void MainWindow::Open() {
    m_view->OpenControls();
    m_bOpen = true;
    FitToContents();
    ShowWindow(Handle(), SW_SHOWNORMAL);
    SetForegroundWindow(Handle());
    SetFocus(m_read);
    UpdateCommands();
    Poll();
    SetTimer(Handle(), PollTimer, PollMilliseconds, nullptr);
    UpdateWindow(Handle());
}

bool MainWindow::Filter(MSG& message) {
    const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
    if (isKey && m_context.userMode) {
        const comkit::ComPtr<IOleInPlaceActiveObject> active(m_frame->Active());
        const bool inView = IsChild(m_view->Handle(), message.hwnd) != FALSE;
        if (active && inView && active->TranslateAccelerator(&message) == S_OK) return true;
    }
    if (isKey && TranslateAcceleratorW(Handle(), m_accelerators, &message)) return true;
    if (message.message == WM_SYSCHAR && m_context.userMode)
        for (const auto& control : m_view->Controls())
            if (control->OnMnemonic(message)) return true;
    return IsDialogMessageW(Handle(), &message) != FALSE;
}

void MainWindow::SwitchMode(bool userMode) {
    if (userMode != m_context.userMode) {
        SetFocus(Handle());
        m_view->SwitchMode(userMode);
        FitToContents();
        m_context.log->Add("host", userMode ? "the screen runs" : "the screen is being laid out");
    }
    UpdateCommands();
    Poll();
}

void MainWindow::OnExchange(bool upload) {
    if (!m_context.userMode) return;
    m_context.log->Add("host", upload ? "reading from the device" : "writing to the device");
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
    ShowStatus(upload ? "Read from the device." : "Written to the device.");
}

void MainWindow::Save(const std::string& fileName) {
    WriteTextFile(fileName, m_view->SavedText());
    ShowStatus("Saved " + fileName + ".");
}

void MainWindow::SaveAs() {
    const std::string name = AskForFile(Handle(), m_fileName, {L"Screens (*.screen)\0*.screen\0", L"screen"});
    if (name.empty()) return;
    Save(name);
    m_fileName = name;
    UpdateTitle();
}

void MainWindow::SavePictureAs() {
    const std::string name = AskForFile(Handle(), {}, {L"Pictures (*.png)\0*.png\0", L"png"});
    if (!name.empty()) SaveWindowPicture(Handle(), name);
}

void MainWindow::Report(const std::string& text) {
    m_context.log->Add("error", text);
    ShowStatus(text);
    if (!m_bQuiet) MessageBoxW(Handle(), Wide(text).c_str(), L"Screen Host", MB_ICONWARNING);
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
    SendMessageW(m_status, SB_GETTEXTW, 2, reinterpret_cast<LPARAM>(shown.data()));
    // Only when it changed, or the bar flickers.
    if (Narrow(std::wstring_view(shown.data())) != text)
        SendMessageW(m_status, SB_SETTEXTW, 2, reinterpret_cast<LPARAM>(Wide(text).c_str()));
}

void MainWindow::Poll() {
    m_context.device->CollectLog(*m_context.log);
    m_logPanel->Refresh();
    ShowClock();
}

void MainWindow::UpdateTitle() {
    std::string name = m_view->Title();
    if (name.empty()) name = m_fileName.substr(m_fileName.find_last_of("/\\") + 1);
    SetWindowTextW(Handle(), Wide(name.empty() ? "Screen Host" : name + " - Screen Host").c_str());
}

void MainWindow::UpdateCommands() {
    const bool runs = m_context.userMode;
    for (HWND button : {m_read, m_write}) EnableWindow(button, runs);
    SendMessageW(m_run, BM_SETCHECK, runs ? BST_CHECKED : BST_UNCHECKED, 0);
    SendMessageW(m_design, BM_SETCHECK, runs ? BST_UNCHECKED : BST_CHECKED, 0);
    const HMENU menu = GetMenu(Handle());
    for (const UINT command : {UINT{CMD_READ}, UINT{CMD_WRITE}})
        EnableMenuItem(menu, command, MF_BYCOMMAND | static_cast<UINT>(runs ? MF_ENABLED : MF_GRAYED));
    EnableMenuItem(menu, CMD_SAVE, MF_BYCOMMAND | static_cast<UINT>(runs ? MF_GRAYED : MF_ENABLED));
    CheckMenuRadioItem(menu, CMD_DESIGN, CMD_RUN, static_cast<UINT>(runs ? CMD_RUN : CMD_DESIGN), MF_BYCOMMAND);
    SendMessageW(m_status, SB_SETTEXTW, 1, reinterpret_cast<LPARAM>(runs ? L"Run" : L"Design"));
}

void MainWindow::OnCommand(int command) {
    switch (command) {
        case CMD_READ:
        case CMD_WRITE:
            return OnExchange(command == CMD_READ);
        case CMD_RUN:
        case CMD_DESIGN:
            return SwitchMode(command == CMD_RUN);
        case CMD_SAVE:
            if (!m_context.userMode) m_fileName.empty() ? SaveAs() : Save(m_fileName);
            return;
        case CMD_SAVE_AS:
            return SaveAs();
        case CMD_PICTURE:
            return SavePictureAs();
        case CMD_CLEAR_LOG:
            return m_logPanel->Clear();
        case CMD_EXIT:
            SendMessageW(Handle(), WM_CLOSE, 0, 0);
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
        case WM_SETCURSOR:
            if (LOWORD(lParam) == HTCLIENT && reinterpret_cast<HWND>(wParam) == Handle()) {
                POINT at{};
                GetCursorPos(&at);
                ScreenToClient(Handle(), &at);
                if (at.y > BarHeight() + 2) return SetCursor(LoadCursorW(nullptr, IDC_SIZENS)), TRUE;
            }
            break;
        case WM_CLOSE:
            KillTimer(Handle(), PollTimer);
            m_view->CloseControls();
            PostQuitMessage(0);
            return 0;
        default:
            break;
    }
    return Default(message, wParam, lParam);
}

}  // namespace screenhost
